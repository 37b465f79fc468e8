#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QVariant>

/// Changes INI files that people write by hand, too: comments, order and everything else stays as it is.
namespace IniFile {

/// Writes one value, as QSettings reads it, making the file and its folder where there are none.
/// @param key "group/key"
/// @return whether the file holds the value now
COMMONPLUGIN_EXPORT bool setValue(const QString &file, const QString &key, const QVariant &value);
/// Removes a group with its values, not the comments before the next group. @return whether the file is
/// without it now
COMMONPLUGIN_EXPORT bool removeGroup(const QString &file, const QString &group);

} // namespace IniFile
