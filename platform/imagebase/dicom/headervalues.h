#pragma once

#include "characterset.h"
#include "dicomheader.h"

#include <array>
#include <vector>

/// An attribute of the index as the readers look for it in a file.
struct WantedElement
{
    quint32 tag;
    Attribute attribute;
    ValueKind kind;
    bool binary; ///< an unsigned 16 bit number in the file, otherwise text
    bool personName;
};

/// All of them in the order of their tags, as a data set has them.
const std::vector<WantedElement> &wantedElements();

/**
 * Turns the bytes that a reader finds into the texts of a DicomHeader, the same for every reader.
 * Belongs to one DicomReader; keeps its character sets from file to file.
 */
class HeaderValues
{
public:
    /// Values longer than this are cut: no screen, file name or archive takes more.
    static constexpr int maximumBytes = 64 * 1024;

    void begin();
    void setCharacterSet(const char *bytes, int length);
    void setText(const WantedElement &element, const char *bytes, int length);
    void setNumber(const WantedElement &element, quint16 number);
    void setMediaDirectory() { m_mediaDirectory = true; }

    const DicomHeader &header() const { return m_header; }
    DicomHeader takeHeader() { return std::move(m_header); }
    bool isMediaDirectory() const { return m_mediaDirectory; }
    /// True where study, series and instance are all identified by valid UIDs.
    bool isIdentified() const;

private:
    /// The value that an attribute had last, as the file wrote it and as text.
    struct Remembered
    {
        QByteArray bytes;
        QByteArray characterSet;
        QString text;
    };
    QString value(const WantedElement &element, const char *bytes, int length);
    QString text(const WantedElement &element, const char *bytes, int length);

    CharacterSet m_characterSet;
    QByteArray m_characterSetName;
    std::array<Remembered, attributeCount> m_remembered;
    DicomHeader m_header;
    bool m_mediaDirectory = false;
};
