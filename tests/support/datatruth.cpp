#include "datatruth.h"

#include "testmain.h"

#include <QFile>

QVector<DataTruth> readDataTruth()
{
    QFile file(sharedData() + QStringLiteral("/../data-truth.tsv"));
    QVector<DataTruth> truths;
    if (sharedData().isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return truths;
    }
    const QStringList columns = QString::fromUtf8(file.readLine()).split(QLatin1Char('\t'));
    const auto column = [&](const char *name) { return columns.indexOf(QLatin1String(name)); };
    QMap<Attribute, int> places;
    for (const AttributeInfo &info : attributeTable()) {
        if (column(info.keyword) >= 0 && info.attribute != Attribute::TransferSyntaxUID) {
            places.insert(info.attribute, column(info.keyword));
        }
    }
    while (!file.atEnd()) {
        const QStringList fields = QString::fromUtf8(file.readLine()).split(QLatin1Char('\t'));
        DataTruth truth{fields.value(0), fields.value(column("verdict")), {}};
        for (auto it = places.cbegin(); it != places.cend(); ++it) {
            truth.values[it.key()] = fields.value(it.value());
        }
        truths.append(truth);
    }
    return truths;
}
