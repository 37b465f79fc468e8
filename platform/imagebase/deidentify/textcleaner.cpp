#include "textcleaner.h"

#include "textfold.h"
#include "textwords.h"

#include <algorithm>

void TextCleaner::setCharacterSet(const QByteArray &name)
{
    m_name = name.trimmed();
    m_characterSet.select(m_name);
}

QString TextCleaner::decoded(const QByteArray &bytes)
{
    return m_characterSet.decode(bytes.constData(), bytes.size(), CharacterSet::Form::Paragraph);
}

QByteArray TextCleaner::cleaned(const QByteArray &bytes)
{
    return without(bytes, withoutDates(decoded(bytes)),
        [this](const QString &word) { return m_values.hasWord(word) || isNumberLike(word); });
}

QByteArray TextCleaner::withoutPersons(const QByteArray &bytes)
{
    return without(bytes, decoded(bytes), [this](const QString &word) {
        return (word.size() >= IdentifyingValues::leastLetters || isUnparted(word)) && m_values.hasWord(word);
    });
}

/// @param text what is left of the bytes already
template <typename Goes>
QByteArray TextCleaner::without(const QByteArray &bytes, const QString &text, Goes goes)
{
    QString kept;
    bool isChanged = text != decoded(bytes);
    for (const TextWord &word : wordsOf(text)) {
        const bool isGone = goes(word.text);
        isChanged = isChanged || isGone;
        kept += isGone ? QString(word.behind.count(QLatin1Char('\\')), QLatin1Char('\\')) + QLatin1Char(' ')
                       : word.text + word.behind;
    }
    const QByteArray result = isChanged ? encoded(kept.simplified()) : bytes;
    const bool hasWords =
        !isChanged || std::any_of(kept.cbegin(), kept.cend(), [](QChar c) { return c.isLetterOrNumber(); });
    const bool isTelling = m_values.isPersonWithin(result) || m_values.isUidWithin(result);
    return hasWords && !isTelling ? result : QByteArray();
}

QByteArray TextCleaner::encoded(const QString &text) const
{
    if (m_name == "ISO_IR 192") {
        return text.toUtf8();
    }
    const int last = m_name == "ISO_IR 100" ? 0xff : 0x7f;
    const bool fits =
        std::all_of(text.cbegin(), text.cend(), [last](QChar c) { return c.unicode() <= last; });
    return fits ? text.toLatin1() : QByteArray();
}
