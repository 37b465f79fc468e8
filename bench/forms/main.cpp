// bench_forms fill many|linked INDEX [PERCENT]: makes an index to measure on, smaller by PERCENT
// bench_forms many|linked INDEX ROUNDS: measures the forms on it
#include "bigindex.h"
#include "formbench.h"
#include "guibench.h"
#include "measurement.h"

#include <QFile>

namespace {

constexpr BigIndexSize manyPatients{1'000'000, 0, 0, 0, 0, 0};
constexpr BigIndexSize linked{100'000, 3, 2, 0, 1, 1'000};

BigIndexSize sizeOf(const QString &kind, int percent)
{
    BigIndexSize size = kind == QLatin1String("many") ? manyPatients : linked;
    size.patients = int(qint64(size.patients) * percent / 100);
    return size;
}

QString fill(const QStringList &arguments)
{
    QFile::remove(arguments.at(2));
    QString error = GuiBench::openIndex(arguments.at(2));
    if (error.isEmpty()) {
        error = fillBigIndex(sizeOf(arguments.at(1), arguments.value(3, QStringLiteral("100")).toInt()));
    }
    return error;
}

QString measure(const QStringList &arguments)
{
    QString error = GuiBench::openIndex(arguments.at(1));
    if (error.isEmpty()) {
        FormBench bench(arguments.at(2).toInt());
        Measurement::print(arguments.at(0) == QLatin1String("many") ? bench.manyPatients() : bench.clicks());
    }
    return error;
}

} // namespace

int main(int argc, char **argv)
{
    return GuiBench::run(argc, argv, 3,
        "bench_forms fill many|linked INDEX [PERCENT] | many|linked INDEX ROUNDS",
        [](const QStringList &arguments) {
            return arguments.at(0) == QLatin1String("fill") ? fill(arguments) : measure(arguments);
        });
}
