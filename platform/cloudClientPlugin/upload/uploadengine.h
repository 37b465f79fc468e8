#pragma once

#include "cloudsession.h"
#include "uploadaccess.h"
#include "uploadorder.h"
#include "uploadtally.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QThread>
#include <QVector>

#include <functional>

class UpLoadTask;
class UploadCoordinator;

/**
 * The uploads of one index, on the GUI thread's side: makes the handles, owns the thread that sends, and
 * passes between them. One at a time, for the index that databasePath() names; it ends with the program, or
 * when another index is asked for.
 */
class UploadEngine : public QObject
{
    Q_OBJECT

public:
    /// The one of databasePath(), made where there is none.
    static UploadEngine *current();
    /// Ends the one that there is; its tasks are paused.
    static void release();
    /// For the one that there is, if any.
    static void setSession(const CloudSession &session);

    ~UploadEngine() override;

    UpLoadTask *add(UploadOrder order);
    QVector<UpLoadTask *> unfinished();

    /// @name For the handles
    /// @{
    void forget(const UpLoadTask &task);
    void finish(qint64 task);
    void flag(qint64 task);
    void retryFailed(qint64 task);
    void tryNow();
    void rename(qint64 task, const QString &patientName);
    QVector<UploadFault> faults(qint64 task) const;
    /// @}

private:
    explicit UploadEngine(QString databasePath);

    void connectCoordinator();
    UpLoadTask *handle(const UploadOrder &order, const UploadTally &tally);
    void tell(std::function<void(UploadCoordinator &)> deed);
    UpLoadTask *taskOf(qint64 id) const { return m_tasks.value(id); }

    const QString m_databasePath;
    QHash<qint64, UpLoadTask *> m_tasks; ///< those that live
    QSet<qint64> m_finished; ///< that may still stand in the index
    QThread m_thread;
    UploadCoordinator *m_coordinator; ///< lives on the thread, which deletes it
};
