#pragma once

#include "indexconnection.h"

/// Lets the statements of a configured connection wait for a lock for another time than usual while it lives.
class LockWait
{
public:
    LockWait(const QSqlDatabase &db, int milliseconds)
        : m_db(db)
    {
        IndexConnection::setLockWait(m_db, milliseconds);
    }
    ~LockWait() { IndexConnection::setLockWait(m_db, IndexConnection::lockWaitMs); }
    LockWait(const LockWait &) = delete;
    LockWait &operator=(const LockWait &) = delete;

private:
    QSqlDatabase m_db;
};
