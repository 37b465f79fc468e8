#pragma once

#include "uploadorder.h"
#include "uploadrow.h"

#include <QHash>
#include <QSqlDatabase>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>

class IndexConnection;

/// Nothing where the index could not be read.
using UploadRows = std::optional<QVector<UploadRow>>;

/**
 * The uploads in the index, through a connection of its own; for one thread. What writes is one transaction,
 * and false where the index refused it: nothing was changed then.
 */
class UploadStore
{
public:
    explicit UploadStore(QString databasePath, int waitMs);
    ~UploadStore();

    /// Opens the index where it is not open.
    bool open();
    /// Changes when somebody else has written.
    qint64 dataVersion();

    UploadRows tasks();
    QVector<UploadFile> waiting(qint64 task, qint64 after, int most);
    /// Those of the files that still wait, by their ids, with the place and the version that the index has
    /// now; nothing where it could not be read.
    std::optional<QHash<qint64, UploadFile>> stillWaiting(const QVector<qint64> &files);
    /// Where a file that still waits lies by now; empty where it does not wait.
    QString pathOf(qint64 file);
    QVector<UploadFault> faults(qint64 task);

    /// Enters the files with their sizes; what the index knows of a file is taken from there.
    bool add(const UploadOrder &order);
    /// What does not wait any more stays as it is; what the index has another version of by now waits again.
    bool record(const QVector<UploadOutcome> &outcomes);
    bool rename(qint64 task, const QString &patientName);
    bool retryFailed(qint64 task);
    bool flagStored(qint64 task);
    bool remove(qint64 task);

private:
    QSqlDatabase database() const;
    bool write(const std::function<bool()> &statements);
    bool run(const char *sql, const QVariantList &values);

    const QString m_databasePath;
    const int m_waitMs;
    std::unique_ptr<IndexConnection> m_connection;
    struct Kept;
    std::unique_ptr<Kept> m_kept; ///< statements of the connection
};
