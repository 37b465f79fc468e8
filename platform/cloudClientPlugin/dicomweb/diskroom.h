#pragma once

#include "cloudclientplugin_export.h"

#include <QtGlobal>

class QString;

/// Whether the disk of a folder has room for more of what a service sends, beside what the index needs to go
/// on. To be asked now and then by whoever writes there. Any thread.
/// @param bytes how much more, where that is known
CLOUDCLIENTPLUGIN_EXPORT bool hasDiskRoom(const QString &folder, qint64 bytes = 0);
