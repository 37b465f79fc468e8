#include "waitingsends.h"

#include "importmarker.h"
#include "jobtext.h"
#include "recorddeletion.h"
#include "recordsql.h"
#include "selectionstatus.h"
#include "sendlog.h"
#include "sendservice.h"

#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

QSet<QString> filesToGo(const RecordSelection &records)
{
    QSqlQuery query(QSqlDatabase::database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT FilePath FROM imageformat WHERE (? OR IrradiationEventUID = ?) "
                                 "AND pk IN (%1)")
                      .arg(RecordSql::keysBelow(records.level, RecordLevel::Image))
                      .replace(QLatin1String(":keys"), QLatin1String("?")));
    query.addBindValue(RecordDeletion::isEveryFileToGo());
    query.addBindValue(QLatin1String(copiedFileMarker));
    query.addBindValue(RecordSql::keyList(records.keys));
    QSet<QString> files;
    for (bool more = query.exec() && query.next(); more; more = query.next()) {
        files.insert(query.value(0).toString());
    }
    return files;
}

bool isWaiting(const SendJob &job)
{
    return !job.isOver() && job.left() > 0;
}

} // namespace

WaitingSends WaitingSends::of(const RecordSelection &records, const SendService &sends)
{
    WaitingSends found;
    const QVector<SendJob> &jobs = sends.jobs();
    if (records.isEmpty() || std::none_of(jobs.cbegin(), jobs.cend(), isWaiting)) {
        return found;
    }
    const QSet<QString> files = filesToGo(records);
    const SendLog log(sends.storePath());
    QSet<QString> waiting;
    for (const SendJob &job : jobs) {
        const auto paths = isWaiting(job) ? log.waitingPaths(job.id) : QStringList();
        QSet<QString> its;
        for (const QString &path : paths.value_or(files.values())) { // one that cannot be read may be of any
            if (files.contains(path)) {
                its.insert(path);
            }
        }
        if (!its.isEmpty()) {
            found.destinations.append(JobText::destinationOf(job));
        }
        waiting += its;
    }
    found.images = waiting.size();
    found.destinations.removeDuplicates();
    return found;
}
