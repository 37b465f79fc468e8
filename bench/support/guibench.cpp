#include "guibench.h"

#include "createconnection.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTextStream>

QString GuiBench::openIndex(const QString &path)
{
    setDatabasePath(path);
    return createConnection() ? QString() : path + QStringLiteral(": ") + connectionFailure().detail;
}

int GuiBench::run(int argc, char **argv, int least, const char *usage,
    const std::function<QString(const QStringList &)> &run)
{
    // Column widths that the user dragged would change what is painted.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Of the slots that no widget is named after, and of what the offscreen platform lacks.
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    QTextStream errors(stderr);
    if (arguments.size() < least) {
        errors << usage << '\n';
        return 2;
    }
    const QString error = run(arguments);
    if (!error.isEmpty()) {
        errors << error << '\n';
        return 1;
    }
    return 0;
}
