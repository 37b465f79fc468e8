#include "recorddeletion.h"

#include "configlocation.h"
#include "dabasehelper.h"
#include "databaseerror.h"
#include "deletionbranches.h"
#include "deletionjournal.h"
#include "indexconnection.h"
#include "longwrite.h"

#include <QSettings>
#include <QVariant>

#include <optional>

namespace {

constexpr int everyFileSetting = 1;
/// How long others may hold the lock before a deletion gives up, and how long one look at it takes.
constexpr qint64 longestWaitMs = 3000;
constexpr int lookMs = 100;

/// Statements do not wait long for a lock while it lives.
class ShortLockWait
{
public:
    explicit ShortLockWait(const QSqlDatabase &db)
        : m_db(db)
    {
        IndexConnection::setLockWait(m_db, lookMs);
    }
    ~ShortLockWait() { IndexConnection::setLockWait(m_db, IndexConnection::lockWaitMs); }
    ShortLockWait(const ShortLockWait &) = delete;
    ShortLockWait &operator=(const ShortLockWait &) = delete;

private:
    const QSqlDatabase m_db;
};

} // namespace

RecordDeletion::RecordDeletion(const QSqlDatabase &db, bool everyFile, QObject *parent)
    : QObject(parent)
    , m_db(db)
    , m_helper(new DabaseHelper(db, this))
    , m_branches(std::make_unique<DeletionBranches>(db, everyFile, m_helper,
          DeletionBranches::Listener{[this](int done, int total) { emit progress(done, total); },
              [this](RecordLevel level) { tellChanged(level); }}))
    , m_everyFile(everyFile)
{ }

RecordDeletion::~RecordDeletion() = default;

bool RecordDeletion::isEveryFileToGo()
{
    const QString file = ConfigLocation::checked(QLatin1String(ConfigKey::mainIni));
    return !file.isEmpty()
        && QSettings(file, QSettings::IniFormat).value(QLatin1String(ConfigKey::deleteMode)).toInt()
        == everyFileSetting;
}

DeletionReport RecordDeletion::run(const QString &table, const QList<qlonglong> &keys)
{
    DeletionReport report;
    const std::optional<RecordLevel> level = recordLevelOf(table);
    if (!level) {
        return report;
    }
    if (keys.isEmpty()) {
        m_branches->run(*level, keys);
        return report;
    }
    BegunDeletion deletion;
    deletion.level = *level;
    deletion.keys = keys;
    deletion.everyFile = m_everyFile;
    const ShortLockWait wait(m_db);
    m_waiting.start();
    do {
        report.error = DeletionJournal(m_db).note(&deletion);
    } while (mayWaitFor(report.error));
    return report.error.isValid() ? report : carryOut(deletion, true);
}

/// While somebody else writes, for a while.
bool RecordDeletion::mayWaitFor(const QSqlError &error)
{
    const bool isBusy = error.isValid()
        && connectionFailureOf(error, m_db.databaseName()).reason == ConnectionFailure::Reason::Locked;
    if (isBusy) {
        emit progress(0, 0);
    }
    return isBusy && m_waiting.elapsed() < longestWaitMs;
}

/// @param isNew nothing has gone yet: without the lock it is as if it had never been asked for
DeletionReport RecordDeletion::carryOut(const BegunDeletion &deletion, bool isNew)
{
    const DeletionJournal journal(m_db);
    DeletionReport report;
    std::optional<WriteTransaction> transaction;
    do {
        transaction.emplace(m_db);
    } while (!transaction->isActive() && isNew && mayWaitFor(transaction->error()));
    if (!transaction->isActive()) {
        report.error = transaction->error();
        report.isPending = !isNew || !journal.forget(deletion.pk);
        return report;
    }
    const LongWrite patience(LongWrite::Work::Deletion); // imports wait for as long as the files take
    const bool good =
        m_branches->runUpTo(deletion.lastImage, deletion.level, deletion.keys) && journal.forget(deletion.pk);
    if (!good || !transaction->commit()) {
        report.error = good ? transaction->error() : m_branches->error();
        report.isPending = true;
        transaction->rollback();
        for (int shown = int(RecordLevel::Image); shown >= int(RecordLevel::Patient); --shown) {
            tellChanged(RecordLevel(shown)); // the records are back
        }
    }
    report.left = m_branches->left();
    report.removedFiles = m_branches->removed();
    return report;
}

DeletionReport RecordDeletion::finishBegun(const QSqlDatabase &db, const std::atomic<bool> &stop)
{
    DeletionReport all;
    for (const BegunDeletion &begun : DeletionJournal(db).begun()) {
        if (stop) {
            all.isPending = true;
            break;
        }
        RecordDeletion deletion(db, begun.everyFile);
        const DeletionReport report = deletion.carryOut(begun, false);
        all.left += report.left;
        all.removedFiles += report.removedFiles;
        if (report.error.isValid()) {
            all.error = report.error;
            all.isPending = report.isPending;
        }
    }
    return all;
}

QVector<FileLeft> RecordDeletion::removeFiles(
    const QString &query, const QString &table, const QList<qlonglong> &keys)
{
    m_branches->removeFiles(recordLevelOf(table).value_or(RecordLevel::Patient), query, keys);
    return m_branches->left();
}

void RecordDeletion::tellChanged(RecordLevel level)
{
    emit tableChanged(QLatin1String(recordTableName(level)));
}
