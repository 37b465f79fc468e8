#include "databaseerror.h"

#include <QFileInfo>

#include <sqlite3.h>

namespace {

ConnectionFailure::Reason reasonOf(int primaryCode, const QString &path)
{
    using Reason = ConnectionFailure::Reason;
    switch (primaryCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return Reason::Locked;
    case SQLITE_NOTADB:
        return Reason::NotADatabase;
    case SQLITE_CORRUPT:
    case SQLITE_FORMAT:
        return Reason::Damaged;
    case SQLITE_READONLY:
        return Reason::ReadOnly;
    case SQLITE_FULL:
        return Reason::DiskFull;
    default: {
        const QFileInfo file(path);
        const bool readOnly =
            file.exists() && (!file.isWritable() || !QFileInfo(file.absolutePath()).isWritable());
        return readOnly ? Reason::ReadOnly : Reason::CannotOpen;
    }
    }
}

} // namespace

ConnectionFailure connectionFailureOf(const QSqlError &error, const QString &path)
{
    constexpr int primaryCodeMask = 0xff;
    ConnectionFailure failure;
    failure.reason = reasonOf(error.nativeErrorCode().toInt() & primaryCodeMask, path);
    failure.path = path;
    failure.detail = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return failure;
}
