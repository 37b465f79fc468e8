#include "dicomfilebuilder.h"
#include "faultypeer.h"
#include "frame.h"
#include "patientmanagermainwindow.h"
#include "sendnotifier.h"
#include "testmain.h"

#include <QSignalSpy>
#include <QtTest>

/// What the library asks to be sent, and what it hears of it.
class SendControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void theDialogsJobsAloneAdvanceIt()
    {
        const QTemporaryDir folder;
        const QStringList paths = writeSeries(folder.path(), 8);
        // The last object is refused.
        const FaultyPeer peer([](int /*number*/, const QByteArray &uid, int /*earlier*/) -> PeerAction {
            return {PeerAction::Kind::Answer, quint16(uid.endsWith(".8") ? 0xc000 : 0)};
        });
        const Frame frame;
        PatientManagerMainWindow *library = frame.window->library();
        const QSignalSpy sent(library, &PatientManagerMainWindow::notifyInstanceSent);
        const auto ask = [&](const QStringList &files) {
            emit library->notifySendSelectData(
                files, QStringLiteral("PEER"), QStringLiteral("127.0.0.1"), peer.port());
        };
        SendNotifier *notifier = SendNotifier::instance();
        ask(paths.mid(0, 3)); // a forwarding
        QTRY_COMPARE(peer.accepted().size(), 3);
        QVERIFY(notifier->jobs().isEmpty());
        const qint64 job = notifier->request(
            [&] { ask(paths.mid(3)); }, {QStringLiteral("Archive"), {QStringLiteral("Anna Meier")}, 2});
        QVERIFY(job != 0);
        QCOMPARE(notifier->job(job).destination, QStringLiteral("Archive (PEER)"));
        QVERIFY(notifier->job(job).subject.startsWith(QStringLiteral("Anna Meier and 1")));
        QTRY_VERIFY(notifier->job(job).isOver());
        QTRY_COMPARE(sent.count(), 4);
        QVERIFY(notifier->job(job).subject.startsWith(QStringLiteral("Anna Meier and 1"))); // as it was kept
        const QVector<SendFailure> failures = notifier->failures(job, 0, 10);
        QCOMPARE(failures.size(), 1);
        QCOMPARE(failures.first().file, paths.last());
        QVERIFY(failures.first().reason.contains(QStringLiteral("C000")));
    }
};

PM_TEST_MAIN(SendControllerTest)
#include "tst_sendcontroller.moc"
