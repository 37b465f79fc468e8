#include "sendschema.h"

#include "indexconnection.h"
#include "sendjob.h"

#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <iterator>

namespace {

constexpr int applicationId = 0x50445351;
constexpr int version = 3;
constexpr int firstVersion = 1; ///< kept the paths in the rows of the jobs
constexpr int unlabelledVersion = 2; ///< did not say whose images a job sends, and to whom

/// Apart from the job's row, which every object writes anew.
constexpr char pathTable[] =
    "CREATE TABLE paths(job INTEGER PRIMARY KEY REFERENCES job(id) ON DELETE CASCADE, "
    "list BLOB NOT NULL)";
constexpr char logIndex[] = "CREATE INDEX object_in_order ON object(job, id)";

/// The names of the patients are a line each.
const char *const labelColumns[] = {
    "ALTER TABLE job ADD COLUMN destination TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE job ADD COLUMN patients TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE job ADD COLUMN patient_count INTEGER NOT NULL DEFAULT 0",
};

/// The counters of a job follow its objects.
const char *const statements[] = {
    "CREATE TABLE job(id INTEGER PRIMARY KEY, ae_title TEXT NOT NULL, host TEXT NOT NULL, "
    "port INTEGER NOT NULL, source INTEGER NOT NULL, hold INTEGER NOT NULL DEFAULT 0, "
    "created INTEGER NOT NULL, ended INTEGER, unlisted INTEGER NOT NULL DEFAULT 0, "
    "total INTEGER NOT NULL DEFAULT 0, accepted INTEGER NOT NULL DEFAULT 0, "
    "warned INTEGER NOT NULL DEFAULT 0, failed INTEGER NOT NULL DEFAULT 0, "
    "skipped_folders INTEGER NOT NULL DEFAULT 0, skipped_files INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE object(id INTEGER PRIMARY KEY, job INTEGER NOT NULL REFERENCES job(id) ON DELETE CASCADE, "
    "path TEXT NOT NULL, sop_class TEXT, sop_instance TEXT, transfer_syntax TEXT, "
    "state INTEGER NOT NULL DEFAULT 0, problem INTEGER NOT NULL DEFAULT 0, "
    "status INTEGER NOT NULL DEFAULT 0, network INTEGER NOT NULL DEFAULT 0, detail TEXT, "
    "attempts INTEGER NOT NULL DEFAULT 0, not_before INTEGER NOT NULL DEFAULT 0, changed INTEGER)",
    "CREATE INDEX object_of_job ON object(job, state, id)",
    logIndex,
    pathTable,
    "CREATE TRIGGER object_added AFTER INSERT ON object BEGIN "
    "UPDATE job SET total = total + 1, failed = failed + (new.state = $failed) WHERE id = new.job; END",
    "CREATE TRIGGER object_moved AFTER UPDATE OF state ON object "
    "WHEN new.state IN ($accepted, $failed) OR old.state IN ($accepted, $failed) BEGIN "
    "UPDATE job SET accepted = accepted + (new.state = $accepted) - (old.state = $accepted), "
    "warned = warned + (new.state = $accepted AND new.status <> 0) - (old.state = $accepted AND old.status "
    "<> 0), "
    "failed = failed + (new.state = $failed) - (old.state = $failed) WHERE id = new.job; END",
};

int pragma(QSqlDatabase &db, const QString &name)
{
    QSqlQuery query(db);
    return query.exec(QStringLiteral("PRAGMA ") + name) && query.next() ? query.value(0).toInt() : -1;
}

bool isMade(QSqlDatabase &db, int as = version)
{
    return pragma(db, QStringLiteral("application_id")) == applicationId
        && pragma(db, QStringLiteral("user_version")) == as;
}

bool setVersion(QSqlQuery &query)
{
    return query.exec(QStringLiteral("PRAGMA user_version = %1").arg(version));
}

bool addPaths(QSqlQuery &query)
{
    return query.exec(QLatin1String(logIndex)) && query.exec(QLatin1String(pathTable))
        && query.exec(QStringLiteral("INSERT INTO paths SELECT id, paths FROM job WHERE paths IS NOT NULL"))
        && query.exec(QStringLiteral("UPDATE job SET paths = NULL"));
}

bool addLabels(QSqlQuery &query)
{
    return std::all_of(std::begin(labelColumns), std::end(labelColumns),
        [&query](const char *column) { return query.exec(QLatin1String(column)); });
}

} // namespace

bool prepareSendSchema(QSqlDatabase &db)
{
    if (isMade(db)) {
        return true;
    }
    WriteTransaction transaction(db);
    if (!transaction.isActive()) {
        return false;
    }
    if (isMade(db)) { // by somebody else, while we waited
        return true;
    }
    QSqlQuery query(db);
    if (isMade(db, firstVersion)) {
        return addPaths(query) && addLabels(query) && setVersion(query) && transaction.commit();
    }
    if (isMade(db, unlabelledVersion)) {
        return addLabels(query) && setVersion(query) && transaction.commit();
    }
    if (pragma(db, QStringLiteral("schema_version")) != 0) {
        return false;
    }
    for (const char *statement : statements) {
        if (!query.exec(withSendNumbers(QLatin1String(statement)))) {
            return false;
        }
    }
    return addLabels(query) && query.exec(QStringLiteral("PRAGMA application_id = %1").arg(applicationId))
        && setVersion(query) && transaction.commit();
}

bool touchSendSchema(const QSqlDatabase &db)
{
    QSqlQuery query(db);
    return setVersion(query);
}

QString withSendNumbers(QString sql)
{
    const std::pair<const char *, int> names[] = {
        {"$waiting", int(SendObjectState::Waiting)},
        {"$sending", int(SendObjectState::Sending)},
        {"$accepted", int(SendObjectState::Accepted)},
        {"$failed", int(SendObjectState::Failed)},
        {"$free", int(SendHold::None)},
        {"$cancelled", int(SendHold::Cancelled)},
    };
    for (const auto &[name, number] : names) {
        sql.replace(QLatin1String(name), QString::number(number));
    }
    return sql;
}
