#pragma once

#include "storefile.h"

#include <QString>

#include <atomic>
#include <functional>

class SendPaths;

/// Looks at the paths of new jobs: which are objects, and of what kind. Runs on a thread of its own.
class SendLister
{
public:
    /// @param listed told after each piece, on the thread of run() @param stop ends run() soon
    SendLister(QString storePath, std::function<void()> listed, const std::atomic<bool> &stop);

    /// Looks at all that nobody has looked at, then returns. @return why the store refused; empty where it
    /// did not
    QString run();

private:
    bool list(SendPaths &paths, qint64 job);

    const QString m_storePath;
    const std::function<void()> m_listed;
    const std::atomic<bool> &m_stop;
    StoreFileReader m_reader;
};
