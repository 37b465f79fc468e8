#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

class QTextCodec;

/**
 * Decodes texts with code extensions: parts of several sets, switched by escape sequences. It is for those
 * that DCMTK cannot convert (the Japanese sets, with the C library's converters); the tables behind it are
 * Qt's.
 */
class Iso2022Decoder
{
public:
    /// @param terms the terms of the Specific Character Set in order; the first says how each text starts
    explicit Iso2022Decoder(const QByteArrayList &terms);

    /// @param delimiters the bytes after which the start sets hold again
    /// @return null where the bytes do not fit the sets
    QString decode(const QByteArray &text, const char *delimiters) const;

private:
    /// How bytes of one half of the code table turn into characters.
    struct Half
    {
        const char *codec; ///< Qt's name; null for ASCII, empty for half-width katakana
        int bytes; ///< per character
    };
    struct State
    {
        Half low;
        Half high;
    };
    static Half startingHigh(const QByteArray &term);
    static int applyEscape(const char *text, int length, State &state);
    static bool appendRun(const QByteArray &run, const Half &half, QString &out);

    State m_start;
};
