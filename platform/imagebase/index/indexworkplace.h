#pragma once

#include "imagebase_export.h"
#include "indexconnection.h"

#include <atomic>

struct sqlite3;

/**
 * The connection of a long piece of work on an index: every statement ends soon after the stop flag is set,
 * and others that write are waited for only as long as a user waits for an answer. For one thread.
 */
class IMAGEBASE_EXPORT IndexWorkplace
{
public:
    /// @param stop must outlive the object
    IndexWorkplace(const QString &path, const std::atomic<bool> &stop);

    bool isOpen() const { return m_connection.isOpen() && m_native; }
    const ConnectionFailure &failure() const { return m_connection.failure(); }
    QSqlDatabase database() const { return m_connection.database(); }
    sqlite3 *native() const { return m_native; }

private:
    IndexConnection m_connection;
    sqlite3 *m_native = nullptr;
};
