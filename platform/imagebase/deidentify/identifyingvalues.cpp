#include "identifyingvalues.h"

#include "textfold.h"
#include "textwords.h"

#include <QDate>

#include <algorithm>

namespace {

/// Whether letters that stand together can be nothing but a name: two of a script that parts no words, and
/// more of others.
bool isLongEnough(const QString &joined)
{
    constexpr int letters = 6;
    constexpr int ideographs = 2;
    return joined.size() >= (isUnparted(joined) ? ideographs : letters);
}

} // namespace

void IdentifyingValues::add(const QByteArray &bytes, const QString &text, bool isPersonal)
{
    constexpr int shortestWord = 2;
    for (const QByteArray &value : bytes.split('\\')) {
        const QByteArray lower = value.trimmed().toLower();
        if (lower.size() >= leastBytes) {
            (isPersonal ? m_personal : m_descriptions).insert(lower);
        }
    }
    if (!isPersonal) {
        return;
    }
    for (const TextWord &word : wordsOf(text)) {
        const QString folded = foldedText(word.text);
        if (folded.size() >= shortestWord || isUnparted(folded)) {
            m_words.insert(folded);
        }
    }
    addNames(text);
}

/// Each value, and each way of writing it, as a whole and with its first two parts joined in either order.
void IdentifyingValues::addNames(const QString &text)
{
    for (const QString &value : text.split(QLatin1Char('\\'))) {
        for (const QString &name : value.split(QLatin1Char('='))) {
            const QString folded = foldedName(name);
            if (folded.isEmpty()) {
                continue;
            }
            m_whole.insert(folded);
            const QStringList parts = folded.split(QLatin1Char(' '));
            const QString first = parts.value(0);
            const QString second = parts.value(1);
            for (const QString &joined : {joinedName(name), first + second, second + first}) {
                if (isLongEnough(joined) && (parts.size() > 1 || isUnparted(joined))) {
                    m_joined.insert(joined);
                }
            }
        }
    }
}

void IdentifyingValues::addDate(const QByteArray &values)
{
    constexpr int dateLength = 8;
    for (const QByteArray &value : values.split('\\')) {
        const QString plain = QString::fromLatin1(value.trimmed()).remove(QLatin1Char('.'));
        const QDate date = QDate::fromString(plain.left(dateLength), QStringLiteral("yyyyMMdd"));
        for (const char *form : {"yyyyMMdd", "yyyy-MM-dd", "yyyy.MM.dd", "yyyy/MM/dd", "dd.MM.yyyy",
                 "dd/MM/yyyy", "MM/dd/yyyy", "dd-MM-yyyy", "d.M.yyyy", "M/d/yyyy"}) {
            if (date.isValid()) {
                m_personal.insert(date.toString(QLatin1String(form)).toLatin1());
            }
        }
    }
}

bool IdentifyingValues::isAnyWithin(const QSet<QByteArray> &values, const QByteArray &bytes)
{
    const QByteArray lower = bytes.toLower();
    return bytes.size() >= leastBytes
        && std::any_of(
            values.cbegin(), values.cend(), [&](const QByteArray &value) { return lower.contains(value); });
}

bool IdentifyingValues::isUidWithin(const QByteArray &bytes) const
{
    return isAnyWithin(m_uids, bytes);
}

bool IdentifyingValues::isWithin(const QByteArray &bytes) const
{
    return isPersonWithin(bytes) || isAnyWithin(m_descriptions, bytes);
}

bool IdentifyingValues::isPersonWithin(const QByteArray &bytes) const
{
    return isAnyWithin(m_personal, bytes);
}

bool IdentifyingValues::isPerson(const QString &text) const
{
    return m_whole.contains(foldedName(text));
}

bool IdentifyingValues::hasWord(const QString &word) const
{
    const QString folded = foldedText(word);
    return m_words.contains(folded)
        || std::any_of(m_joined.cbegin(), m_joined.cend(),
            [&folded](const QString &joined) { return folded.contains(joined); });
}
