#pragma once

#include "cloudclientplugin_export.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

class QThread;

/**
 * A thread for corrections, with the stack that they need, one after the other: whoever begins the next asks
 * the one before to end soon, and waits for nothing. GUI thread.
 */
class CLOUDCLIENTPLUGIN_EXPORT CorrectionThread : public QObject
{
    Q_OBJECT

public:
    /// Runs on the thread. @param stop the wish to end soon
    using Work = std::function<void(const std::atomic<bool> &stop)>;

    explicit CorrectionThread(QObject *parent = nullptr);
    /// Asks what is under way to end, and waits for that.
    ~CorrectionThread() override;

    /// Runs once the one before has ended, and takes the place of one that has not begun.
    void begin(Work work);
    /// Asks what was begun last to end.
    void stop();

private:
    void start();
    void onEnded();

    std::unique_ptr<QThread> m_thread; ///< null while nothing runs
    Work m_next;
    std::shared_ptr<std::atomic<bool>> m_stop; ///< of what was begun last
};
