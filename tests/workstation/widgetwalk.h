#pragma once

#include <QStringList>
#include <QWidget>

/// What people meet in a window who cannot see it, or have no mouse. Each answers the faults, empty
/// where there are none.
namespace WidgetWalk {

/// Controls, and buttons without a text, that a screen reader has no name for.
QStringList unnamedControls(const QWidget &window);
/// Visible controls that Tab does not reach, from the first one on.
QStringList unreachedByTab(QWidget &window);
/// Keys that two actions of a window both listen to, and letters that two entries of one menu share.
QStringList sharedKeys(const QWidget &window);
/// Actions of tool bars that neither a menu nor a key offers.
QStringList mouseOnlyActions(const QWidget &window);

} // namespace WidgetWalk
