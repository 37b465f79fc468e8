#pragma once

#include "desktopscheme.h"

#include <QObject>

/**
 * Gives the application its style and the colours of the theme that the settings name, and follows them as
 * they change: at once, in every open window. The system's theme is what the desktop says, else what it gave
 * the program at the start. One for the application, after it; GUI thread.
 */
class ThemeController : public QObject
{
    Q_OBJECT

public:
    explicit ThemeController(QObject *parent = nullptr);

    bool isDark() const;

public slots:
    /// Takes the theme of the settings.
    void apply();

private:
    const bool m_startedDark; ///< the platform's own colours
    DesktopScheme m_desktop;
};
