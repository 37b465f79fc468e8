#pragma once

#include "imagebase_export.h"

#include <QString>

#include <atomic>

/// Reads the whole index and its structure. Blocks for as long as the file is large: for a worker thread,
/// which may end it by setting stop.
/// @return the database's words on the first damage it found; empty where there is none, or where it was
/// stopped
IMAGEBASE_EXPORT QString firstDamage(const QString &databasePath, const std::atomic<bool> &stop);
