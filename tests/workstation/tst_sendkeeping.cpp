#include "dicomfilebuilder.h"
#include "faultypeer.h"
#include "sendlog.h"
#include "sendservice.h"
#include "sendstore.h"
#include "testmain.h"

#include <QSqlQuery>
#include <QtTest>

namespace {

SendOptions oneAssociation()
{
    SendOptions options;
    options.associationsPerNode = 1;
    return options;
}

} // namespace

/// Jobs are kept whatever the disk says, and nobody waits for it.
class SendKeepingTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_store = m_folder->filePath(QStringLiteral("later/index.send"));
    }

    void manyPathsAreLookedAtInTheBackground()
    {
        constexpr int count = 100'000;
        QVERIFY(makePlace());
        QStringList paths{QString(), QStringLiteral("a") + QChar()};
        for (int i = 0; i < count; ++i) {
            paths.append(m_folder->filePath(QStringLiteral("gone/%1.dcm").arg(i)));
        }
        SendService service(m_store, oneAssociation());
        QVector<qint64> unlisted;
        qint64 job = 0;
        connect(&service, &SendService::changed, this, [&] { unlisted.append(service.job(job).unlisted); });
        job = service.enqueue(paths, node(1), SendSource::Forwarding);
        QVERIFY(job != 0 && unlisted.isEmpty()); // nothing is done before the event loop turns
        QTRY_VERIFY_WITH_TIMEOUT(service.job(job).isOver(), 60'000);
        // And it turned while they were looked at.
        QVERIFY(std::any_of(
            unlisted.cbegin(), unlisted.cend(), [](qint64 left) { return left > 0 && left < count; }));
        QCOMPARE(service.job(job).failed, count);
        QCOMPARE(service.job(job).skippedFiles, 2);
        QCOMPARE(service.objects(job, count - 100, 200, true).size(), 100);
    }

    void aFolderIsNeededUntilItsFilesAreThere()
    {
        QVERIFY(makePlace());
        const QStringList paths = writeSeries(m_folder->path(), 1);
        QVERIFY(!SendLog(m_store).mayNeed(m_folder->path())); // nothing was ever sent
        SendService service(m_store, oneAssociation());
        const qint64 job = service.enqueue(paths, node(1), SendSource::Forwarding);
        QVERIFY(job != 0);
        QTRY_VERIFY(!service.objects(job, 0, 1, false).isEmpty());
        QVERIFY(SendLog(m_store).mayNeed(QFileInfo(paths[0]).path()));
        QTRY_VERIFY(!SendLog(m_store).mayNeed(QFileInfo(paths[0]).path() + QStringLiteral("x")));
    }

    void whatIsAskedForLastIsKept()
    {
        QVERIFY(makePlace());
        const QStringList paths = writeSeries(m_folder->path(), 1);
        qint64 job = 0;
        {
            SendService service(m_store);
            service.enqueue(paths, node(1), SendSource::Dialog);
            job = service.enqueue(paths, node(1), SendSource::Dialog);
        }
        const QVector<SendJob> kept = SendStore(m_store).jobs();
        QCOMPARE(kept.size(), 2);
        QCOMPARE(kept.last().id, job);
    }

    void jobsOfAnEarlierVersionStay()
    {
        QVERIFY(makePlace());
        qint64 job = 0;
        {
            SendService service(m_store);
            job = service.enqueue(writeSeries(m_folder->path(), 1), node(1), SendSource::Dialog);
        }
        {
            SendStore store(m_store);
            QSqlQuery query(store.database());
            for (const char *statement :
                {"ALTER TABLE job DROP COLUMN destination", "ALTER TABLE job DROP COLUMN patients",
                    "ALTER TABLE job DROP COLUMN patient_count", "PRAGMA user_version = 2"}) {
                QVERIFY(query.exec(QLatin1String(statement)));
            }
        }
        SendStore store(m_store);
        QCOMPARE(store.jobs().value(0).id, job);
        SendJob labelled = store.jobs().value(0);
        labelled.id = job + 1;
        labelled.label = {QStringLiteral("Archive"), {QStringLiteral("A"), QStringLiteral("B")}, 5};
        QVERIFY(store.addJob(labelled, {}));
        const SendLabel kept = store.jobs().value(1).label;
        QCOMPARE(kept.destination, labelled.label.destination);
        QCOMPARE(kept.patients, labelled.label.patients);
        QCOMPARE(kept.patientCount, 5);
    }

    void aPlaceThatComesLater()
    {
        const FaultyPeer peer;
        SendService service(m_store, oneAssociation());
        const qint64 job =
            service.enqueue(writeSeries(m_folder->path(), 3), node(peer.port()), SendSource::Dialog);
        QTRY_COMPARE(service.job(job).unlisted, 3);
        QVERIFY(!service.storeProblem().isEmpty());
        QVERIFY(makePlace());
        QTRY_VERIFY(service.job(job).isOver());
        QCOMPARE(service.job(job).accepted, 3);
        QTRY_VERIFY(service.storeProblem().isEmpty());
    }

    void nothingIsSentWhileOutcomesCannotBeNoted()
    {
        QVERIFY(makePlace());
        const FaultyPeer peer;
        {
            SendStore store(m_store);
            QVERIFY(QSqlQuery(store.database())
                        .exec(QStringLiteral("CREATE TRIGGER full BEFORE UPDATE OF attempts ON object "
                                             "BEGIN SELECT RAISE(FAIL, 'no room'); END")));
        }
        SendService service(m_store, oneAssociation());
        const qint64 job =
            service.enqueue(writeSeries(m_folder->path(), 10), node(peer.port()), SendSource::Dialog);
        QTRY_VERIFY(service.storeProblem().contains(QStringLiteral("no room")));
        QCOMPARE(peer.received().size(), 1);
        {
            SendStore store(m_store);
            QVERIFY(QSqlQuery(store.database()).exec(QStringLiteral("DROP TRIGGER full")));
        }
        QTRY_VERIFY(service.job(job).isOver());
        QCOMPARE(service.job(job).accepted, 10);
        QCOMPARE(peer.received().size(), 10); // the first one, too, came once
        QTRY_VERIFY(service.storeProblem().isEmpty());
    }

private:
    static DicomNode node(int port) { return {QStringLiteral("PEER"), QStringLiteral("127.0.0.1"), port}; }
    bool makePlace() const { return QDir(m_folder->path()).mkpath(QStringLiteral("later")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_store;
};

PM_TEST_MAIN(SendKeepingTest)
#include "tst_sendkeeping.moc"
