// bench_forms fill many|linked INDEX [PERCENT]: makes an index to measure on, smaller by PERCENT
// bench_forms many|linked INDEX ROUNDS: measures the forms on it
#include "bigindex.h"
#include "createconnection.h"
#include "formbench.h"
#include "measurement.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

constexpr BigIndexSize manyPatients{1'000'000, 0, 0, 0, 0, 0};
constexpr BigIndexSize linked{100'000, 3, 2, 0, 1, 1'000};

BigIndexSize sizeOf(const QString &kind, int percent)
{
    BigIndexSize size = kind == QLatin1String("many") ? manyPatients : linked;
    size.patients = int(qint64(size.patients) * percent / 100);
    return size;
}

QString open(const QString &path)
{
    setDatabasePath(path);
    return createConnection() ? QString() : path + QStringLiteral(": ") + connectionFailure().detail;
}

QString fill(const QStringList &arguments)
{
    QFile::remove(arguments.at(2));
    QString error = open(arguments.at(2));
    if (error.isEmpty()) {
        error = fillBigIndex(sizeOf(arguments.at(1), arguments.value(3, QStringLiteral("100")).toInt()));
    }
    return error;
}

QString measure(const QStringList &arguments)
{
    QString error = open(arguments.at(1));
    if (error.isEmpty()) {
        FormBench bench(arguments.at(2).toInt());
        Measurement::print(arguments.at(0) == QLatin1String("many") ? bench.manyPatients() : bench.clicks());
    }
    return error;
}

} // namespace

int main(int argc, char **argv)
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
    if (arguments.size() < 3) {
        errors << "bench_forms fill many|linked INDEX [PERCENT] | many|linked INDEX ROUNDS\n";
        return 2;
    }
    const QString error = arguments.at(0) == QLatin1String("fill") ? fill(arguments) : measure(arguments);
    if (!error.isEmpty()) {
        errors << error << '\n';
        return 1;
    }
    return 0;
}
