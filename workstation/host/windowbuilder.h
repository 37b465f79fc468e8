#pragma once

class QMainWindow;
class SessionServices;
struct WindowParts;

/// Makes what a workstation window consists of.
namespace WindowBuilder {

/// Fills the window, opening the index on the way.
/// @param parts the window's own: some parts keep a reference to them
void build(QMainWindow *window, SessionServices &services, WindowParts &parts);

} // namespace WindowBuilder
