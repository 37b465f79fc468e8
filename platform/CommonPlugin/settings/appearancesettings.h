#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QStringList>

enum class Theme { System, Light, Dark };

/// How the program looks to this user: kept with the user's own settings, not in the INI files that all
/// share. Whoever writes tells it by SettingsNotifier. GUI thread.
namespace AppearanceSettings {

/// System where nothing, or nothing known, was chosen.
COMMONPLUGIN_EXPORT Theme theme();
COMMONPLUGIN_EXPORT void setTheme(Theme theme);

/// The languages that there are texts for, as locale names: "en", "zh_CN".
COMMONPLUGIN_EXPORT QStringList languages();
/// One of languages(), or empty for the system's.
COMMONPLUGIN_EXPORT QString language();
COMMONPLUGIN_EXPORT void setLanguage(const QString &language);
/// What to speak: the chosen language, else the first of the system's that there are texts for, else English.
COMMONPLUGIN_EXPORT QString spokenLanguage();

} // namespace AppearanceSettings
