#pragma once

#include "attributes.h"

#include <QList>
#include <QString>
#include <QVector>

/// What an export makes.
enum class ExportFormat : quint8 {
    KeyFolders, ///< folders named by the keys of the records
    NamedFolders, ///< folders named by patient, study and series, as people read them
    Zip, ///< one archive with readable names
    Media ///< a DICOM file set with its DICOMDIR
};

/// One file of an export.
struct ExportItem
{
    QString source; ///< absolute
    QString name; ///< below the target, its parts joined by "/"
    qint64 size = 0; ///< in bytes, as the disk had it when the list was made
};

/// What an export is asked to do: a plain value.
struct ExportRequest
{
    QString databasePath; ///< the index file
    RecordLevel level = RecordLevel::Patient; ///< of the keys
    QList<qlonglong> keys;
    ExportFormat format = ExportFormat::NamedFolders;
    QString target; ///< a folder that exists; for Zip the file to make, which is replaced
    bool check = true; ///< reads everything back before it gets its name
    bool compress = true; ///< Zip: deflates what becomes smaller by it
    QVector<ExportItem> items; ///< just these files, by the names that they have, in place of the records'
};
