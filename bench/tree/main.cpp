// bench_tree fill INDEX [PERCENT]: makes an index to measure on, smaller by PERCENT
// bench_tree run INDEX ROUNDS: measures the patient tree on it
#include "bigindex.h"
#include "guibench.h"
#include "measurement.h"
#include "rawread.h"
#include "treebench.h"

#include <QSqlQuery>

namespace {

constexpr BigIndexSize whole{20'000, 3, 3, 1, 1, 500};

void addCondition(const char *inquiry, const char *group, const char *field, const char *symbol,
    const QString &value, const char *queryType)
{
    QSqlQuery query;
    query.prepare(QStringLiteral("INSERT INTO andvancequiry (UserName, InquiryName, GroupName, FieldName, "
                                 "Symbol, FieldValue, Logic, QueryType) "
                                 "VALUES ('super', ?, ?, ?, ?, ?, 'and', ?)"));
    for (const char *text : {inquiry, group, field, symbol}) {
        query.addBindValue(QString::fromLatin1(text));
    }
    query.addBindValue(value);
    query.addBindValue(QString::fromLatin1(queryType));
    if (!query.exec()) {
        qFatal("the inquiries cannot be stored");
    }
}

void storeInquiries()
{
    QSqlQuery(QStringLiteral("UPDATE patient SET PatientComments = 'Needle ' || pk WHERE pk <= 200")).exec();
    addCondition(TreeBench::all, "patient", "PatientName", ">", QStringLiteral(" "), "Precise");
    addCondition(TreeBench::few, "patient", "pk", "<", QStringLiteral("201"), "Precise");
    addCondition(TreeBench::fewFuzzy, "patient", "PatientComments", "=", QStringLiteral("needle"), "Fuzzy");
    addCondition(TreeBench::images, "patient", "PatientName", "=", QStringLiteral("AAFirst"), "Fuzzy");
    for (const char *field : {"Rows", "Columns"}) {
        addCondition(TreeBench::images, "imageformat", field, "=", QStringLiteral("512"), "Precise");
    }
    addCondition(TreeBench::images, "imageformat", "InstanceNumber", ">", QStringLiteral("0"), "Precise");
}

QString fill(const QStringList &arguments)
{
    QString error = GuiBench::fillIndex(arguments, whole);
    if (error.isEmpty()) {
        storeInquiries();
    }
    return error;
}

QString measure(const QStringList &arguments)
{
    QString error = GuiBench::openIndex(arguments.at(1));
    if (error.isEmpty()) {
        const int rounds = arguments.value(2).toInt();
        QJsonObject result = TreeBench(rounds).run();
        std::vector<double> raw;
        raw.reserve(static_cast<std::size_t>(rounds));
        for (int round = 0; round < rounds; ++round) {
            raw.push_back(rawReadMs(arguments.at(1)));
        }
        result.insert(QStringLiteral("rawReadMs"), Measurement::median(raw));
        Measurement::print(result);
    }
    return error;
}

} // namespace

int main(int argc, char **argv)
{
    return GuiBench::run(argc, argv, 2, "bench_tree fill INDEX [PERCENT] | run INDEX ROUNDS",
        [](const QStringList &arguments) {
            return arguments.at(0) == QLatin1String("fill") ? fill(arguments) : measure(arguments);
        });
}
