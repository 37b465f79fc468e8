#pragma once

#include <QtTest>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>

/// The window on the screen of a class or an object name; null where there is none.
template <typename Window>
Window *windowCalled(const char *name)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && (window->objectName() == QLatin1String(name) || window->inherits(name))) {
            return qobject_cast<Window *>(window);
        }
    }
    return nullptr;
}

/// A part by its object name; its absence ends the test program.
template <typename Part>
Part *partOf(const QWidget *window, const char *name)
{
    auto *part = window ? window->findChild<Part *>(QLatin1String(name)) : nullptr;
    return part ? part : (qFatal("no %s", name), nullptr);
}

/// Presses a button once it can be pressed.
inline void clickPart(const QWidget *window, const char *button)
{
    auto *found = partOf<QAbstractButton>(window, button);
    QTRY_VERIFY2_WITH_TIMEOUT(found->isEnabled(), button, 60'000);
    QTest::mouseClick(found, Qt::LeftButton);
}

/// Types into an empty field.
inline void typeInto(const QWidget *window, const char *field, const QString &text)
{
    auto *line = partOf<QLineEdit>(window, field);
    line->clear();
    QTest::keyClicks(line, text);
}
