#include "guibench.h"

#include "createconnection.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTextStream>

QString GuiBench::openIndex(const QString &path)
{
    setDatabasePath(path);
    return createConnection() ? QString() : path + QStringLiteral(": ") + connectionFailure().detail;
}

QString GuiBench::fillIndex(const QStringList &arguments, BigIndexSize whole)
{
    QFile::remove(arguments.at(1));
    const QString error = openIndex(arguments.at(1));
    whole.patients = whole.patients * arguments.value(2, QStringLiteral("100")).toInt() / 100;
    return error.isEmpty() ? fillBigIndex(whole) : error;
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
