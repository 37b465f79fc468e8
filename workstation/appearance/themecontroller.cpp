#include "themecontroller.h"

#include "appearancesettings.h"
#include "palettes.h"
#include "settingsnotifier.h"
#include "workstationstyle.h"

#include <QApplication>
#include <QToolTip>

ThemeController::ThemeController(QObject *parent)
    : QObject(parent)
    , m_startedDark(Palettes::isDark(QGuiApplication::palette()))
{
    // The one style of Qt's that takes every colour from the palette.
    QApplication::setStyle(new WorkstationStyle);
    connect(&m_desktop, &DesktopScheme::changed, this, &ThemeController::apply);
    connect(SettingsNotifier::instance(), &SettingsNotifier::themeChanged, this, &ThemeController::apply);
    m_desktop.follow();
    apply();
}

bool ThemeController::isDark() const
{
    switch (AppearanceSettings::theme()) {
    case Theme::Light:
        return false;
    case Theme::Dark:
        return true;
    case Theme::System:
        break;
    }
    return m_desktop.isDark().value_or(m_startedDark);
}

void ThemeController::apply()
{
    const QPalette palette = isDark() ? Palettes::dark() : Palettes::light();
    if (QApplication::palette() != palette) {
        QApplication::setPalette(palette);
    }
    QToolTip::setPalette(palette);
}
