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
    /// A description without words of persons and institutions, without long numbers and what looks like a
    /// date; the bytes as they were where it has none. Empty where what is left cannot be written in the
    /// character set, or still holds such a value.
    QByteArray cleaned(const QByteArray &bytes);
    /// Any text without words of persons and institutions that have three letters or more, and otherwise the
    /// same: numbers stay.
    QByteArray withoutPersons(const QByteArray &bytes);

private:
    template <typename Goes>
    QByteArray without(const QByteArray &bytes, const QString &text, Goes goes);
    QByteArray encoded(const QString &text) const;

    const IdentifyingValues &m_values;
    CharacterSet m_characterSet;
    QByteArray m_name;
};
