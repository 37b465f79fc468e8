#include "indexfacts.h"

#include "indexconnection.h"
#include "readsnapshot.h"

#include <QSqlQuery>
#include <QVariant>

IndexFacts IndexFacts::of(const QString &databasePath)
{
    IndexFacts facts;
    const IndexConnection connection(databasePath);
    if (!connection.isOpen()) {
        return facts;
    }
    const ReadSnapshot snapshot(connection.database());
    for (const RecordLevel level : {RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series}) {
        QSqlQuery query(connection.database());
        const QString sql = QStringLiteral("SELECT Status, count(*) FROM %1 GROUP BY Status")
                                .arg(QLatin1String(recordTableName(level)));
        if (!query.exec(sql)) {
            return facts;
        }
        facts.records[level] = 0;
        while (query.next()) {
            facts.byState[level][query.value(0).toString()] = query.value(1).toLongLong();
            facts.records[level] += query.value(1).toLongLong();
        }
    }
    QSqlQuery images(connection.database());
    facts.isRead = images.exec(QStringLiteral("SELECT count(*) FROM imageformat")) && images.next();
    facts.records[RecordLevel::Image] = facts.isRead ? images.value(0).toLongLong() : 0;
    return facts;
}
