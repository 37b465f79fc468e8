#pragma once

#include <QByteArray>

#include <array>
#include <vector>

/**
 * The bytes of one CT image as a scanner writes it, with places that change from file to file.
 *
 * DCMTK encodes the header once; afterwards only bytes of fixed width are overwritten, which makes a file
 * cost little more than its write.
 */
class FileTemplate
{
public:
    enum Field {
        PatientName,
        PatientId,
        BirthDate,
        StudyUid,
        StudyDate,
        Accession,
        SeriesUid,
        SeriesNumber,
        InstanceUid,
        InstanceNumber,
        SlicePosition,
        FieldCount
    };

    explicit FileTemplate(int side);

    /// Overwrites a field wherever it stands; the text is padded with blanks, or cut, to the field's width.
    void set(Field field, const QByteArray &text);
    /// Fills the pixels with noise that depends on the seed alone.
    void setPixels(quint64 seed);

    const QByteArray &bytes() const { return m_bytes; }

private:
    void findPlaces();

    QByteArray m_bytes;
    int m_pixels = 0; ///< offset of the pixel data, which is the last element
    std::array<std::vector<int>, FieldCount> m_places;
};
