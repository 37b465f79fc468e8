#pragma once

#include "dicomheader.h"
#include "imagebase_export.h"

#include <QByteArray>

/// What reading a file for the index came to.
struct DicomReadResult
{
    enum class Outcome : quint8 {
        Image, ///< header is filled; its three UIDs are well formed
        MediaDirectory, ///< a DICOMDIR
        NotDicom, ///< nothing of DICOM in it, or empty
        Unreadable, ///< DICOM, or something that claims to be, but its identification cannot be read
        NoPatientOrStudy, ///< DICOM, but an object that belongs to no study and series
        MissingUid, ///< an object of a study without one of the three UIDs
        MalformedUid, ///< one of the three UIDs is no UID
        CannotOpen ///< the system refused to open or read it; detail says why
    };
    Outcome outcome = Outcome::NotDicom;
    DicomHeader header;
    QString detail; ///< the parser's or the system's own words, the name of the attribute at fault, or empty
};

/**
 * Reads from a file what the index keeps of it, and never its pixels.
 *
 * A bounded scanner of our own reads well formed files; whatever it does not understand goes to DCMTK, so
 * that both give the same answer and odd files get the careful reader. Input is hostile: every length is held
 * against the file's size. Instances share nothing: use one for each thread (it keeps its buffer and its
 * character set tables).
 */
class IMAGEBASE_EXPORT DicomReader
{
public:
    DicomReader();
    ~DicomReader();
    DicomReader(const DicomReader &) = delete;
    DicomReader &operator=(const DicomReader &) = delete;

    /// @param path the file's name in the system's bytes, as a directory listing gave it
    DicomReadResult read(const QByteArray &path);

    /// True for one to 64 digits and dots that form a UID: no empty component.
    static bool isUid(const QString &text);

private:
    struct Private;
    Private *const d;
};
