#include "identifyingvalues.h"

#include "textfold.h"
#include "textwords.h"

#include <algorithm>

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
}

bool IdentifyingValues::isAnyWithin(const QSet<QByteArray> &values, const QByteArray &bytes)
{
    const QByteArray lower = bytes.toLower();
    return bytes.size() >= leastBytes
        && std::any_of(
            values.cbegin(), values.cend(), [&](const QByteArray &value) { return lower.contains(value); });
}

bool IdentifyingValues::isWithin(const QByteArray &bytes) const
{
    return isPersonWithin(bytes) || isAnyWithin(m_descriptions, bytes);
}

bool IdentifyingValues::isPersonWithin(const QByteArray &bytes) const
{
    return isAnyWithin(m_personal, bytes);
}

bool IdentifyingValues::hasWord(const QString &word) const
{
    return m_words.contains(foldedText(word));
}
