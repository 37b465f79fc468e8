#include "appearancesettings.h"
#include "commandline.h"
#include "configlocation.h"
#include "createconnection.h"
#include "hostlog.h"
#include "previewwindow.h"
#include "session.h"
#include "themecontroller.h"
#include "uilanguage.h"

#include <QApplication>
#include <QFont>

#include <cstdio>

namespace {

constexpr int offscreenPointSize = 10;

/// Help and complaints need no screen: they are answered before the application looks for one.
CommandLine commandLineOf(int argc, char **argv)
{
    const QCoreApplication withoutScreen(argc, argv);
    UiLanguage language;
    language.speak(AppearanceSettings::spokenLanguage());
    return CommandLine::parse(QCoreApplication::arguments());
}

/// Without a desktop there is no theme that chooses a font of a desktop's size.
void chooseFont()
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        QFont font = QApplication::font();
        font.setPointSize(offscreenPointSize);
        QApplication::setFont(font);
    }
}

int run(const CommandLine &line)
{
    WorkstationSession session(line);
    QObject::connect(
        &session, &WorkstationSession::quitWanted, qApp, [](int code) { QCoreApplication::exit(code); });
    session.start();
    return QApplication::exec();
}

/// The preview alone; the program ends when it is closed.
int runPreview(const QStringList &paths)
{
    UiLanguage language;
    language.speak(AppearanceSettings::spokenLanguage());
    PreviewWindow preview;
    preview.showFiles(paths);
    preview.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("PatientManager"));
    QCoreApplication::setApplicationName(QStringLiteral("workstation"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PM_VERSION));
    const CommandLine line = commandLineOf(argc, argv);
    if (!line.answer.isEmpty()) {
        std::fputs(line.answer.toUtf8().constData(), line.answerCode == 0 ? stdout : stderr);
        return line.answerCode;
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    installHostLog();
    const QApplication application(argc, argv);
    chooseFont();
    const ThemeController theme;
    if (line.previewOnly) {
        return runPreview(line.previews);
    }
    ConfigLocation::setBase(line.config);
    ConfigLocation::handOn();
    setDatabasePath(line.database);
    return run(line);
}
