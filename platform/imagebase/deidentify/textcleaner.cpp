#include "textcleaner.h"

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
    QString kept;
    bool isChanged = false;
    for (const TextWord &word : wordsOf(decoded(bytes))) {
        const bool goes = m_values.hasWord(word.text) || isNumberLike(word.text);
        isChanged = isChanged || goes;
        kept += goes ? QStringLiteral(" ") : word.text + word.behind;
    }
    const QByteArray result = isChanged ? encoded(kept.simplified()) : bytes;
    const bool hasWords =
        std::any_of(kept.cbegin(), kept.cend(), [](QChar c) { return c.isLetterOrNumber(); });
    return hasWords && !m_values.isPersonWithin(result) ? result : QByteArray();
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
