#pragma once

#include "sharedwindows.h"

#include <QPointer>

/// The one window of its class: made on first use, deleted with the application or by SharedWindows. Made
/// again where somebody deleted it. @param make creates it
template <typename Window, typename Make>
Window *sharedWindow(const Make &make)
{
    static QPointer<Window> window;
    if (!window) {
        window = make();
        SharedWindows::add(window);
    }
    return window;
}
