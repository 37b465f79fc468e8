#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>

/**
 * Decodes texts by the Specific Character Set of their file. One for each reader; converters are made once
 * for each set that comes along and kept. A text that its set does not allow still gives something readable,
 * never nothing.
 */
class CharacterSet
{
public:
    /// What separates parts of a text, at which code extensions start anew.
    enum class Form : quint8 { PersonName, Values, Paragraph };

    CharacterSet();
    ~CharacterSet();
    CharacterSet(const CharacterSet &) = delete;
    CharacterSet &operator=(const CharacterSet &) = delete;

    /// @param value the attribute as it stands in the file, several terms by backslashes; empty for the
    /// default
    void select(const QByteArray &value);
    QString decode(const char *bytes, int length, Form form);

private:
    class Converter;

    QByteArray m_selected;
    Converter *m_converter = nullptr; ///< null where there is no set
    std::map<QByteArray, std::unique_ptr<Converter>> m_converters;
};
