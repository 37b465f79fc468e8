#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "dicomservers.h"
#include "frame.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "objectspool.h"
#include "receiveservice.h"
#include "settingsnotifier.h"
#include "spoolfile.h"
#include "swimconfig.h"
#include "testfiles.h"
#include "testmain.h"

#include <QAction>
#include <QFile>
#include <QScrollBar>
#include <QToolButton>
#include <QtTest>

#include <optional>

namespace {

QString text(const char *latin1)
{
    return QLatin1String(latin1);
}

} // namespace

class ReceivingTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        ConfigLocation::setBase(m_folder->path());
        writeFile(m_folder->filePath(text("config/main.ini")), {});
        m_said.emplace();
    }
    void cleanup()
    {
        ConfigLocation::setBase({});
        m_said.reset();
    }

    void showsNewPatients()
    {
        const int port = freePort();
        configure(true, port);
        const Frame frame(3);
        const auto *said = frame.window->findChild<QToolButton *>(text("statusReceive"));
        QVERIFY(said && said->isVisibleTo(frame.window.get()));
        QCOMPARE(send(port, {object(1), object(2)}), 0);
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 5);
        QTRY_VERIFY2(said->text().contains(QLatin1Char('2')), qPrintable(said->text()));
    }

    void followsTheSettingsAtOnce()
    {
        const TemporaryIndex index;
        ReceiveService service;
        service.openIndex(index.path());
        QVERIFY(!service.status().listening); // off unless somebody wants it
        const int port = freePort();
        configure(true, port);
        QVERIFY(service.status().listening);
        QCOMPARE(echo(port), 0);
        const int other = freePort();
        configure(true, other);
        QCOMPARE(echo(other), 0);
        QVERIFY(echo(port) != 0);
        QTRY_COMPARE(service.status().counts.associations, 0);
        ReceiveProblem told = ReceiveProblem::None;
        connect(&service, &ReceiveService::changed, &service,
            [&] { told = service.status().counts.lastProblem.problem; });
        QVERIFY(echo(other, "SOMEBODY") != 0); // over within a moment, and told of all the same
        QTRY_COMPARE(int(told), int(ReceiveProblem::WrongCalledTitle));
        configure(false, other);
        QVERIFY(echo(other) != 0);
        QCOMPARE(m_said->texts, QStringList());
    }

    void saysWhereAnotherProgramListens()
    {
        auto occupant = DicomServer::storescp();
        const Frame frame;
        configure(true, occupant->port());
        QTRY_COMPARE(m_said->texts.size(), 1);
        QVERIFY(m_said->texts.first().contains(QString::number(occupant->port())));
        auto *said = frame.window->findChild<QToolButton *>(text("statusReceive"));
        QVERIFY(!said->text().isEmpty());
        QVERIFY(said->toolTip().contains(m_said->texts.first()));

        const quint16 port = occupant->port();
        occupant.reset(); // it ends, and nobody touches the settings
        QTRY_COMPARE(echo(port), 0);
        QVERIFY(echo(port, "SOMEBODY") != 0);
        QTRY_VERIFY2(said->text().contains(text("1 refused")), qPrintable(said->text()));
        QCOMPARE(m_said->texts.size(), 1);
        QTest::mouseClick(said, Qt::LeftButton);
        QVERIFY(swimconfig::instance()->isVisible());
        swimconfig::instance()->close();
    }

    void movesToAnotherIndex()
    {
        const TemporaryIndex index;
        ReceiveService service;
        service.openIndex(index.path());
        const int port = freePort();
        configure(true, port);
        QCOMPARE(send(port, {object(1)}), 0);
        QTRY_COMPARE(index.query(text("SELECT count(*) FROM imageformat")).toInt(), 1);
        service.closeIndex();
        QVERIFY(echo(port) != 0);
        QVERIFY(!service.provider());
        QVERIFY(!QFile::exists(ObjectSpool::folderOf(index.path())));

        // What lies in the spool comes in with the index, whether or not the port is on.
        configure(false, port);
        {
            ObjectSpool left(index.path());
            QCOMPARE(left.open(), 0);
            int error = 0;
            const std::unique_ptr<SpoolFile> file = left.create(&error);
            const QByteArray all = bytesOf(object(2));
            file->write(all.constData(), std::size_t(all.size()));
            QCOMPARE(file->keep(), 0);
        }
        service.openIndex(index.path());
        QTRY_COMPARE(index.query(text("SELECT count(*) FROM imageformat")).toInt(), 2);
    }

private:
    void configure(bool enabled, int port) const
    {
        ReceiveSettings settings = ReceiveSettings::read();
        settings.enabled = enabled;
        settings.port = port;
        QVERIFY(settings.write());
        emit SettingsNotifier::instance()->receivingChanged();
    }
    QString object(int patient) const
    {
        const QString uid = QStringLiteral("1.9.%1").arg(patient);
        const QString path = m_folder->filePath(QStringLiteral("%1.dcm").arg(patient));
        DicomFileBuilder()
            .patient(QStringLiteral("R%1").arg(patient), QStringLiteral("Received^%1").arg(patient))
            .uids(uid, uid + text(".1"), uid + text(".1.1"))
            .write(path);
        return path;
    }
    static int send(int port, const QStringList &paths)
    {
        return runTool(text("storescu"),
            QStringList{text("-aec"), text(ConfigKey::usualAeTitle), text("127.0.0.1"), QString::number(port)}
                + paths)
            .exitCode;
    }
    static int echo(int port, const char *called = ConfigKey::usualAeTitle)
    {
        return runTool(
            text("echoscu"), {text("-aec"), text(called), text("127.0.0.1"), QString::number(port)})
            .exitCode;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<MessageAnswers> m_said;
};

PM_TEST_MAIN(ReceivingTest)
#include "tst_receiving.moc"
