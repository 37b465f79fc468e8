#pragma once

#include "connectionfailure.h"
#include "imagebase_export.h"

/// Names the index file for the next createConnection(); an empty text goes back to the rule of
/// databasePath(). GUI thread.
IMAGEBASE_EXPORT void setDatabasePath(const QString &path);

/// The index file: what setDatabasePath() was given, else "database/path" of main.ini, else a file in the
/// user's data directory. Absolute.
IMAGEBASE_EXPORT QString databasePath();

/**
 * Opens the index as Qt's default connection, creating or upgrading it in place (after a backup copy beside
 * it).
 *
 * A second call keeps the connection that is open. A newer, foreign, damaged, locked or read-only file is
 * refused and left as it was: the answer is false, connectionFailure() says why, and the default connection
 * stays closed. GUI thread.
 */
IMAGEBASE_EXPORT bool createConnection();

/// Why the last createConnection() answered false; reason None after a success.
IMAGEBASE_EXPORT ConnectionFailure connectionFailure();

/// Closes and forgets the default connection, so that the next createConnection() opens what databasePath()
/// names then. Nothing that uses the connection may be left: no model, no open statement. GUI thread.
IMAGEBASE_EXPORT void closeConnection();
