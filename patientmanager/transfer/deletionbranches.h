#pragma once

#include "attributes.h"
#include "filedisposal.h"

#include <QElapsedTimer>
#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QVector>

#include <functional>
#include <memory>

class DabaseHelper;

/**
 * The steps by which the records of each level are deleted. Their order differs from level to level and is
 * part of the interface, and whether parents go is decided by the first key alone. Within a transaction of
 * the caller's, on the thread of the connection.
 */
class DeletionBranches
{
public:
    /// Who hears of it while it runs.
    struct Listener
    {
        std::function<void(int done, int total)> progress; ///< a few times a second while files go
        std::function<void(RecordLevel)> changed; ///< records of this level have gone
    };

    /// @param helper outlives this
    DeletionBranches(const QSqlDatabase &db, bool everyFile, DabaseHelper *helper, Listener listener);

    /// Each answers false where the index refuses: error() says why, and before the first file went.
    bool run(RecordLevel level, const QList<qlonglong> &keys);
    /// The same where records may have got images since, which have higher keys than newest: these stay with
    /// their parents, and everything else goes.
    bool runUpTo(qlonglong newest, RecordLevel level, const QList<qlonglong> &keys);
    /// Only the files that the query finds.
    bool removeFiles(RecordLevel level, const QString &query, const QList<qlonglong> &keys);

    QSqlError error() const;
    /// What was to go and is still on the disk.
    QVector<FileLeft> left() const;
    qint64 removed() const;

private:
    bool deletePatients(const QList<qlonglong> &keys);
    bool deleteStudies(const QList<qlonglong> &keys);
    bool deleteSeries(const QList<qlonglong> &keys);
    bool deleteImages(const QList<qlonglong> &keys);
    bool deleteImagesAlone(const QList<qlonglong> &keys);
    bool deleteStudyOfOneSeries(qlonglong study);
    bool deletePatientOfOneStudy(qlonglong patient);
    bool beginFiles(RecordLevel level, const QList<qlonglong> &keys, bool everyFile);
    void removeFilesFound(const QString &query, const QList<qlonglong> &keys);
    void removeOfImages(const QList<qlonglong> &keys);
    void countFile();
    bool deleteRecords(RecordLevel level, const QList<qlonglong> &keys);
    bool cleanUp(RecordLevel level, const QString &query, const QList<qlonglong> &keys);
    void tellChanged(RecordLevel level) const;

    const QSqlDatabase m_db;
    const bool m_everyFile;
    DabaseHelper *const m_helper;
    const Listener m_listener;
    std::unique_ptr<FileDisposal> m_disposal;
    QVector<FileLeft> m_left; ///< of earlier disposals
    qint64 m_removed = 0; ///< of earlier disposals
    QSqlError m_error; ///< of a question, before any file
    QElapsedTimer m_sinceProgress;
    int m_done = 0;
    int m_total = 0;
};
