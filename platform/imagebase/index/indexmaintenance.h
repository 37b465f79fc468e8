#pragma once

#include "connectionfailure.h"
#include "imagebase_export.h"

#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>

/// A record that hangs below one that is not there.
struct BrokenReference
{
    QString table;
    qint64 row = 0;
    QString parentTable;
};

/// How the care of an index ended.
struct MaintenanceResult
{
    enum class End {
        Done,
        Stopped,
        NoSpace, ///< nothing was begun: neededBytes are not free in folder
        Failed ///< failure says why; the index is as it was
    };
    End end = End::Failed;
    ConnectionFailure failure;
    QStringList findings; ///< of a check: the database's own words, one a damage; empty where all is well
    QVector<BrokenReference> broken; ///< of a check
    qint64 bytesBefore = 0; ///< of the index on disk, its log included
    qint64 bytesAfter = 0;
    qint64 neededBytes = 0;
    QString folder;
};

/// The index file with what has not been written back into it yet, in bytes.
IMAGEBASE_EXPORT qint64 indexSizeOnDisk(const QString &path);

/**
 * The care of an index file: check, compact, copy. Each blocks for as long as the file is large and is for a
 * worker thread: it works on a connection of its own, while others go on reading. Another thread may end it
 * by setting stop; the index is then as it was. Never creates or upgrades an index.
 */
class IMAGEBASE_EXPORT IndexMaintenance
{
public:
    /// Called on the worker's thread with the share that is done, 0 to 1; not where that cannot be known.
    using Progress = std::function<void(double)>;

    /// @param stop must outlive the object
    IndexMaintenance(QString databasePath, const std::atomic<bool> &stop);

    /// Reads every page and every reference between records.
    MaintenanceResult check() const;
    /// Writes the index anew without the room that deleted records left. Nobody else may be writing; whoever
    /// begins to write meanwhile asks LongWrite.
    MaintenanceResult compact() const;
    /// Copies the index as it stands at the start, complete or not at all: an existing target is replaced in
    /// one step at the end. Others may write meanwhile. @param target not the index itself
    MaintenanceResult backUp(const QString &target, const Progress &progress) const;

private:
    const QString m_path;
    const std::atomic<bool> &m_stop;
};
