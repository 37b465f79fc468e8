#pragma once

#include <QString>

/// The one that sends, of all processes with the same file of jobs: who holds the lock.
class SendOwnership
{
public:
    explicit SendOwnership(const QString &storePath);
    ~SendOwnership();
    SendOwnership(const SendOwnership &) = delete;
    SendOwnership &operator=(const SendOwnership &) = delete;

    bool tryToGet();

private:
    const QString m_path;
    int m_file = -1;
    bool m_isOurs = false;
};
