#include "dicomfilebuilder.h"
#include "echoscu.h"
#include "pdubuilder.h"
#include "receiver.h"
#include "tcpconnect.h"
#include "testmain.h"

#include <QDirIterator>
#include <QFile>
#include <QtTest>

#include <atomic>
#include <thread>

#include <arpa/inet.h>
#include <sys/socket.h>

namespace {

/// The long form sends 10,000; PM_FUZZ_SEED repeats a run.
constexpr int fewPdus = 1000;
constexpr int pdusBetweenLooks = 100;
constexpr qint64 mostGrowthKib = 96 * 1024;

int number(const char *variable, int usual)
{
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : usual;
}

qint64 residentKib()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray status = file.readAll();
    const int at = status.indexOf("VmRSS:");
    return status.mid(at + 6, status.indexOf("kB", at) - at - 6).trimmed().toLongLong();
}

OwnedSocket connectTo(int port)
{
    OwnedSocket peer(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<quint16>(port));
    return connect(peer.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        ? std::move(peer)
        : OwnedSocket();
}

bool answers(const Receiver &receiver)
{
    ScuOptions options;
    options.associationMs = 20'000;
    return EchoScu(
        {QLatin1String(Receiver::aeTitle), QStringLiteral("127.0.0.1"), receiver.scp->port()}, options)
        .run()
        .isNone();
}

} // namespace

class ScpFuzzTest : public QObject
{
    Q_OBJECT

private slots:
    void outlivesGarbage()
    {
        const int pdus = number("PM_FUZZ_PDUS", fewPdus);
        const quint32 seed =
            quint32(number("PM_FUZZ_SEED", int(QRandomGenerator::global()->bounded(1 << 30))));
        qInfo("%d packets, seed %u", pdus, seed);
        QRandomGenerator random(seed);
        const Receiver receiver;
        QVERIFY(answers(receiver));
        qint64 settled = 0;
        for (int i = 0; i < pdus; ++i) {
            const QByteArray bytes = PduBuilder::broken(random, Receiver::aeTitle);
            const OwnedSocket peer = connectTo(receiver.scp->port());
            QVERIFY2(peer.get() >= 0, qPrintable(QString::number(i)));
            send(peer.get(), bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (i % pdusBetweenLooks == pdusBetweenLooks - 1) {
                QVERIFY2(answers(receiver), qPrintable(QString::number(i)));
                settled = settled == 0 ? residentKib() : settled;
            }
        }
        QTRY_COMPARE_WITH_TIMEOUT(receiver.counts().associations, 0, 60000);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // sanitizers hold freed memory back
        const qint64 growth = residentKib() - settled;
        QVERIFY2(growth < mostGrowthKib, qPrintable(QString::number(growth)));
#endif
        QCOMPARE(receiver.records(), 0);
        QCOMPARE(receiver.spooled(), QStringList());
    }

    void acknowledgesNothingHalf()
    {
        const Receiver receiver;
        const auto inWork = [&receiver] {
            QDirIterator walk(ObjectSpool::folderOf(receiver.index.path()), {QStringLiteral("*.part")},
                QDir::Files, QDirIterator::Subdirectories);
            return walk.hasNext();
        };
        {
            const OwnedSocket peer = connectTo(receiver.scp->port());
            const QByteArray bytes = PduBuilder::associateRequest(Receiver::aeTitle, "HALF")
                + PduBuilder::storeRequest("1.2.3.4.5") + PduBuilder::dataPdu(1, 0, QByteArray(60'000, 'x'));
            QCOMPARE(send(peer.get(), bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL),
                ssize_t(bytes.size()));
            QTRY_VERIFY(inWork());
        }
        QTRY_COMPARE(receiver.counts().associations, 0);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::LineLost));
        QCOMPARE(receiver.counts().lastProblem.peer, QStringLiteral("HALF"));
        QCOMPARE(receiver.counts().received, 0);
        QVERIFY(!inWork());
    }

    void readsAsDeepAsAPacketGoes()
    {
        const Receiver receiver;
        const OwnedSocket peer = connectTo(receiver.scp->port());
        const QByteArray bytes =
            PduBuilder::associateRequest(Receiver::aeTitle, "DEEP") + PduBuilder::deepCommand(8000);
        QCOMPARE(send(peer.get(), bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL),
            ssize_t(bytes.size()));
        QTRY_COMPARE_WITH_TIMEOUT(receiver.counts().associations, 0, 60000);
        QVERIFY(answers(receiver));
    }

    void servesOthersBesideMuteOnes()
    {
        const Receiver receiver;
        std::vector<OwnedSocket> mute;
        for (int i = 0; i < 200; ++i) {
            mute.push_back(connectTo(receiver.scp->port()));
            QVERIFY(mute.back().get() >= 0);
        }
        QVERIFY(answers(receiver));
        // Half of them begin a request and go no further: they cost a thread each, for a while.
        for (int i = 0; i < 100; ++i) {
            send(mute[std::size_t(i)].get(), "\1\0\0\0", 4, MSG_NOSIGNAL);
        }
        QVERIFY(answers(receiver));
    }

    void servesTwoHundredAtOnce()
    {
        const Receiver receiver;
        std::atomic<int> answered{0};
        std::vector<std::thread> peers;
        for (int i = 0; i < 200; ++i) {
            peers.emplace_back([&] { answered += answers(receiver) ? 1 : 0; });
        }
        for (std::thread &peer : peers) {
            peer.join();
        }
        QCOMPARE(answered.load(), 200);
    }

    void endsSoon()
    {
        const Receiver receiver;
        const OwnedSocket idle = connectTo(receiver.scp->port());
        const QByteArray request = PduBuilder::associateRequest(Receiver::aeTitle, "IDLE");
        send(idle.get(), request.constData(), std::size_t(request.size()), MSG_NOSIGNAL);
        QTRY_COMPARE(receiver.counts().associations, 1);
        receiver.scp->stop(); // the idle time-out is five minutes: the test's own time would end before
        QCOMPARE(receiver.counts().associations, 0);
        QVERIFY(connectTo(receiver.scp->port()).get() < 0);
    }
};

PM_TEST_MAIN(ScpFuzzTest)
#include "tst_scpfuzz.moc"
