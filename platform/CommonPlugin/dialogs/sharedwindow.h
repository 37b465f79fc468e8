#pragma once

#include <QCoreApplication>
#include <QPointer>

/// The one window of its class: made on first use, deleted with the application. Made again where somebody
/// deleted it. @param make creates it
template <typename Window, typename Make>
Window *sharedWindow(const Make &make)
{
    static QPointer<Window> window;
    if (!window) {
        window = make();
        qAddPostRoutine([] { delete window.data(); });
    }
    return window;
}
