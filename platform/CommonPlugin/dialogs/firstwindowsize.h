#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

/// What a window takes when it is first shown: the usual size, or what of it the screen has room for.
inline QSize firstWindowSize(const QWidget *window, const QSize &usual)
{
    constexpr QSize roomOfFrame{16, 48}; // what window managers add around a window
    // A picture taken without a display keeps its size, whatever the platform calls its screen.
    const bool onScreen = QGuiApplication::platformName() != QLatin1String("offscreen");
    return onScreen ? usual.boundedTo(window->screen()->availableSize() - roomOfFrame) : usual;
}
