#include "textwords.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int manyDigits = 5;

int digitsOf(const QString &text)
{
    return int(std::count_if(text.begin(), text.end(), [](QChar c) { return c.isDigit(); }));
}

/// "29.2.60" and "2004-01" as well as "555 1234"; "1.2" is none.
bool isDateLike(const QString &run)
{
    constexpr int fewDigits = 4;
    static const QRegularExpression between(QStringLiteral("[^0-9]+"));
    return digitsOf(run) >= manyDigits || (run.count(between) > 1 && digitsOf(run) >= fewDigits);
}

} // namespace

QVector<TextWord> wordsOf(const QString &text)
{
    QVector<TextWord> words;
    bool inWord = false;
    for (const QChar c : text) {
        const bool isPart = c.isLetterOrNumber() || c.isMark() || c.isSurrogate();
        if (words.isEmpty() || (isPart && !inWord)) {
            words.append(TextWord());
        }
        (isPart ? words.last().text : words.last().behind).append(c);
        inWord = isPart;
    }
    return words;
}

QString withoutDates(const QString &text)
{
    static const QRegularExpression months(
        QStringLiteral("(?i)\\b(\\d{1,2}[. ]*)?(jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)[a-z]*[. ]*"
                       "\\d{1,4}(,? *\\d{4})?\\b"));
    static const QRegularExpression runs(QStringLiteral("[0-9]+( ?[-./:,_] ?[0-9]+| [0-9]+)+"));
    QString kept;
    int begin = 0;
    const QString rest = QString(text).replace(months, QStringLiteral(" "));
    for (auto found = runs.globalMatch(rest); found.hasNext();) {
        const QRegularExpressionMatch run = found.next();
        kept += rest.mid(begin, run.capturedStart() - begin)
            + (isDateLike(run.captured()) ? QStringLiteral(" ") : run.captured());
        begin = run.capturedEnd();
    }
    return kept + rest.mid(begin);
}

bool isNumberLike(const QString &word)
{
    return digitsOf(word) >= manyDigits;
}
