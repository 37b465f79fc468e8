#include "appearancesettings.h"
#include "browserwindow.h"
#include "configlocation.h"
#include "themecontroller.h"
#include "uilanguage.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("PatientManager"));
    QCoreApplication::setApplicationName(QStringLiteral("kivcloudbrowser"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PM_VERSION));
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    ConfigLocation::takeHandedOn();
    const ThemeController theme;
    UiLanguage language;
    language.speak(AppearanceSettings::spokenLanguage());
    BrowserWindow window;
    window.show();
    window.begin();
    return QApplication::exec();
}
