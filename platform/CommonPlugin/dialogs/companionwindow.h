#pragma once

#include <QApplication>
#include <QPointer>
#include <QShortcut>
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

/// Forgets a window that has been closed and waits for its deletion: shown again it would go at once.
template <typename Window>
void forgetClosed(QPointer<Window> &window)
{
    if (window && window->isHidden()) {
        window->deleteLater();
        window.clear();
    }
}

/// Esc closes the window, or the list of choices that is open in it.
inline void closeOnEscape(QWidget *window)
{
    QObject::connect(new QShortcut(Qt::Key_Escape, window), &QShortcut::activated, window, [window] {
        QWidget *popup = QApplication::activePopupWidget();
        (popup ? popup : window)->close();
    });
}
