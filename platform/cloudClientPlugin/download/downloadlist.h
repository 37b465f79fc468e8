#pragma once

#include "downloadjob.h"
#include "indexconnection.h"

#include <QSet>
#include <QVariantList>
#include <QVector>

#include <memory>

/**
 * The downloads of an index, in the index itself, so that they outlive the program. What cannot be written at
 * the moment is kept, in its order, and written by the next save(). On one thread.
 */
class DownloadList
{
public:
    explicit DownloadList(QString databasePath);
    /// Writes what is still to be written, if that is possible within a moment.
    ~DownloadList();

    /// Those that are not finished, before those that jobs holds already; finished ones leave the list.
    /// @return false where the index cannot be read now
    bool load(QVector<DownloadJob> *jobs);
    /// A new one, or one that is known and now to be fetched as it says.
    void add(const DownloadJob &job);
    void setStopped(const DownloadJob &job);
    /// Where a series stands; what was received is counted with the records.
    void setState(const DownloadJob &job, const SeriesJob &series);
    void remove(const QString &studyUid);
    /// @return whether nothing waits to be written
    bool save();

    /// The objects that the index has of a series. @return false where it cannot be asked now
    bool present(const QString &seriesUid, QSet<QString> *uids);

    /// Whether a series is, or was, to be fetched, as a connection sees it; true where that cannot be said.
    static bool isWanted(const QSqlDatabase &db, const QString &studyUid, const QString &seriesUid);
    /// Counts objects of a series that came into the index, on the connection and in the transaction that
    /// brings them in.
    static bool count(const QSqlDatabase &db, const QString &studyUid, const QString &seriesUid, int objects);

private:
    struct Change
    {
        QString sql;
        QVariantList values;
    };

    bool open();
    void put(const QString &sql, const QVariantList &values);
    bool loadSeries(const QString &studyUid, QVector<SeriesJob> *series) const;

    const QString m_databasePath;
    std::unique_ptr<IndexConnection> m_connection;
    QVector<Change> m_unsaved;
};
