#pragma once

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

/// The database's own handle behind a connection of Qt's, for what Qt's driver does not offer; null where
/// there is none.
inline sqlite3 *nativeHandle(const QSqlDatabase &db)
{
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0) {
        return nullptr;
    }
    return *static_cast<sqlite3 *const *>(handle.constData());
}
