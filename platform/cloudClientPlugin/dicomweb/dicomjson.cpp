#include "dicomjson.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

QString groupsOf(const QJsonObject &name)
{
    QStringList groups;
    for (const char *group : {"Alphabetic", "Ideographic", "Phonetic"}) {
        groups.append(name.value(QLatin1String(group)).toString());
    }
    while (!groups.isEmpty() && groups.last().isEmpty()) {
        groups.removeLast();
    }
    return groups.join(QLatin1Char('='));
}

QString textOf(const QJsonValue &value)
{
    if (value.isObject()) {
        return groupsOf(value.toObject());
    }
    return value.toVariant().toString(); // services write numbers as numbers or as texts
}

} // namespace

QString DicomTag::name(quint32 tag)
{
    constexpr int digits = 8;
    constexpr int base = 16;
    return QStringLiteral("%1").arg(tag, digits, base, QLatin1Char('0')).toUpper();
}

QJsonArray DicomJson::values(quint32 tag) const
{
    return m_dataSet.value(DicomTag::name(tag)).toObject().value(QLatin1String("Value")).toArray();
}

QStringList DicomJson::texts(quint32 tag) const
{
    QStringList found;
    for (const QJsonValue value : values(tag)) {
        found.append(textOf(value));
    }
    return found;
}

qint64 DicomJson::number(quint32 tag) const
{
    bool isNumber = false;
    const qint64 number = text(tag).toLongLong(&isNumber);
    return isNumber ? number : -1;
}

QVector<DicomJson> DicomJson::items(quint32 tag) const
{
    QVector<DicomJson> found;
    for (const QJsonValue value : values(tag)) {
        if (value.isObject()) {
            found.append(DicomJson(value.toObject()));
        }
    }
    return found;
}

QVector<DicomJson> DicomJson::read(const QByteArray &answer, bool *isGood)
{
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    bool good = document.isArray() || document.isObject();
    QVector<DicomJson> found;
    for (const QJsonValue value : document.array()) {
        good = good && value.isObject();
        found.append(DicomJson(value.toObject()));
    }
    if (document.isObject()) {
        found.append(DicomJson(document.object()));
    }
    if (isGood) {
        *isGood = good;
    }
    return good ? found : QVector<DicomJson>();
}
