#pragma once

#include "attributes.h"
#include "imagebase_export.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <atomic>

/// The files of some records, and what the first of them belongs to.
struct RecordFiles
{
    /// Absolute paths, by patient, study (newest first), series number and instance number; numbers that are
    /// missing come last.
    QStringList paths;
    /// Of the first path's record; empty where there is no file.
    QString patientId;
    QString studyUid;
    QString seriesUid;
};

/// Reads the files of the records of one level with one query; keys that are not there have none. Empty where
/// the index cannot be read. On the thread of the connection.
/// @param stop ends the reading early when it becomes true; may be null
IMAGEBASE_EXPORT RecordFiles recordFiles(const QSqlDatabase &db, RecordLevel level,
    const QList<qlonglong> &keys, const std::atomic<bool> *stop = nullptr);
