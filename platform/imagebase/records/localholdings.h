#pragma once

#include "attributes.h"
#include "imagebase_export.h"

#include <QHash>
#include <QStringList>

/// How many images the index has of each of these studies or series (of level), by UID; those without any are
/// missing. On a connection of its own; empty where the index cannot be read. Any thread.
IMAGEBASE_EXPORT QHash<QString, int> localHoldings(
    const QString &databasePath, RecordLevel level, const QStringList &uids);
