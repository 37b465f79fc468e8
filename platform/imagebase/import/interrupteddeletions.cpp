#include "interrupteddeletions.h"

#include "recordcolumns.h"

#include <QSqlQuery>
#include <QVariant>

void InterruptedDeletions::look()
{
    QSqlQuery query(m_db);
    const bool good =
        query.exec(QStringLiteral("SELECT ifnull(max(LastImage), 0) FROM deletion")) && query.next();
    m_lastImage = good ? query.value(0).toLongLong() : 0;
}

bool InterruptedDeletions::willTake(qlonglong imagePk) const
{
    if (imagePk > m_lastImage) {
        return false;
    }
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT 1 FROM deletion, imageformat AS image "
                                 "JOIN generalseries AS series ON series.pk = series_fk "
                                 "JOIN generalstudy AS study ON study.pk = study_fk "
                                 "WHERE image.pk = ? AND image.pk <= LastImage AND EXISTS "
                                 "(SELECT 1 FROM json_each(RecordKeys) WHERE value = CASE Level "
                                 "WHEN %1 THEN patient_fk WHEN %2 THEN study_fk WHEN %3 THEN series_fk "
                                 "ELSE image.pk END)")
                      .arg(int(RecordLevel::Patient))
                      .arg(int(RecordLevel::Study))
                      .arg(int(RecordLevel::Series)));
    query.addBindValue(imagePk);
    return query.exec() && query.next();
}
