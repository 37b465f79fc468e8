#include "indexfacts.h"

#include "indexworkplace.h"
#include "readsnapshot.h"

#include <QSqlQuery>
#include <QVariant>

IndexFacts IndexFacts::of(const QString &databasePath, const std::atomic<bool> &stop)
{
    IndexFacts facts;
    const IndexWorkplace place(databasePath, stop);
    if (!place.isOpen()) {
        return facts;
    }
    const ReadSnapshot snapshot(place.database());
    for (const RecordLevel level : {RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series}) {
        QSqlQuery query(place.database());
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
    QSqlQuery images(place.database());
    // count(*) would be one single step, which cannot be ended.
    facts.isRead = images.exec(QStringLiteral("SELECT count(pk) FROM imageformat")) && images.next();
    facts.records[RecordLevel::Image] = facts.isRead ? images.value(0).toLongLong() : 0;
    return facts;
}
