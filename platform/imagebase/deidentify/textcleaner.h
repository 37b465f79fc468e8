#pragma once

#include "characterset.h"
#include "identifyingvalues.h"

/// Takes the words out of texts that identify. One for each object; keeps its character sets.
class TextCleaner
{
public:
    explicit TextCleaner(const IdentifyingValues &values)
        : m_values(values)
    { }

    /// Of the texts from now on. @param name the value of Specific Character Set
    void setCharacterSet(const QByteArray &name);
    QString decoded(const QByteArray &bytes);
    /// The text without words of persons and institutions and without long numbers; the bytes as they were
    /// where it has none. Empty where what is left cannot be written in the character set, or still holds
    /// such a value.
    QByteArray cleaned(const QByteArray &bytes);

private:
    QByteArray encoded(const QString &text) const;

    const IdentifyingValues &m_values;
    CharacterSet m_characterSet;
    QByteArray m_name;
};
