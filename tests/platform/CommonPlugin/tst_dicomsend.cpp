#include "configlocation.h"
#include "dicomsend.h"
#include "dicomservers.h"
#include "plaintableview.h"
#include "sendnotifier.h"
#include "testmain.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

namespace {

constexpr int connectionColumn = 3;

} // namespace

/// The dialog that sends, with a host that tells of its jobs and with one that only counts.
class DicomSendTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QDir(m_folder->path()).mkpath(QStringLiteral("config"));
        QDir(m_folder->path()).mkpath(QStringLiteral("program"));
        ConfigLocation::setBase(m_folder->filePath(QStringLiteral("program")));
        configure(QStringLiteral("Archive"), QStringLiteral("ARCHIVE"), 11112);
        m_dialog = std::make_unique<dicomSend>();
        m_dialog->show();
    }
    void cleanup()
    {
        m_dialog.reset();
        SendNotifier::instance()->forgetAll();
        ConfigLocation::setBase(QString());
    }

    void saysWhyNothingCanBeSent()
    {
        QVERIFY(!button("send")->isEnabled());
        QVERIFY(!text("obstacle").isEmpty());
        fill(2);
        QVERIFY(button("send")->isEnabled()); // the only destination is chosen from the start
        QVERIFY(text("obstacle").isEmpty());
        list("destinations")->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        QVERIFY(!button("send")->isEnabled());
        QVERIFY(!text("obstacle").isEmpty());
    }

    void keepsTheChoiceWhereDestinationsChange()
    {
        configure(QStringLiteral("Broken"), QStringLiteral("BROKEN"), 0);
        configure(QStringLiteral("Second"), QStringLiteral("SECOND"), 11113);
        m_dialog->setSendServiceInfo();
        QCOMPARE(list("destinations")->topLevelItemCount(), 3);
        QCOMPARE(list("destinations")->topLevelItem(0)->checkState(0), Qt::Checked);
        QVERIFY(!(list("destinations")->topLevelItem(1)->flags() & Qt::ItemIsUserCheckable));
        list("destinations")->topLevelItem(2)->setCheckState(0, Qt::Checked);
        fill(3);
        QSignalSpy asked(m_dialog.get(), &dicomSend::sendDicomfiles);
        button("send")->click();
        QCOMPARE(asked.count(), 2);
        QCOMPARE(
            asked[0].mid(1), QVariantList({QStringLiteral("ARCHIVE"), QStringLiteral("127.0.0.1"), 11112}));
        QCOMPARE(asked[1].value(3).toInt(), 11113);
        QCOMPARE(asked[1].value(0).toStringList().size(), 3);
    }

    void countsWhereTheHostTellsNothingElse()
    {
        fill(3);
        button("send")->click();
        QVERIFY(!button("send")->isEnabled()); // on its way
        QVERIFY(text("headline").contains(QStringLiteral("0 of 3")));
        m_dialog->setseriesSuccessCount();
        m_dialog->setseriesSuccessCount();
        QTRY_VERIFY(text("headline").contains(QStringLiteral("2 of 3")));
        m_dialog->setseriesSuccessCount();
        m_dialog->setseriesSuccessCount(); // one too many
        QTRY_VERIFY(text("headline").contains(QStringLiteral("3 of 3")));
        QTRY_VERIFY(button("send")->isEnabled());
    }

    void showsTheJobsOfAHostThatTells()
    {
        SendNotifier *notifier = SendNotifier::instance();
        QSignalSpy retries(notifier, &SendNotifier::retryRequested);
        QSignalSpy cancels(notifier, &SendNotifier::cancelRequested);
        SentJob job;
        job.id = 7;
        job.destination = QStringLiteral("Archive");
        job.state = SendState::Sending;
        job.total = 400;
        connect(m_dialog.get(), &dicomSend::sendDicomfiles, this, [&] {
            QVERIFY(notifier->isRequesting());
            notifier->taken(job);
        });
        fill(400);
        button("send")->click();
        QVERIFY(!notifier->isRequesting());
        job.accepted = 100;
        notifier->tell(job);
        m_dialog->setseriesSuccessCount(); // told by the job already
        QTRY_VERIFY(text("headline").contains(QStringLiteral("100 of 400")));
        button("cancelSend")->click();
        QCOMPARE(cancels.value(0).value(0).toLongLong(), 7);

        job.accepted = 398;
        job.failed = 2;
        job.state = SendState::Ended;
        const QVector<SendFailure> all{
            {QStringLiteral("/a.dcm"), QStringLiteral("1.2"), QStringLiteral("Out of resources (A700)")},
            {QStringLiteral("/b.dcm"), QString(), QStringLiteral("Gone")}};
        notifier->setFailureReader(
            this, [all](qint64 /*job*/, int first, int count) { return all.mid(first, count); });
        notifier->tell(job);
        QTRY_VERIFY(failures()->isVisible());
        QCOMPARE(failures()->model()->rowCount(), 2);
        QVERIFY(
            failures()->selectedText().contains(QStringLiteral("/a.dcm\tArchive\tOut of resources (A700)")));
        QVERIFY(button("send")->isEnabled()); // all of it may be sent again
        QVERIFY(!button("cancelSend")->isEnabled());
        button("retry")->click();
        QCOMPARE(retries.value(0).value(0).toLongLong(), 7);
    }

    void showsWhatRunsWhenItIsOpenedLater()
    {
        m_dialog->close();
        m_dialog.reset();
        SentJob job;
        job.id = 3;
        job.destination = QStringLiteral("Elsewhere");
        job.total = 20;
        job.accepted = 5;
        job.notice = QStringLiteral("Nobody answers there");
        SendNotifier::instance()->tell(job);
        m_dialog = std::make_unique<dicomSend>();
        m_dialog->show();
        QCOMPARE(text("notice"), job.notice);
        QVERIFY(text("headline").contains(QStringLiteral("5 of 20")));
        QVERIFY(!button("retry")->isVisible()); // nobody would hear it
    }

    /// Jobs that are forgotten elsewhere must not put another one beneath the chosen line.
    void keepsTheChosenSendWhereOthersGo()
    {
        SendNotifier *notifier = SendNotifier::instance();
        QSignalSpy cancels(notifier, &SendNotifier::cancelRequested);
        SentJob job;
        job.total = 20;
        for (job.id = 1; job.id <= 3; ++job.id) {
            notifier->tell(job);
        }
        QTreeWidget *jobs = list("jobs");
        QTRY_COMPARE(jobs->topLevelItemCount(), 3);
        jobs->setCurrentItem(jobs->topLevelItem(1)); // the second of three
        notifier->forget(1);
        job.id = 4;
        notifier->tell(job);
        QTRY_COMPARE(jobs->currentIndex().row(), 2);
        emit m_dialog->findChild<QPushButton *>(QStringLiteral("cancelSend"))->clicked();
        QCOMPARE(cancels.value(0).value(0).toLongLong(), 2);
        job.id = 2;
        job.state = SendState::Cancelled;
        notifier->tell(job);
        job.id = 5;
        job.state = SendState::Waiting;
        notifier->tell(job);
        QTRY_COMPARE(jobs->currentIndex().row(), 0); // what was begun after it was over
    }

    void asksDestinationsWhetherTheyAnswer()
    {
        const std::unique_ptr<DicomServer> server = DicomServer::storescp();
        configure(QStringLiteral("There"), server->aeTitle(), server->port());
        configure(QStringLiteral("Away"), QStringLiteral("AWAY"), freePort());
        m_dialog->setSendServiceInfo();
        list("destinations")->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        button("echo")->click();
        QTRY_VERIFY(connectionOf("There").startsWith(QStringLiteral("Answers")));
        QTRY_COMPARE(connectionOf("Away"), QStringLiteral("Nothing listens at that address and port"));
    }

private:
    void configure(const QString &name, const QString &aeTitle, int port) const
    {
        QSettings settings(
            m_folder->filePath(QStringLiteral("config/dicomsendservice.ini")), QSettings::IniFormat);
        settings.setValue(name + QStringLiteral("/AETitle"), aeTitle);
        settings.setValue(name + QStringLiteral("/IP"), QStringLiteral("127.0.0.1"));
        settings.setValue(name + QStringLiteral("/Port"), port);
    }
    void fill(int files) const
    {
        QStringList names;
        for (int i = 0; i < files; ++i) {
            names += QStringLiteral("/%1.dcm").arg(i);
        }
        m_dialog->setPatientInfo({QStringLiteral("A^B")}, {QStringLiteral("CT")}, {names});
    }
    QPushButton *button(const char *name) const
    {
        return m_dialog->findChild<QPushButton *>(QLatin1String(name));
    }
    QTreeWidget *list(const char *name) const
    {
        return m_dialog->findChild<QTreeWidget *>(QLatin1String(name));
    }
    QString text(const char *name) const
    {
        return m_dialog->findChild<QLabel *>(QLatin1String(name))->text();
    }
    PlainTableView *failures() const
    {
        return m_dialog->findChild<PlainTableView *>(QStringLiteral("failures"));
    }
    QString connectionOf(const char *name) const
    {
        const auto found = list("destinations")->findItems(QLatin1String(name), Qt::MatchExactly);
        return found.isEmpty() ? QString() : found.first()->text(connectionColumn);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<dicomSend> m_dialog;
};

PM_TEST_MAIN(DicomSendTest)
#include "tst_dicomsend.moc"
