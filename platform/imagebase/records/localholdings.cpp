#include "localholdings.h"

#include "indexconnection.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QVariant>

QHash<QString, int> localHoldings(const QString &databasePath, RecordLevel level, const QStringList &uids)
{
    QHash<QString, int> counts;
    const IndexConnection connection(databasePath);
    QSqlQuery query(connection.database());
    const bool isStudy = level == RecordLevel::Study;
    // The same study may stand below two patients.
    const QString sql =
        QStringLiteral("SELECT %1, sum(%2) FROM %3 WHERE %1 IN (SELECT value FROM json_each(?)) "
                       "GROUP BY %1")
            .arg(isStudy ? QStringLiteral("StudyInstanceUID") : QStringLiteral("SeriesInstanceUID"),
                isStudy ? QStringLiteral("NumberOfStudyRelatedInstances")
                        : QStringLiteral("NumberOfSeriesRelatedInstances"),
                QLatin1String(recordTableName(level)));
    query.setForwardOnly(true);
    if (!query.prepare(sql)) {
        return counts;
    }
    const QJsonDocument list(QJsonArray::fromStringList(uids));
    query.addBindValue(QString::fromUtf8(list.toJson(QJsonDocument::Compact)));
    if (query.exec()) {
        while (query.next()) {
            counts.insert(query.value(0).toString(), query.value(1).toInt());
        }
    }
    return counts;
}
