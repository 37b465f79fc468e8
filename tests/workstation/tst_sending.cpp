#include "dicomfilebuilder.h"
#include "dicomservers.h"
#include "faultypeer.h"
#include "sendservice.h"
#include "storefile.h"
#include "testmain.h"

#include <QDirIterator>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <numeric>

namespace {

constexpr quint32 sopClassTag = 0x00080016;

/// Short waits, so that a test sees several attempts.
SendOptions impatient()
{
    SendOptions options;
    options.association.requestMs = 1000;
    options.association.connectMs = 2000;
    options.firstPauseMs = 50;
    options.longestPauseMs = 200;
    return options;
}

QString uidOf(int number)
{
    return QStringLiteral("1.2.3.4.%1").arg(number);
}

PeerAction answer(quint16 status)
{
    return {PeerAction::Kind::Answer, status};
}

} // namespace

class TestSending : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_store = m_folder->filePath(QStringLiteral("index.send"));
    }

    void everyObjectHasItsOwnEnd()
    {
        // The line drops at 5 and at 12; every 7th is refused for good; 10 finds no room twice; 15 never
        // does.
        const FaultyPeer peer([](int /*number*/, const QByteArray &uid, int earlier) -> PeerAction {
            const int object = uid.split('.').last().toInt();
            if ((object == 5 || object == 12) && earlier == 0) {
                return {PeerAction::Kind::DropLine, 0};
            }
            if (object % 7 == 0) {
                return answer(0xc123);
            }
            const bool isFull = object == 15 || (object == 10 && earlier < 2);
            return answer(isFull ? 0xa700 : object == 20 ? 0xb000 : 0);
        });
        SendOptions options = impatient();
        options.associationsPerNode = 1;
        SendService service(m_store, options);
        QSignalSpy accepted(&service, &SendService::accepted);
        QStringList paths = writeSeries(m_folder->filePath(QStringLiteral("files")), 30);
        QFile text(m_folder->filePath(QStringLiteral("files/readme.txt")));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no image") > 0);
        text.close();
        paths << text.fileName() << m_folder->filePath(QStringLiteral("files"))
              << m_folder->filePath(QStringLiteral("files/gone.dcm"));

        const qint64 job = service.enqueue(paths, node(peer.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, job));

        const SendJob ended = service.job(job);
        QCOMPARE(ended.total, 31);
        QCOMPARE(ended.accepted, 25);
        QCOMPARE(ended.warned, 1);
        QCOMPARE(ended.failed, 6); // 7, 14, 21, 28, 15 and the one that is gone
        QCOMPARE(ended.skippedFolders, 1);
        QCOMPARE(ended.skippedFiles, 1);
        const QHash<QString, SendObject> objects = objectsOf(service, job);
        QCOMPARE(objects[uidOf(7)].outcome.problem, StoreProblem::Refused);
        QCOMPARE(int(objects[uidOf(7)].outcome.status), 0xc123);
        QCOMPARE(objects[uidOf(7)].attempts, 1);
        QCOMPARE(objects[uidOf(15)].outcome.problem, StoreProblem::OutOfResources);
        QCOMPARE(objects[uidOf(15)].attempts, options.attemptsPerObject);
        QCOMPARE(objects[uidOf(10)].state, SendObjectState::Accepted);
        QCOMPARE(objects[uidOf(10)].attempts, 3);
        QVERIFY(objects[uidOf(20)].outcome.isWarning());
        QCOMPARE(objects[uidOf(5)].attempts, 2);
        QCOMPARE(objects[QString()].outcome.problem, StoreProblem::FileGone);
        const QHash<QByteArray, int> atPeer = peer.accepted();
        QVERIFY(std::all_of(atPeer.cbegin(), atPeer.cend(), [](int times) { return times <= 1; }));
        QTRY_COMPARE(std::accumulate(accepted.cbegin(), accepted.cend(), 0,
                         [](int sum, const QVariantList &one) { return sum + one[1].toInt(); }),
            25);

        service.retryFailed(job);
        QTRY_VERIFY(!service.job(job).isOver() || service.job(job).ended != ended.ended);
        QVERIFY(waitForEnd(service, job));
        QCOMPARE(service.job(job).accepted, 25);
        service.remove(job);
        QTRY_COMPARE(service.job(job).id, 0);
    }

    void aSilentPeerIsAskedAgain()
    {
        const FaultyPeer peer([](int number, const QByteArray & /*uid*/, int /*earlier*/) -> PeerAction {
            return number == 3 ? PeerAction{PeerAction::Kind::BeSilent, 0} : answer(0);
        });
        SendService service(m_store, impatient());
        const qint64 job =
            service.enqueue(writeSeries(m_folder->path(), 6), node(peer.port()), SendSource::Forwarding);
        QTRY_COMPARE(service.job(job).trouble.problem, NetworkProblem::NoAnswer);
        QVERIFY(waitForEnd(service, job));
        QCOMPARE(service.job(job).accepted, 6);
        QCOMPARE(peer.received().size(), 7);
    }

    void onlyUncompressed()
    {
        const QString corpus = sharedData();
        if (corpus.isEmpty()) {
            QSKIP("the shared corpus is not there");
        }
        StoreFileReader reader;
        QHash<QByteArray, QString> bySyntax;
        QDirIterator walk(
            corpus + QStringLiteral("/03-transfer-syntaxes/same-ct-in-15-syntaxes"), QDir::Files);
        while (walk.hasNext()) {
            const StoreFile file = reader.read(QFile::encodeName(walk.next()));
            if (file.problem == StoreProblem::None) {
                bySyntax.insert(file.kind.transferSyntax, walk.filePath());
            }
        }
        const QByteArray rle("1.2.840.10008.1.2.5");
        const QByteArray jpeg2000("1.2.840.10008.1.2.4.90");
        QVERIFY(bySyntax.contains(rle) && bySyntax.contains(jpeg2000));

        const FaultyPeer plain({}, FaultyPeer::Takes::OnlyUncompressed);
        const FaultyPeer any;
        SendService service(m_store, impatient());
        const QStringList paths{bySyntax[rle], bySyntax[jpeg2000]};
        const qint64 toPlain = service.enqueue(paths, node(plain.port()), SendSource::Dialog);
        const qint64 toAny = service.enqueue(paths, node(any.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, toPlain));
        QVERIFY(waitForEnd(service, toAny));
        QCOMPARE(service.job(toPlain).accepted, 1);
        QCOMPARE(plain.received().first().transferSyntax, QByteArray("1.2.840.10008.1.2.1"));
        const QVector<SendObject> refused = service.objects(toPlain, 0, 10, true);
        QCOMPARE(refused.size(), 1);
        QCOMPARE(refused.first().outcome.problem, StoreProblem::SyntaxNotAccepted);
        QCOMPARE(service.job(toAny).accepted, 2);
        QCOMPARE(any.received().first().transferSyntax, rle);
    }

    void aFileThatDoesNotSayHowItIsWritten()
    {
        const QString path = writeSeries(m_folder->path(), 1).first();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        const QByteArray syntax = QByteArray("\x02\x00\x10\x00UI\x14\x00", 8) + "1.2.840.10008.1.2.1" + '\0';
        constexpr int lengthOfGroup = 128 + 4 + 8;
        const int place = bytes.indexOf(syntax);
        QVERIFY(place > 0);
        bytes[lengthOfGroup] = char(bytes[lengthOfGroup] - syntax.size());
        bytes.remove(place, syntax.size());
        QVERIFY(file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size()));
        file.close();

        const FaultyPeer peer;
        SendService service(m_store, impatient());
        const qint64 job = service.enqueue({path}, node(peer.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, job));
        QCOMPARE(service.job(job).accepted, 1);
        QCOMPARE(StoreFileReader().read(QFile::encodeName(path)).dataSet, 0);
    }

    void moreKindsThanOneAssociationHas()
    {
        QStringList paths;
        for (int kind = 1; kind <= 150; ++kind) {
            paths.append(m_folder->filePath(QStringLiteral("%1.dcm").arg(kind)));
            DicomFileBuilder()
                .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"), uidOf(kind))
                .set(sopClassTag, QStringLiteral("1.2.840.10008.5.1.4.1.1.%1").arg(1000 + kind))
                .write(paths.last());
        }
        const FaultyPeer peer;
        SendService service(m_store, impatient());
        const qint64 job = service.enqueue(paths, node(peer.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, job));
        QCOMPARE(service.job(job).accepted, 150);
        QCOMPARE(peer.mostContexts(), ScuAssociation::mostContexts);
        QVERIFY(peer.associations() >= 3);
    }

    void aNodeThatIsAwayHoldsUpNoOther()
    {
        const QStringList paths = writeSeries(m_folder->path(), 10);
        const int awayPort = freePort();
        const FaultyPeer peer;
        SendOptions options = impatient();
        SendService service(m_store, options);
        const qint64 away = service.enqueue(paths, node(awayPort), SendSource::Dialog);
        const qint64 other = service.enqueue(paths, node(peer.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, other));
        QTRY_COMPARE(service.job(away).trouble.problem, NetworkProblem::Refused);
        QVERIFY(service.job(away).nextTry.isValid());
        QCOMPARE(service.job(away).left(), 10);

        const auto late = DicomServer::storescp();
        const qint64 third = service.enqueue(paths, node(late->port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, third));
        QCOMPARE(service.job(third).accepted, 10);
    }

    void aRejectedTitleFailsAtOnce()
    {
        const auto archive = DicomServer::orthanc({}, {{QStringLiteral("DicomCheckCalledAet"), true}});
        SendService service(m_store, impatient());
        const qint64 job = service.enqueue(writeSeries(m_folder->path(), 3),
            {QStringLiteral("WRONG"), archive->host(), archive->port()}, SendSource::Dialog);
        QVERIFY(waitForEnd(service, job));
        const QVector<SendObject> failed = service.objects(job, 0, 10, true);
        QCOMPARE(failed.size(), 3);
        QCOMPARE(failed.first().outcome.network.problem, NetworkProblem::RejectedCalled);
    }

    void pauseCancelRetry()
    {
        std::atomic<bool> open{false};
        const FaultyPeer peer([&open](int number, const QByteArray & /*uid*/, int /*earlier*/) -> PeerAction {
            return answer(open || number <= 5 ? 0 : 0xa700);
        });
        SendOptions options = impatient();
        options.attemptsPerObject = 1000;
        options.associationsPerNode = 1;
        SendService service(m_store, options);
        const QStringList paths = writeSeries(m_folder->path(), 20);
        const qint64 job = service.enqueue(paths, node(peer.port()), SendSource::Dialog);
        QTRY_COMPARE(service.job(job).accepted, 5);
        service.pause(job);
        QTRY_COMPARE(service.job(job).state, SendJobState::Paused);
        open = true;
        const qint64 other = service.enqueue({paths.first()}, node(peer.port()), SendSource::Dialog);
        QVERIFY(waitForEnd(service, other)); // and had its chance to take the paused ones along
        QCOMPARE(service.job(job).accepted, 5);
        service.resume(job);
        QVERIFY(waitForEnd(service, job));
        QCOMPARE(service.job(job).accepted, 20);

        open = false;
        const qint64 cancelled = service.enqueue(paths, node(peer.port()), SendSource::Dialog);
        QTRY_COMPARE(service.job(cancelled).left(), 20);
        service.cancel(cancelled);
        QTRY_COMPARE(service.job(cancelled).state, SendJobState::Cancelled);
        open = true;
        service.retryFailed(cancelled);
        QTRY_COMPARE(service.job(cancelled).state, SendJobState::Ended);
        QCOMPARE(service.job(cancelled).accepted, 20);
    }

    void realPeers()
    {
        const QStringList paths = writeSeries(m_folder->filePath(QStringLiteral("files")), 50);
        const auto archive = DicomServer::orthanc();
        const auto storage = DicomServer::storescp({QStringLiteral("--fork")});
        SendService service(m_store, impatient());
        const qint64 toArchive = service.enqueue(
            paths, {archive->aeTitle(), archive->host(), archive->port()}, SendSource::Dialog);
        const qint64 toStorage = service.enqueue(
            paths, {storage->aeTitle(), storage->host(), storage->port()}, SendSource::Dialog);
        QVERIFY(waitForEnd(service, toArchive));
        QVERIFY(waitForEnd(service, toStorage));
        QCOMPARE(service.job(toArchive).accepted, 50);
        QCOMPARE(service.job(toStorage).accepted, 50);
        QCOMPARE(archive->rest(QStringLiteral("/statistics"))
                     .object()
                     .value(QStringLiteral("CountInstances"))
                     .toInt(),
            50);
        QCOMPARE(storage->files().size(), 50);
    }

private:
    bool waitForEnd(SendService &service, qint64 job, int milliseconds = 30000)
    {
        return QTest::qWaitFor([&] { return service.job(job).isOver(); }, milliseconds);
    }
    DicomNode node(int port) const { return {QStringLiteral("PEER"), QStringLiteral("127.0.0.1"), port}; }
    QHash<QString, SendObject> objectsOf(const SendService &service, qint64 job) const
    {
        QHash<QString, SendObject> found;
        for (const SendObject &object : service.objects(job, 0, 100'000)) {
            found.insert(object.sopInstanceUid, object);
        }
        return found;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_store;
};

PM_TEST_MAIN(TestSending)
#include "tst_sending.moc"
