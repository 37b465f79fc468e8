#include "checks.h"

#include <createconnection.h>
#include <patientmanagermainwindow.h>

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace {

int missing = 0;

} // namespace

void Checks::expect(bool held, const QString &what)
{
    if (!held) {
        std::fprintf(stderr, "not found: %s\n", qPrintable(what));
        ++missing;
    }
}

int Checks::failures()
{
    return missing;
}

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    setDatabasePath(home.filePath(QStringLiteral("index.db")));
    Checks::expect(createConnection(), QStringLiteral("an index at ") + databasePath());
    Checks::signatures();
    {
        PatientManagerMainWindow window(nullptr);
        window.show();
        Checks::operations(window);
        Checks::platformOperations();
        Checks::selection(window);
        Checks::queryPanel();
    }
    // What the window leaves to the events goes here, since this host runs none: calls first, they delete,
    // too.
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return Checks::failures() == 0 ? 0 : 1;
}
