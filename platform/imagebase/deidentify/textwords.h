#pragma once

#include <QString>
#include <QVector>

/// A piece of a text: a word, and what stands before the next one.
struct TextWord
{
    QString text;
    QString behind;
};

/// Parts a text at everything that is neither a letter nor a digit; the first word is empty where it begins
/// with something else.
QVector<TextWord> wordsOf(const QString &text);

/// The text without what looks like a date or another number in parts: digits with signs or a blank between.
QString withoutDates(const QString &text);

/// Whether a word looks like a number of somebody or something: many digits.
bool isNumberLike(const QString &word);
