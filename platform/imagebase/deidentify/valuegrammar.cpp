#include "valuegrammar.h"

#include <QRegularExpression>

namespace {

const QRegularExpression &patternOf(DcmEVR vr)
{
    using Pattern = QRegularExpression;
    static const Pattern number(
        QStringLiteral(
            "\\A(?=.{1,32}\\z)[+-]?(\\d+[.,]?\\d*|[.,]\\d+)([eE][+-]?\\d{1,3})?\\z|\\A[+-]?(nan|inf)\\z"),
        Pattern::CaseInsensitiveOption);
    static const Pattern age(QStringLiteral("\\A\\d{1,3}[DWMY]\\z"));
    static const Pattern date(QStringLiteral("\\A(\\d{8}|\\d{4}\\.\\d\\d\\.\\d\\d)\\z"));
    static const Pattern time(QStringLiteral(
        "\\A([01]\\d|2[0-4])(:?[0-5]\\d(:?[0-6]\\d([.]\\d{1,6})?)?)?\\z")); // colons: the standard's
                                                                            // predecessor
    static const Pattern dateTime(QStringLiteral("\\A\\d{4}(\\d\\d){0,5}([.]\\d{1,6})?([+-]\\d{4})?\\z"));
    static const Pattern uid(QStringLiteral("\\A[0-9.]{1,64}\\z"));
    switch (vr) {
    case EVR_AS:
        return age;
    case EVR_DA:
        return date;
    case EVR_TM:
        return time;
    case EVR_DT:
        return dateTime;
    case EVR_UI:
        return uid;
    default:
        return number;
    }
}

} // namespace

bool ValueGrammar::isKnown(DcmEVR vr)
{
    return vr == EVR_IS || vr == EVR_DS || vr == EVR_AS || vr == EVR_DA || vr == EVR_TM || vr == EVR_DT
        || vr == EVR_UI;
}

bool ValueGrammar::isRight(DcmEVR vr, const QByteArray &value)
{
    const QByteArray plain = QByteArray(value).replace('\0', ' ').trimmed();
    return plain.isEmpty() || patternOf(vr).match(QString::fromLatin1(plain)).hasMatch();
}
