#include "appearancesettings.h"

#include <QLocale>
#include <QSettings>
#include <QVariant>

namespace {

constexpr char themeKey[] = "appearance/theme";
constexpr char languageKey[] = "appearance/language";
constexpr char lightName[] = "light";
constexpr char darkName[] = "dark";

QString english()
{
    return QStringLiteral("en");
}

QString chinese()
{
    return QStringLiteral("zh_CN");
}

QString nameOf(Theme theme)
{
    switch (theme) {
    case Theme::Light:
        return QLatin1String(lightName);
    case Theme::Dark:
        return QLatin1String(darkName);
    case Theme::System:
        break;
    }
    return {};
}

} // namespace

namespace AppearanceSettings {

Theme theme()
{
    const QString name = QSettings().value(QLatin1String(themeKey)).toString();
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        if (name == nameOf(theme)) {
            return theme;
        }
    }
    return Theme::System;
}

void setTheme(Theme theme)
{
    QSettings().setValue(QLatin1String(themeKey), nameOf(theme));
}

QStringList languages()
{
    return {english(), chinese()};
}

QString language()
{
    const QString name = QSettings().value(QLatin1String(languageKey)).toString();
    return languages().contains(name) ? name : QString();
}

void setLanguage(const QString &language)
{
    QSettings().setValue(QLatin1String(languageKey), language);
}

QString spokenLanguage()
{
    const QString chosen = language();
    if (!chosen.isEmpty()) {
        return chosen;
    }
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString &name : wanted) {
        const QLocale locale(name);
        if (locale.language() == QLocale::Chinese) {
            return chinese();
        }
        if (locale.language() == QLocale::English) {
            return english();
        }
    }
    return english();
}

} // namespace AppearanceSettings
