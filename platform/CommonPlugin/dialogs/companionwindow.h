#pragma once

#include <QWidget>

/// A window that accompanies others and is made once: shown, or brought back where it is minimised.
inline void bringUp(QWidget *window)
{
    if (window->isMinimized()) {
        window->showNormal();
    } else {
        window->show();
    }
}
