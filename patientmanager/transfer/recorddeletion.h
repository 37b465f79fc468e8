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

#include <memory>

class DabaseHelper;
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
 * records are gone, so that nobody enters images below them meanwhile. Runs to its end on the thread of the
 * connection; used for one deletion.
 */
class PATIENTMANAGER_EXPORT RecordDeletion : public QObject
{
    Q_OBJECT

public:
    /// @param everyFile every file of the records goes, referenced ones, too; of images only copies ever do
    RecordDeletion(const QSqlDatabase &db, bool everyFile, QObject *parent = nullptr);

    /// The setting "datadelete/dataCopyType": whether every file goes. Read anew by each call.
    static bool isEveryFileToGo();

    /// Deletes these records. Keys that are not there have nothing; an unknown table has no records.
    DeletionReport run(const QString &table, const QList<qlonglong> &keys);

    /// Only the files, and the folders that this empties: those that the query finds for the keys of a table.
    /// @return the files that are still there
    QVector<FileLeft> removeFiles(const QString &query, const QString &table, const QList<qlonglong> &keys);

    /// Finishes the deletions that were interrupted, but for images that have come since.
    static DeletionReport finishBegun(const QSqlDatabase &db);

signals:
    /// A few times a second while files go.
    void progress(int done, int total);
    /// Records of this table have gone; forms that show it read it again.
    void tableChanged(const QString &tableName);

private:
    DeletionReport carryOut(const BegunDeletion &deletion);
    bool deleteAsBegun(const BegunDeletion &deletion);
    bool runBranch(RecordLevel level, const QList<qlonglong> &keys);
    bool deletePatients(const QList<qlonglong> &keys);
    bool deleteStudies(const QList<qlonglong> &keys);
    bool deleteSeries(const QList<qlonglong> &keys);
    bool deleteImages(const QList<qlonglong> &keys);
    bool deleteStudyOfOneSeries(qlonglong study);
    bool deletePatientOfOneStudy(qlonglong patient);
    void beginFiles(RecordLevel level, const QList<qlonglong> &keys);
    void removeFilesFound(const QString &query, const QList<qlonglong> &keys);
    void removeCopies(const QList<qlonglong> &keys);
    void countFile();
    bool deleteRecords(RecordLevel level, const QList<qlonglong> &keys);
    bool cleanUp(RecordLevel level, const QString &query, const QList<qlonglong> &keys);
    void tellChanged(RecordLevel level);

    const QSqlDatabase m_db;
    const bool m_everyFile;
    DabaseHelper *const m_helper;
    std::unique_ptr<FileDisposal> m_disposal;
    QElapsedTimer m_sinceProgress;
    int m_done = 0;
    int m_total = 0;
};
