#pragma once

#include "commonplugin_export.h"

#include <QString>

class QAbstractItemView;

/// Paints a text into a view that has no rows, in the place of them. From its paintEvent(), behind the base
/// class's. GUI thread.
COMMONPLUGIN_EXPORT void paintEmptyText(QAbstractItemView *view, const QString &text);
