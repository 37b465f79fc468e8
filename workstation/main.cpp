#include "commandline.h"
#include "configlocation.h"
#include "createconnection.h"
#include "hostlog.h"
#include "startsequence.h"
#include "workstationwindow.h"

#include <QApplication>
#include <QTimer>

#include <clocale>
#include <cstdio>

namespace {

/// Help needs no screen: it is answered before the application looks for one.
CommandLine commandLineOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return CommandLine::parse(arguments);
}

int run(const CommandLine &line)
{
    WorkstationWindow window;
    StartSequence sequence(line, &window);
    QObject::connect(
        &sequence, &StartSequence::quitWanted, &window, [](int code) { QCoreApplication::exit(code); });
    QObject::connect(&window, &WorkstationWindow::closed, qApp, &QCoreApplication::quit);
    if (line.screenshot.isEmpty()) {
        window.restoreLayout();
    }
    window.show();
    QTimer::singleShot(0, &sequence, &StartSequence::begin);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    std::setlocale(LC_ALL, ""); // file names on the command line are in the user's encoding
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
    ConfigLocation::setBase(line.config);
    setDatabasePath(line.database);
    return run(line);
}
