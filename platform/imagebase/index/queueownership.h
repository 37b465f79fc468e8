#pragma once

#include "imagebase_export.h"

#include <QString>

/// The one that works at a queue, of all processes that know it: who holds the lock of a file. The system
/// gives it back when a process ends, however it does.
class IMAGEBASE_EXPORT QueueOwnership
{
public:
    /// @param queuePath the lock is the file of that name with ".lock" behind it
    explicit QueueOwnership(const QString &queuePath);
    ~QueueOwnership();
    QueueOwnership(const QueueOwnership &) = delete;
    QueueOwnership &operator=(const QueueOwnership &) = delete;

    bool tryToGet();

private:
    const QString m_path;
    int m_file = -1;
    bool m_isOurs = false;
};
