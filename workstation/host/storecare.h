#pragma once

#include "connectionfailure.h"
#include "recorddeletion.h"
#include "storesweep.h"

#include <QMetaType>
#include <QObject>

#include <atomic>
#include <thread>

Q_DECLARE_METATYPE(ConnectionFailure)
Q_DECLARE_METATYPE(StoreSweep)

/**
 * Puts the store in order after a start, in the background: finishes deletions that were interrupted, and
 * removes files whose record is gone, and anonymous copies that nobody waits for. GUI thread; the destructor
 * ends the work and waits for it.
 */
class StoreCare : public QObject
{
    Q_OBJECT

public:
    explicit StoreCare(QObject *parent = nullptr);
    ~StoreCare() override;

    /// Begins with the index file; once.
    void begin(const QString &databasePath);
    bool isRunning() const { return m_running; }
    /// Ends it soon: after the deletion that is being finished.
    void stop() { m_stop = true; }

signals:
    /// One of the two is sent once, where it was not ended.
    void finished(const DeletionReport &deletions, const StoreSweep &sweep);
    /// Nothing was done, as the index cannot be opened.
    void failed(const ConnectionFailure &failure);

private:
    void work(const QString &databasePath);
    /// Anonymous copies that were to be sent long ago.
    void sweepAnonymised(const QString &databasePath);

    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_running{false};
    std::thread m_worker;
};
