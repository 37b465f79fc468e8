#pragma once

#include "connectionfailure.h"
#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QStringList>

/**
 * The index's schema: which version a file has, and the numbered steps that bring it to this program's.
 * Each step is a resource file of statements; all steps of an upgrade run in one transaction.
 */
namespace Schema {

/// PRAGMA application_id of an index.
inline constexpr int applicationId = 0x50444d49;
/// The version that this program writes: the number of the last step.
inline constexpr int currentVersion = 6;

/// What a file says of itself.
struct Identity
{
    int applicationId = 0;
    int version = 0; ///< PRAGMA user_version
    bool empty = true; ///< without any table
};
/// Reads the identity. @return the database's error where the file cannot be read
IMAGEBASE_EXPORT QSqlError readIdentity(QSqlDatabase &db, Identity *identity);
/// Why a file of this identity is not for a worker to open: foreign, newer, or not brought up to this version
/// yet.
IMAGEBASE_EXPORT ConnectionFailure refusal(const Identity &identity, const QString &path);

/// Brings the open database from version to currentVersion. @return the database's words where it failed,
/// else empty
IMAGEBASE_EXPORT QString upgrade(QSqlDatabase &db, int version);

/// The statements of a script: split where SQLite says that one is complete, comments and triggers respected.
IMAGEBASE_EXPORT QStringList statements(const QString &script);

} // namespace Schema
