#pragma once

#include "commonplugin_export.h"

class QWidget;

/// The windows of which the process has one each. GUI thread.
namespace SharedWindows {

/// Takes a window over: deleted with the application at the latest.
COMMONPLUGIN_EXPORT void add(QWidget *window);
/// Deletes those that there are, as a host does that builds its own windows anew; each is made again when it
/// is next asked for. Not from within one of them.
COMMONPLUGIN_EXPORT void deleteAll();

} // namespace SharedWindows
