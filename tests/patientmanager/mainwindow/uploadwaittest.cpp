#include "httpuploadfile.h"
#include "keptpicture.h"
#include "kivmessageboxform.h"
#include "namedcontrols.h"
#include "ntableview.h"
#include "oddservice.h"
#include "patientform.h"
#include "retrynotice.h"
#include "storeservice.h"
#include "testmain.h"
#include "uploadfilesmodel.h"
#include "uploadprogressform.h"
#include "uploadselection.h"
#include "websession.h"
#include "windowfixture.h"
#include "windowparts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QTableView>
#include <QtTest>

namespace {

UploadProgressForm *uploads()
{
    return UploadProgressForm::instance();
}

QTableView *rows()
{
    return partOf<QTableView>(uploads(), "tableView");
}

UploadTally tally(int row)
{
    return rows()->model()->index(row, 0).data(UploadFilesModel::TallyRole).value<UploadTally>();
}

/// How often a window was put above the others.
class Raises : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }
};

} // namespace

/// What uploads wait for, somebody who signs in or a service that is away, and how their window says so.
class UploadWaitTest : public WindowTest
{
    Q_OBJECT

private slots:
    void theUploadThatAskedForTheLoginGoesOn()
    {
        const OddService service(httpAnswer("200 OK", "application/dicom+json", "[]"));
        QSignalSpy sent(window, &PatientManagerMainWindow::notifyWriteDB);
        QSignalSpy told(window, &PatientManagerMainWindow::told);
        window->setLoginInfo({}, {}, {}, 0);
        upload(1);
        QWidget *login = visibleWindow("LoginForm");
        QVERIFY(login);
        login->close();
        QCOMPARE(told.count(), 1);

        upload(0);
        window->getPatientForm()->view()->clearSelection(); // what was selected then counts
        partOf<QLineEdit>(login, "address")->setText(service.address());
        partOf<QLineEdit>(login, "user")->setText(QStringLiteral("ann"));
        QTest::keyClicks(partOf<QLineEdit>(login, "password"), QStringLiteral("x"));
        QVERIFY(questions.isEmpty());
        partOf<QPushButton>(login, "submit")->click();
        QTRY_COMPARE(sent.count(), 1);
        QCOMPARE(questions.size(), 1);
        QCOMPARE(sent[0][3].toString(), QStringLiteral("A^Given"));
        QVERIFY(!login->isVisible());
        login->show(); // for another reason
        login->close();
        QCOMPARE(told.count(), 1);
        QCOMPARE(sent.count(), 1);
    }

    void aServiceThatIsAwayIsTriedAgain()
    {
        StoreService service([](int, const QStringList &uids) { return StoreService::answer(uids); });
        const QString address = service.address();
        service.leave();
        HttpUploadFile::instance()->setSession(webSessionAt(address));
        upload(0);
        auto *notice = partOf<RetryNotice>(uploads(), "retryNotice");
        QTRY_VERIFY(notice->isVisible());
        QTRY_VERIFY(tally(0).nextTryMs > QDateTime::currentMSecsSinceEpoch());
        QTRY_VERIFY(partOf<QLabel>(notice, "retryText")->text().contains(QLatin1String("0:0")));
        QCOMPARE(unnamedControl(*uploads()), QString());
        keepPicture(*uploads(), QStringLiteral("uploads-away"));

        // Signed out: the window comes forward, and whoever types in another one goes on.
        window->activateWindow();
        QTRY_VERIFY(window->isActiveWindow());
        Raises raises;
        uploads()->installEventFilter(&raises);
        HttpUploadFile::instance()->endSession();
        QTRY_COMPARE(raises.count, 1);
        QVERIFY(partOf<QWidget>(uploads(), "signInPanel")->isVisible());
        QVERIFY(window->isActiveWindow());

        HttpUploadFile::instance()->setSession(webSessionAt(address));
        QTRY_VERIFY(notice->isVisible());
        service.comeBack();
        partOf<QPushButton>(notice, "tryNow")->click();
        QTRY_COMPARE(tally(0).succeeded, 2);
        QTRY_VERIFY(!notice->isVisible());
    }

    /// An upload of some of its series does not take the failures of the others out of sight.
    void failuresStayUntilTheyAreTriedAnew()
    {
        const StoreService service(
            [](int, const QStringList &uids) { return StoreService::answer({}, uids, "409 Conflict"); });
        HttpUploadFile::instance()->setSession(webSessionAt(service.address()));
        const UploadBatch one = UploadSelection::read(RecordLevel::Patient, {1}).value(0);
        const UploadBatch other = UploadSelection::read(RecordLevel::Patient, {2}).value(0);
        const auto send = [](const QStringList &series, const QStringList &uids, const QStringList &paths) {
            uploads()->setUploadFiles(series, uids, paths, {}, {});
        };
        const auto sendBoth = [&] {
            send(one.seriesUIDs + other.seriesUIDs, one.sopInstanceUIDs + other.sopInstanceUIDs,
                one.filePaths + other.filePaths);
        };
        sendBoth();
        QTRY_COMPARE(tally(0).failed, 3);
        QTRY_COMPARE(tally(0).state, UploadTally::State::Finished);
        send(one.seriesUIDs, one.sopInstanceUIDs, one.filePaths);
        QCOMPARE(rows()->model()->rowCount(), 2);
        QCOMPARE(tally(0).failed, 3);
        QTRY_COMPARE(tally(1).state, UploadTally::State::Finished);
        sendBoth();
        QCOMPARE(rows()->model()->rowCount(), 1);
    }

    void endedRowsAreCleared()
    {
        upload(0);
        upload(1);
        QTRY_COMPARE(rows()->model()->rowCount(), 2);
        auto *clear = partOf<QPushButton>(uploads(), "clearFinished");
        QVERIFY(!clear->isEnabled());
        QTest::keyClick(rows(), Qt::Key_Delete); // not one that goes on
        QCOMPARE(rows()->model()->rowCount(), 2);
        auto *cancel = partOf<QPushButton>(uploads(), "cancelUpload");
        rows()->selectRow(0);
        cancel->setFocus();
        cancel->click();
        QTRY_COMPARE(tally(0).state, UploadTally::State::Cancelled);
        QTRY_VERIFY(clear->isEnabled());
        // The next Space presses nothing else.
        QTRY_COMPARE(uploads()->focusWidget(), rows());
        keepPicture(*uploads(), QStringLiteral("uploads-ended"));
        rows()->selectRow(0);
        QTest::keyClick(rows(), Qt::Key_Delete);
        QCOMPARE(rows()->model()->rowCount(), 1);
        window->deleteUploadTask();
        QTRY_VERIFY(clear->isEnabled());
        clear->click();
        QCOMPARE(rows()->model()->rowCount(), 0);
    }

private:
    void prepare() override
    {
        fixture->index.import(
            {fixture->makeSeries(QStringLiteral("A"), 2), fixture->makeSeries(QStringLiteral("B"), 1)},
            ImportMode::Reference);
        window = &fixture->open();
        window->setLoginInfo("ann", "", "session", 1);
        questions.clear();
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
            questions.append(request.text);
            return int(kivMessageBoxForm::AnswerOk);
        });
    }

    void upload(int patient) const
    {
        PatientForm *form = window->getPatientForm();
        form->onShowPatient();
        form->view()->clearSelection();
        form->selectKeys({form->tableModel()->index(patient, 0).data().toLongLong()});
        QVERIFY(QMetaObject::invokeMethod(window, "on_actionUploadCloudData_triggered"));
    }

    PatientManagerMainWindow *window = nullptr;
    QStringList questions;
};

PM_TEST_MAIN(UploadWaitTest)
#include "uploadwaittest.moc"
