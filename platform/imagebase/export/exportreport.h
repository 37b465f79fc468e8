#pragma once

#include "exportrequest.h"

#include <QStringList>

/// Why a file of an export is not there, or not as it should be.
enum class ExportProblem : quint8 {
    SourceMissing,
    SourceUnreadable,
    SourceChanged, ///< became shorter while it was read
    NotWritten,
    Differs, ///< what was read back is not what was written
    NotInDirectory, ///< the file is there, but the DICOMDIR could not take it
    NameTaken ///< somebody else has made a file of that name meanwhile
};

struct ExportFailure
{
    ExportItem item;
    ExportProblem problem = ExportProblem::NotWritten;
    QString detail; ///< in the words of the system or of the parser; may be empty
};

/// How an export ended. Whatever it is but Complete, nothing was put at its place.
enum class ExportEnd : quint8 {
    Complete, ///< failures() tells which files are missing
    Cancelled,
    IndexFailed, ///< the records could not be read
    Empty, ///< the records have no files
    TargetFailed, ///< nothing can be written there
    TargetTaken, ///< the folder has a DICOM file set already
    DiskFull,
    NotReadBack ///< an archive or a file set that was read back is not what was written
};

/// What an export did.
struct ExportReport
{
    ExportEnd end = ExportEnd::Complete;
    QString endDetail; ///< in the words of the system or of the database; may be empty
    qint64 files = 0; ///< that are in their place
    qint64 bytes = 0; ///< of these
    qint64 needed = 0; ///< where the disk was seen to be too full beforehand: bytes, and
    qint64 available = 0; ///< what there was
    qint64 elapsedMs = 0;
    QVector<ExportFailure> failures;
    QString place; ///< the folder or archive that was asked for
    QStringList folders; ///< that stand in it now with the files, by their names; none for an archive
    bool isReadBack = false; ///< what is in its place was read back, and is what was written

    /// The one thing that holds all files: the archive, the folder that was made, or the one with all of
    /// them.
    QString made() const { return folders.size() == 1 ? place + QLatin1Char('/') + folders.first() : place; }

    /// The files that another try may bring.
    QVector<ExportItem> retryItems() const
    {
        QVector<ExportItem> items;
        for (const ExportFailure &failure : failures) {
            if (failure.problem != ExportProblem::NotInDirectory) {
                items.append(failure.item);
            }
        }
        return items;
    }
};

/// Where an export stands; a copy, taken at any moment.
struct ExportProgress
{
    enum class Phase : quint8 { Listing, Writing, Checking, Placing, Done };
    Phase phase = Phase::Listing;
    qint64 files = 0; ///< of the phase
    qint64 allFiles = 0; ///< 0 while they are being listed
    qint64 bytes = 0; ///< of the phase
    qint64 allBytes = 0;
};
