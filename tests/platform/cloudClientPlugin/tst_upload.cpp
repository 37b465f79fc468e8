#include "cloudclientasynchandler.h"
#include "dicomfilebuilder.h"
#include "dicomjson.h"
#include "httpuploadfile.h"
#include "oddservice.h"
#include "postgresserver.h"
#include "qdcmrecvfile.h"
#include "queueownership.h"
#include "storeservice.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "uploadfilesmodel.h"
#include "uploadtask.h"
#include "webclient.h"
#include "websession.h"

#include <QNetworkReply>
#include <QSignalSpy>
#include <QtTest>

namespace {

using State = UploadTally::State;
using Plan = StoreService::Plan;

constexpr int mostMs = 30000;
constexpr int objects = 21;
const QString seriesUid = QStringLiteral("1.2.3.4");

StoreService::Deed takeAll(int /*number*/, const QStringList &uids)
{
    return StoreService::answer(uids);
}

bool isSeventh(const QString &uid)
{
    return uid.section(QLatin1Char('.'), -1).toInt() % 7 == 0;
}

/// Refuses every seventh object, with a code or by a status for the whole.
StoreService::Deed refuseSevenths(const QStringList &uids, const QByteArray &status, bool inWords)
{
    QStringList good;
    QStringList bad;
    for (const QString &uid : uids) {
        (isSeventh(uid) ? bad : good).append(uid);
    }
    if (!bad.isEmpty() && !inWords) {
        return {"HTTP/1.1 " + status + "\r\nContent-Length: 0\r\n\r\n", false, {}};
    }
    return StoreService::answer(good, bad, bad.isEmpty() ? QByteArray("200 OK") : status);
}

Plan firstThen(const StoreService::Deed &first, int times)
{
    return [first, times](int number, const QStringList &uids) {
        return number <= times ? first : takeAll(number, uids);
    };
}

} // namespace

Q_DECLARE_METATYPE(StoreService::Plan)

class UploadTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryIndex> m_index;
    QStringList m_files;

    static void signIn(const QString &address)
    {
        HttpUploadFile::instance()->setSession(webSessionAt(address));
    }

    static UploadAccess access()
    {
        UploadAccess access;
        access.assistUrl = HttpUploadFile::instance()->getAssistUrl().toUtf8();
        return access;
    }

    static CloudClientAsyncHandler &handler() { return *HttpUploadFile::instance()->newClientAsyncHandler(); }

    /// The upload of the index's one series, as the window asks for it.
    std::unique_ptr<UpLoadTask> upload() const
    {
        QDcmRecvFile writer;
        QStringList series;
        QStringList uids;
        for (int number = 1; number <= objects; ++number) {
            series.append(seriesUid);
            uids.append(seriesUid + QLatin1Char('.') + QString::number(number));
        }
        if (!writer.needtoWriteDB(series)) {
            return nullptr;
        }
        writer.onNotifyWriteDB(series, uids, m_files, QString());
        return std::unique_ptr<UpLoadTask>(handler().newUpLoadTask(series, uids, m_files, access()));
    }

    QString counters() const
    {
        return m_index
            ->query(
                QStringLiteral("SELECT recvnum || '/' || ifnull(upCloudnum, '-') || '/' || (SELECT count(*) "
                               "FROM images WHERE Cloudflag = 1) FROM series"))
            .toString();
    }

    static QString told(const UploadTally &tally)
    {
        return QStringLiteral("%1 of %2, %3 failed, %4 waiting")
            .arg(tally.succeeded)
            .arg(tally.all)
            .arg(tally.failed)
            .arg(tally.waiting + tally.inFlight);
    }

private slots:
    static void initTestCase() { allowWarning(QStringLiteral("must only be called once")); }

    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        m_files.clear();
        for (int number = 1; number <= objects; ++number) {
            m_files.append(m_index->folder() + QStringLiteral("/files/%1.dcm").arg(number));
            DicomFileBuilder()
                .patient(QStringLiteral("P"), QStringLiteral("Doe^Jane"))
                .uids(QStringLiteral("1.2.3"), seriesUid,
                    seriesUid + QLatin1Char('.') + QString::number(number))
                .instanceNumber(number)
                .write(m_files.last());
        }
        m_index->import(m_files);
    }

    void cleanup()
    {
        HttpUploadFile::instance()->releaseIndex();
        m_index.reset();
    }

    void storesInAnArchive_data()
    {
        QTest::addColumn<bool>("inDatabase");
        QTest::newRow("with SQLite") << false;
        QTest::newRow("with PostgreSQL") << true;
    }

    /// A real archive has what the index says that it has; so has a folder with files that are no objects.
    void storesInAnArchive()
    {
        QFETCH(bool, inDatabase);
        const auto database = inDatabase ? std::make_unique<PostgresServer>() : nullptr;
        const std::unique_ptr<DicomServer> archive = WebArchive::start({}, database.get());
        signIn(WebArchive::address(*archive));
        const std::unique_ptr<UpLoadTask> task = upload();
        QSignalSpy runs(task.get(), &UpLoadTask::finshUpLoad);
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        QSignalSpy steps(task.get(), &UpLoadTask::progress);
        QVERIFY(ends.wait(mostMs));
        QCOMPARE(counters(), QStringLiteral("21/21/21"));
        QCOMPARE(runs.count(), 1);
        QCOMPARE(steps.last().mid(0, 3), (QVariantList{0, objects, objects}));
        const auto stored = [&] {
            WebClient client(HttpUploadFile::instance()->session().service);
            const std::unique_ptr<QNetworkReply> reply(client.get(QStringLiteral("instances")));
            QSignalSpy finished(reply.get(), &QNetworkReply::finished);
            finished.wait(mostMs);
            return DicomJson::read(reply->readAll()).size();
        };
        QCOMPARE(stored(), objects);

        const QString folder = m_index->folder() + QStringLiteral("/loose");
        writeFile(folder + QStringLiteral("/readme.txt"), "no image");
        DicomFileBuilder()
            .uids(QStringLiteral("9.1"), QStringLiteral("9.2"), QStringLiteral("9.3"))
            .write(folder + QStringLiteral("/a"));
        const QStringList loose{folder + QStringLiteral("/readme.txt"), folder + QStringLiteral("/a"),
            folder + QStringLiteral("/none")};
        const std::unique_ptr<UpLoadTask> other(handler().newUpLoadTask(loose, access()));
        QSignalSpy ended(other.get(), &UpLoadTask::finshUpLoad);
        QVERIFY(ended.wait(mostMs));
        QCOMPARE(ended[0][2].toStringList(), (QStringList{loose[0], loose[2]}));
        QCOMPARE(stored(), objects + 1);
        QCOMPARE(other->faults().value(0).kind, UploadFault::Kind::NotDicom);
        QCOMPARE(other->faults().value(1).kind, UploadFault::Kind::FileUnreadable);
    }

    void talliesAreExact_data()
    {
        QTest::addColumn<StoreService::Plan>("plan");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("counted");
        const QString allStored = QStringLiteral("21 of 21, 0 failed, 0 waiting");
        const QString sevenths = QStringLiteral("18 of 21, 3 failed, 0 waiting");
        const QString all = QStringLiteral("21/21/21");
        const QString some = QStringLiteral("21/18/18");
        const StoreService::Deed broken{"HTTP/1.1 500 Oops\r\nContent-Length: 0\r\n\r\n", false, {}};
        QTest::newRow("takes all") << Plan(takeAll) << allStored << all;
        QTest::newRow("500 at first") << firstThen(broken, 4) << allStored << all;
        QTest::newRow("nonsense at first")
            << firstThen({httpAnswer("200 OK", "text/html", "<html>"), false, {}}, 3) << allStored << all;
        QTest::newRow("hangs up without an answer") << firstThen({"", true, {}}, 2) << allStored << all;
        QTest::newRow("refuses every seventh in words")
            << Plan([](int, const QStringList &uids) { return refuseSevenths(uids, "409 Conflict", true); })
            << sevenths << some;
        QTest::newRow("refuses what holds a seventh")
            << Plan([](int, const QStringList &uids) { return refuseSevenths(uids, "400 Bad", false); })
            << sevenths << some;
        QTest::newRow("breaks at every seventh")
            << Plan([](int, const QStringList &uids) { return refuseSevenths(uids, "500 Oops", false); })
            << sevenths << some;
        QTest::newRow("says nothing of every seventh") << Plan([](int, const QStringList &uids) {
            StoreService::Deed deed = refuseSevenths(uids, "200 OK", true);
            deed.answer.replace("00081198", "00090010");
            return deed;
        }) << sevenths << some;
    }

    /// Whatever a service does: what it acknowledged is counted, what it refused is told, and a retry can
    /// mend it.
    void talliesAreExact()
    {
        QFETCH(StoreService::Plan, plan);
        StoreService service(plan);
        signIn(service.address());
        const std::unique_ptr<UpLoadTask> task = upload();
        QSignalSpy runs(task.get(), &UpLoadTask::finshUpLoad);
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        QTRY_COMPARE_WITH_TIMEOUT(runs.count(), 1, mostMs);
        QTEST(told(task->tally()), "end");
        QTEST(counters(), "counted");
        QCOMPARE(runs[0][2].toStringList().size(), task->tally().failed);
        for (const int times : service.taken()) {
            QCOMPARE(times, 1);
        }
        if (task->tally().failed > 0) {
            QCOMPARE(ends.count(), 0);
            service.setPlan(takeAll);
            task->retryFailed();
            QTRY_COMPARE_WITH_TIMEOUT(runs.count(), 2, mostMs);
        }
        QTRY_COMPARE_WITH_TIMEOUT(ends.count(), 1, mostMs);
        QCOMPARE(counters(), QStringLiteral("21/21/21"));
        QCOMPARE(service.taken().size(), objects);
        QCOMPARE(m_index->count("uploadfile"), 0);
    }

    /// The session ends in the middle, the service too: the user is asked once, and all goes on.
    void goesOnAfterTheSessionAndTheServiceCameBack()
    {
        StoreService service([](int number, const QStringList &uids) {
            return number == 1
                ? StoreService::answer(uids.mid(0, 5))
                : StoreService::Deed{"HTTP/1.1 401 Who\r\nContent-Length: 0\r\n\r\n", false, {}};
        });
        service.cutAfter(300);
        signIn(service.address());
        QSignalSpy refused(HttpUploadFile::instance(), &HttpUploadFile::sessionRefused);
        std::unique_ptr<UpLoadTask> task = upload();
        QTRY_COMPARE_WITH_TIMEOUT(int(task->tally().state), int(State::NeedsSession), mostMs);
        QTRY_COMPARE(task->tally().inFlight, 0);
        QCOMPARE(refused.count(), 1);
        const int stored = service.taken().size();
        QCOMPARE(task->tally().succeeded, stored);

        // Another service's session does not help, and a task without its handle waits in the index.
        StoreService other(takeAll);
        signIn(other.address());
        task.reset();
        HttpUploadFile::instance()->releaseIndex();
        const QVector<UpLoadTask *> unfinished = handler().unfinished(access());
        QCOMPARE(unfinished.size(), 1);
        task.reset(unfinished[0]);
        QCOMPARE(told(task->tally()),
            QStringLiteral("%1 of 21, 0 failed, %2 waiting").arg(stored).arg(objects - stored));
        QTRY_COMPARE(int(task->tally().state), int(State::NeedsSession));
        QCOMPARE(other.requests(), 0);

        service.leave();
        service.setPlan(takeAll);
        signIn(service.address());
        QTRY_COMPARE_WITH_TIMEOUT(int(task->tally().state), int(State::Retrying), mostMs);
        QCOMPARE(task->tally().trouble.problem, WebProblem::NoRoute);
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        service.comeBack();
        QVERIFY(ends.wait(mostMs));
        QCOMPARE(counters(), QStringLiteral("21/21/21"));
        for (const int times : service.taken()) {
            QCOMPARE(times, 1);
        }
    }

    /// A service that never answers holds nobody up: cancelled, the series is as before, and may be uploaded
    /// again.
    void cancelsWhatIsNeverAnswered()
    {
        StoreService service([](int, const QStringList &) { return StoreService::Deed(); });
        signIn(service.address());
        const std::unique_ptr<UpLoadTask> task = upload();
        QTRY_VERIFY_WITH_TIMEOUT(task->tally().inFlight > 0, mostMs);
        QCOMPARE(counters(), QStringLiteral("21/0/0"));
        m_index->query(QStringLiteral("UPDATE generalseries SET Status = '上传中'"));
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        task->finishTask();
        QVERIFY(ends.wait(mostMs));
        QTRY_COMPARE(counters(), QStringLiteral("21/-/0"));
        QCOMPARE(m_index->query(QStringLiteral("SELECT Status FROM generalseries")).toString(),
            QStringLiteral("未上传"));
        service.setPlan(takeAll);
        const std::unique_ptr<UpLoadTask> again = upload();
        QSignalSpy stored(again.get(), &UpLoadTask::finshTask);
        QVERIFY(stored.wait(mostMs));
        QCOMPARE(counters(), QStringLiteral("21/21/21"));
    }

    /// While the index cannot let it go, a cancelled upload does not come back.
    void staysCancelled()
    {
        StoreService service([](int, const QStringList &) { return StoreService::Deed(); });
        signIn(service.address());
        const std::unique_ptr<UpLoadTask> task = upload();
        QTRY_VERIFY_WITH_TIMEOUT(task->tally().inFlight > 0, mostMs);
        const QString loose = m_index->folder() + QStringLiteral("/loose");
        DicomFileBuilder()
            .uids(QStringLiteral("9.1"), QStringLiteral("9.2"), QStringLiteral("9.3"))
            .write(loose);
        const std::unique_ptr<UpLoadTask> other(handler().newUpLoadTask({loose}, access()));
        QTRY_COMPARE_WITH_TIMEOUT(other->tally().inFlight, 1, mostMs);
        m_index->query(QStringLiteral("CREATE TRIGGER held BEFORE DELETE ON uploadtask BEGIN "
                                      "SELECT raise(ABORT, 'held'); END"));
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        task->finishTask();
        QVERIFY(ends.wait(mostMs));
        service.setPlan(takeAll);
        // The engine reads how all uploads stand.
        m_index->query(QStringLiteral("UPDATE uploadfile SET State = 3 WHERE FilePath = ?"), {loose});
        QTRY_COMPARE_WITH_TIMEOUT(other->tally().failed, 1, mostMs);
        m_index->query(QStringLiteral("DROP TRIGGER held"));
        QTRY_COMPARE_WITH_TIMEOUT(counters(), QStringLiteral("21/-/0"), mostMs);
        QCOMPARE(service.taken().size(), 0);
    }

    /// What was read ahead is not sent when its record has gone; what is replaced on its way is not taken
    /// for the new one. What has the same content elsewhere is still in the cloud, other content is not.
    void sendsWhatTheIndexHasNow()
    {
        StoreService service([](int, const QStringList &) {
            return StoreService::Deed{"HTTP/1.1 401 Who\r\nContent-Length: 0\r\n\r\n", false, {}};
        });
        signIn(service.address());
        const std::unique_ptr<UpLoadTask> task = upload();
        QSignalSpy runs(task.get(), &UpLoadTask::finshUpLoad);
        QTRY_COMPARE_WITH_TIMEOUT(int(task->tally().state), int(State::NeedsSession), mostMs);
        QTRY_COMPARE(task->tally().inFlight, 0);
        m_index->query(QStringLiteral("DELETE FROM imageformat WHERE SOPInstanceUID = '1.2.3.4.5'"));
        QString replaced;
        service.setPlan([&](int number, const QStringList &uids) {
            if (replaced.isEmpty()) {
                replaced = uids.first();
                m_index->query(
                    QStringLiteral("UPDATE imageformat SET FileTime = FileTime + 1 WHERE SOPInstanceUID = ?"),
                    {replaced});
            }
            return takeAll(number, uids);
        });
        signIn(service.address());
        QTRY_COMPARE_WITH_TIMEOUT(runs.count(), 1, mostMs);
        QCOMPARE(told(task->tally()), QStringLiteral("20 of 21, 1 failed, 0 waiting"));
        QCOMPARE(task->faults().value(0).kind, UploadFault::Kind::RecordDeleted);
        QCOMPARE(counters(), QStringLiteral("20/20/20"));
        for (auto taken = service.taken().cbegin(); taken != service.taken().cend(); ++taken) {
            QCOMPARE(taken.value(), taken.key() == replaced ? 2 : 1);
        }
        QCOMPARE(service.taken().size(), objects - 1);

        const QString copied = m_index->folder() + QStringLiteral("/copied");
        QVERIFY(QFile::copy(m_files[0], copied));
        m_index->import({copied}, ImportMode::Copy);
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT count(*) FROM imageformat WHERE SourcePath = ?"), {copied})
                .toInt(),
            1);
        QCOMPARE(counters(), QStringLiteral("20/20/20"));
        DicomFileBuilder()
            .patient(QStringLiteral("P"), QStringLiteral("Doe^Jane"))
            .uids(QStringLiteral("1.2.3"), seriesUid, seriesUid + QStringLiteral(".2"))
            .instanceNumber(200)
            .write(m_files[1]);
        m_index->import({m_files[1]});
        QCOMPARE(counters(), QStringLiteral("20/19/19"));
    }

    /// While another program sends, or writes the index, nothing is sent twice and nothing is lost; what is
    /// deleted while it waits fails for that reason.
    void waitsForOthers()
    {
        StoreService service(takeAll);
        signIn(service.address());
        auto owner = std::make_unique<QueueOwnership>(m_index->path() + QStringLiteral(".upload"));
        QVERIFY(owner->tryToGet());
        const std::unique_ptr<UpLoadTask> task = upload();
        QSignalSpy runs(task.get(), &UpLoadTask::finshUpLoad);
        QTRY_COMPARE(counters(), QStringLiteral("21/0/0"));
        m_index->query(QStringLiteral("DELETE FROM imageformat WHERE SOPInstanceUID = '1.2.3.4.5'"));
        QTRY_COMPARE_WITH_TIMEOUT(task->tally().failed, 1, mostMs);
        QCOMPARE(task->faults().value(0).kind, UploadFault::Kind::RecordDeleted);
        QCOMPARE(service.requests(), 0);

        QVERIFY(m_index->database().transaction());
        m_index->query(QStringLiteral("UPDATE patient SET PatientComments = 'held'"));
        owner.reset();
        QTRY_COMPARE_WITH_TIMEOUT(service.taken().size(), objects - 1, mostMs);
        QTRY_COMPARE_WITH_TIMEOUT(int(task->tally().state), int(State::Paused), mostMs);
        QCOMPARE(task->tally().succeeded, 0);
        QVERIFY(m_index->database().commit());
        QTRY_COMPARE_WITH_TIMEOUT(runs.count(), 1, mostMs);
        QCOMPARE(counters(), QStringLiteral("20/20/20"));
        task->setUploadedCloudflag(true);
        QSignalSpy ends(task.get(), &UpLoadTask::finshTask);
        task->finishTask();
        QVERIFY(ends.wait(mostMs));
        QCOMPARE(counters(), QStringLiteral("20/20/20"));
    }

    void rowsShowTallies()
    {
        UploadFilesModel model({QStringLiteral("id"), QStringLiteral("name")});
        model.addSeriesUIDList({QStringLiteral("1.1"), QStringLiteral("1.2")});
        model.addRow({QStringLiteral("7"), QStringLiteral("A")});
        model.addRow({QStringLiteral("8"), QStringLiteral("B")});
        model.updateRow({QStringLiteral("8"), QStringLiteral("C")});
        model.updateRow({QStringLiteral("9"), QStringLiteral("D")});
        QCOMPARE(model.index(1, 1).data().toString(), QStringLiteral("C"));
        QCOMPARE(model.getSeriesUIDData(),
            (QVector<QStringList>{{QStringLiteral("1.1"), QStringLiteral("1.2")}, {}}));
        UploadTally tally;
        tally.all = 8;
        tally.succeeded = 3;
        tally.failed = 1;
        model.setTally(7, tally);
        QCOMPARE(model.index(0, model.columnOf(UploadFilesModel::Progress))
                     .data(UploadFilesModel::RawRole)
                     .toInt(),
            37);
        QCOMPARE(model.index(0, 0).data(UploadFilesModel::FailedRole).toInt(), 1);
        model.removeTask(7);
        QCOMPARE(model.getSeriesUIDData(), QVector<QStringList>{{}});
    }
};

PM_TEST_MAIN(UploadTest)
#include "tst_upload.moc"
