#include "seriesentry.h"

#include "indexconnection.h"
#include "recordsql.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

/// The series that belong to the records of a level, whose keys are the one bound value.
QString condition(RecordLevel level)
{
    const QString keys = QStringLiteral("(SELECT value FROM json_each(?))");
    switch (level) {
    case RecordLevel::Patient:
        return QStringLiteral("t.patient_fk IN ") + keys;
    case RecordLevel::Study:
        return QStringLiteral("s.study_fk IN ") + keys;
    case RecordLevel::Series:
        return QStringLiteral("s.pk IN ") + keys;
    case RecordLevel::Image:
        break;
    }
    return QStringLiteral("s.pk IN (SELECT series_fk FROM imageformat WHERE pk IN %1)").arg(keys);
}

void addMiddleImage(QSqlQuery &query, SeriesEntry &entry)
{
    query.bindValue(0, entry.series);
    query.bindValue(1, entry.images / 2);
    if (query.exec() && query.next()) {
        entry.instanceUid = query.value(0).toString();
        entry.classUid = query.value(1).toString();
        entry.filePath = query.value(2).toString();
    }
    query.finish();
}

} // namespace

SeriesEntries readSeriesEntries(
    const QString &indexPath, const RecordKeys &records, int most, const std::atomic<bool> &stop)
{
    const IndexConnection index(indexPath);
    SeriesEntries result;
    if (!index.isOpen()) {
        return result;
    }
    QSqlQuery series(index.database());
    series.setForwardOnly(true);
    series.prepare(QStringLiteral("SELECT s.pk, s.study_fk, s.Modality, s.SeriesNumber, s.SeriesDescription, "
                                  "s.NumberOfSeriesRelatedInstances "
                                  "FROM generalseries s JOIN generalstudy t ON t.pk = s.study_fk WHERE %1 "
                                  "ORDER BY t.StudyDate, t.pk, s.SeriesNumber, s.pk")
                       .arg(condition(records.level)));
    series.addBindValue(RecordSql::keyList(records.keys));
    series.exec();
    QSqlQuery image(index.database());
    image.setForwardOnly(true);
    image.prepare(QStringLiteral("SELECT SOPInstanceUID, SOPClassUID, FilePath FROM imageformat AS image "
                                 "WHERE series_fk = ? ORDER BY %1 LIMIT 1 OFFSET ?")
                      .arg(QLatin1String(RecordSql::imageOrder)));
    while (!stop && series.next()) {
        if (result.entries.size() >= most) {
            ++result.more;
            continue;
        }
        SeriesEntry entry;
        entry.series = series.value(0).toLongLong();
        entry.study = series.value(1).toLongLong();
        entry.modality = series.value(2).toString();
        entry.number = series.value(3).toString();
        entry.description = series.value(4).toString();
        entry.images = series.value(5).toInt();
        addMiddleImage(image, entry);
        result.entries.append(entry);
    }
    return result;
}
