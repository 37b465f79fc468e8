// bench_search fill INDEX [PERCENT]: makes an index to measure on, smaller by PERCENT
// bench_search run INDEX ROUNDS [FOLDER]: measures on it; FOLDER is imported into it at the end
#include "bigindex.h"
#include "guibench.h"
#include "indexconnection.h"
#include "measurement.h"
#include "patientsearch.h"
#include "searchbench.h"

#include <QJsonArray>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace {

constexpr BigIndexSize whole{100'000, 3, 0, 0, 0, 0};

/// Processor time of reading the index for the first time, after one write, and what it takes in memory.
QJsonObject measureReading(const QString &path, int rounds)
{
    const IndexConnection index(path);
    const std::atomic<bool> go{false};
    std::vector<double> first;
    std::vector<double> again;
    std::size_t bytes = 0;
    for (int round = 0; round < rounds; ++round) {
        double start = Measurement::processorMs();
        const auto search = PatientSearch::read(index.database(), nullptr, go);
        first.push_back(Measurement::processorMs() - start);
        QSqlQuery(QSqlDatabase::database())
            .exec(QStringLiteral("UPDATE patient SET PatientComments = 'round %1' WHERE pk = 1").arg(round));
        start = Measurement::processorMs();
        PatientSearch::read(index.database(), search.get(), go);
        again.push_back(Measurement::processorMs() - start);
        bytes = search->bytes();
    }
    return {{QStringLiteral("firstMs"), Measurement::median(first)},
        {QStringLiteral("againMs"), Measurement::median(again)},
        {QStringLiteral("mib"), double(bytes) / (1 << 20)}};
}

QString measure(const QStringList &arguments)
{
    QString error = GuiBench::openIndex(arguments.at(1));
    if (error.isEmpty()) {
        const int rounds = arguments.value(2).toInt();
        QJsonObject result{{QStringLiteral("reading"), measureReading(arguments.at(1), rounds)}};
        SearchBench bench;
        QJsonArray typing;
        for (int round = 0; round < rounds; ++round) {
            typing.append(bench.type({}));
        }
        result.insert(QStringLiteral("typing"), typing);
        if (arguments.size() > 3) {
            result.insert(QStringLiteral("importing"), bench.type(arguments.at(3)));
        }
        Measurement::print(result);
    }
    return error;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_NO_GLIB", "1"); // the other dispatcher says exactly when it waits
    return GuiBench::run(argc, argv, 2, "bench_search fill INDEX [PERCENT] | run INDEX ROUNDS [FOLDER]",
        [](const QStringList &arguments) {
            return arguments.at(0) == QLatin1String("fill") ? GuiBench::fillIndex(arguments, whole)
                                                            : measure(arguments);
        });
}
