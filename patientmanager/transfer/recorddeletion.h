#pragma once

#include "attributes.h"
#include "filedisposal.h"
#include "patientmanager_export.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlError>
#include <QVector>

#include <atomic>
#include <memory>

class DabaseHelper;
class DeletionBranches;
struct BegunDeletion;

/// How a deletion ended.
struct DeletionReport
{
    /// Valid where the index refused: nothing has been deleted, unless isPending.
    QSqlError error;
    /// Files may be gone, and the records stay until the next start finishes what was begun.
    bool isPending = false;
    QVector<FileLeft> left; ///< files that are still on the disk
    qint64 removedFiles = 0;
};
Q_DECLARE_METATYPE(DeletionReport)

/**
 * Deletes records of one table with what belongs to them: files, emptied folders, rows of transfers,
 * thumbnails, and parents that this leaves empty.
 *
 * Whether parents go is decided by the first key alone. The order of the steps differs from level to level
 * and is part of the interface. One deletion is noted first and then holds the lock of writers until its
 * records are gone, so that nobody enters images below them meanwhile. It gives up where others hold that
 * lock for seconds. Runs to its end on the thread of the connection; used for one deletion.
 */
class PATIENTMANAGER_EXPORT RecordDeletion : public QObject
{
    Q_OBJECT

public:
    /// @param everyFile every file of the records goes, referenced ones, too; of images only copies ever do
    RecordDeletion(const QSqlDatabase &db, bool everyFile, QObject *parent = nullptr);
    ~RecordDeletion() override;

    /// The setting "datadelete/dataCopyType": whether every file goes. Read anew by each call.
    static bool isEveryFileToGo();

    /// Deletes these records. Keys that are not there have nothing; an unknown table has no records.
    DeletionReport run(const QString &table, const QList<qlonglong> &keys);

    /// Only the files, and the folders that this empties: those that the query finds for the keys of a table.
    /// @return the files that are still there
    QVector<FileLeft> removeFiles(const QString &query, const QString &table, const QList<qlonglong> &keys);

    /// Finishes the deletions that were interrupted, but for images that have come since.
    /// @param stop ends it after the one that is being finished; the others wait for the next start
    static DeletionReport finishBegun(const QSqlDatabase &db, const std::atomic<bool> &stop);

signals:
    /// A few times a second while files go; of no files in all while somebody else writes to the index.
    void progress(int done, int total);
    /// Records of this table have gone; forms that show it read it again.
    void tableChanged(const QString &tableName);

private:
    DeletionReport carryOut(const BegunDeletion &deletion, bool isNew);
    bool mayWaitFor(const QSqlError &error);
    void tellChanged(RecordLevel level);

    QSqlDatabase m_db;
    DabaseHelper *const m_helper;
    const std::unique_ptr<DeletionBranches> m_branches;
    const bool m_everyFile;
    QElapsedTimer m_waiting;
};
