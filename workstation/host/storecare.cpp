#include "storecare.h"

#include "anonymisedfolders.h"
#include "indexconnection.h"
#include "sendlog.h"
#include "sendservice.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// Whether an upload may still read a file in a folder.
bool isUploaded(const QSqlDatabase &index, const QString &folder)
{
    QSqlQuery query(index);
    query.prepare(QStringLiteral("SELECT EXISTS(SELECT 1 FROM uploadfile WHERE FilePath BETWEEN ? AND ?)"));
    query.bindValue(0, QString(folder + QLatin1Char('/')));
    query.bindValue(1, QString(folder + QLatin1Char('0'))); // the character behind the slash
    return !query.exec() || !query.next() || query.value(0).toBool();
}

} // namespace

StoreCare::StoreCare(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<ConnectionFailure>("ConnectionFailure");
    qRegisterMetaType<DeletionReport>("DeletionReport");
    qRegisterMetaType<StoreSweep>("StoreSweep");
}

StoreCare::~StoreCare()
{
    m_stop = true;
    if (m_worker.joinable()) {
        m_worker.join();
    }
}

void StoreCare::begin(const QString &databasePath)
{
    m_running = true;
    m_worker = std::thread([this, databasePath] {
        work(databasePath);
        m_running = false;
    });
}

void StoreCare::work(const QString &databasePath)
{
    DeletionReport deletions;
    {
        const IndexConnection index(databasePath);
        if (!index.isOpen()) {
            if (!m_stop) {
                emit failed(index.failure());
            }
            return;
        }
        deletions = RecordDeletion::finishBegun(index.database(), m_stop);
    }
    sweepAnonymised(databasePath);
    const StoreSweep sweep = sweepStore(databasePath, {SendService::storePathOf(databasePath)}, m_stop);
    if (!m_stop) {
        emit finished(deletions, sweep); // queued to receivers on the GUI thread
    }
}

void StoreCare::sweepAnonymised(const QString &databasePath)
{
    const IndexConnection index(databasePath);
    const SendLog sends(SendService::storePathOf(databasePath));
    AnonymisedFolders::sweep(
        databasePath, QDateTime::currentDateTime(), [this, &index, &sends](const QString &folder) {
            return m_stop || sends.mayNeed(folder) || isUploaded(index.database(), folder);
        });
}
