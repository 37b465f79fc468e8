#pragma once

#include "attributes.h"

#include <QList>
#include <QString>
#include <QVector>

#include <atomic>

/// A series as its thumbnail tells of it, with the image that stands for it.
struct SeriesEntry
{
    qlonglong series = 0;
    qlonglong study = 0;
    QString modality;
    QString number;
    QString description;
    int images = 0;
    QString instanceUid; ///< of the middle image; empty where the series has none
    QString classUid;
    QString filePath;
};

/// Records by their level and keys: a selection.
struct RecordKeys
{
    RecordLevel level = RecordLevel::Patient;
    QList<qlonglong> keys;

    bool operator==(const RecordKeys &other) const { return level == other.level && keys == other.keys; }
};

/// The series of a selection, in the order of studies and series numbers.
struct SeriesEntries
{
    QVector<SeriesEntry> entries;
    int more = 0; ///< how many were left out
};

/// Reads them on a connection of its own: for a worker thread.
/// @param most how many; the rest is only counted
/// @param stop where it is set they end early
SeriesEntries readSeriesEntries(
    const QString &indexPath, const RecordKeys &records, int most, const std::atomic<bool> &stop);
