#include "textwords.h"

#include <algorithm>

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

bool isNumberLike(const QString &word)
{
    constexpr int manyDigits = 5;
    return std::count_if(word.begin(), word.end(), [](QChar c) { return c.isDigit(); }) >= manyDigits;
}
