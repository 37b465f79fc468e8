#pragma once

#include "commonplugin_export.h"
#include "importrequest.h"

/// What main.ini says about imports; read anew at each call. GUI thread.
namespace ImportSettings {

/// The mode in which the user asks at each import instead.
inline constexpr int askMode = 2;

/// True for the modes that an import can run in.
COMMONPLUGIN_EXPORT bool isMode(int mode);
/// The configured mode, as the main window finds it; 0 where nothing is configured.
COMMONPLUGIN_EXPORT int mode();
/// What the user wants where other content comes under a known UID.
COMMONPLUGIN_EXPORT DuplicatePolicy policy();
/// An import of these paths into the present index, with the configured policy.
ImportRequest request(const QStringList &paths, int mode);

} // namespace ImportSettings
