#include "filechooser.h"
#include "httpuploadfile.h"
#include "kivmessageboxform.h"
#include "namedcontrols.h"
#include "ntableview.h"
#include "patientform.h"
#include "seriesform.h"
#include "sharedwindows.h"
#include "studyform.h"
#include "testfiles.h"
#include "testmain.h"
#include "uploadfilesmodel.h"
#include "uploadprogressform.h"
#include "uploadselection.h"
#include "uploadstatus.h"
#include "uploadtask.h"
#include "websession.h"
#include "windowfixture.h"

#include <QProgressBar>
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

const QAbstractItemModel &shown(const char *view)
{
    return *uploads()->findChild<QTableView *>(QLatin1String(view))->model();
}

/// What a row says under the titles, and its state behind them.
QString text(int row, int column)
{
    return shown("tableView").index(row, column).data().toString();
}

int rows()
{
    return shown("tableView").rowCount();
}

UploadTally tally(int row)
{
    return shown("tableView").index(row, 0).data(UploadFilesModel::TallyRole).value<UploadTally>();
}

QPushButton *button(const char *name)
{
    return uploads()->findChild<QPushButton *>(QLatin1String(name));
}

} // namespace

/// From the action to the rows of the upload window, and to what the tables say of it.
class WindowUploadTest : public WindowTest
{
    Q_OBJECT

private slots:
    void eachPatientIsAnUpload()
    {
        QVERIFY(window->isuploadCloudFinished());
        QSignalSpy sent(window, &PatientManagerMainWindow::notifyWriteDB);
        choosePatients(0, 1);
        upload();
        QCOMPARE(sent.count(), 2);
        QCOMPARE(sent[0][2].toStringList(),
            QStringList(
                {fixture->path(QStringLiteral("A/1.dcm")), fixture->path(QStringLiteral("A/2.dcm"))}));
        QCOMPARE(sent[0][0].toStringList().size(), 2);
        QCOMPARE(sent[0][3].toString(), QStringLiteral("A^Given"));
        QCOMPARE(sent[1][2].toStringList(), QStringList{fixture->path(QStringLiteral("B/1.dcm"))});
        QVERIFY(window->isUploadToCloudByManual());
        QVERIFY(window->getUploadTime().isValid());
        QTRY_COMPARE(rows(), 2);
        QCOMPARE(text(1, 1), QStringLiteral("B^Given"));
        QCOMPARE(text(0, 2), QStringLiteral("2"));
        // Nobody is signed in at the service: the rows say so, and offer it.
        QTRY_COMPARE(tally(0).state, UploadTally::State::NeedsSession);
        QTRY_VERIFY(button("signIn")->isVisible());
        QVERIFY(!window->isuploadCloudFinished());
        QSignalSpy wanted(window, &PatientManagerMainWindow::loginWanted);
        button("signIn")->click();
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(unnamedControl(*uploads()), QString());
        // Closing the window only hides it.
        uploads()->close();
        QVERIFY(uploads()->isHidden());
        QCOMPARE(rows(), 2);
        window->deleteUploadTask();
        QTRY_COMPARE(tally(1).state, UploadTally::State::Cancelled);
        QCOMPARE(tally(0).state, UploadTally::State::NeedsSession);
    }

    void imagesBringTheUidsOfTheFirst()
    {
        const QVector<UploadBatch> batches = UploadSelection::read(RecordLevel::Image, {2, 1, 3});
        QCOMPARE(batches.size(), 1);
        QCOMPARE(batches[0].filePaths.size(), 3);
        QCOMPARE(batches[0].filePaths[0], fixture->path(QStringLiteral("A/2.dcm")));
        QCOMPARE(batches[0].sopInstanceUIDs,
            QStringList{
                fixture->index.query(QStringLiteral("SELECT SOPInstanceUID FROM imageformat WHERE pk = 2"))
                    .toString()});
        QCOMPARE(batches[0].seriesUIDs.size(), 1);
        QCOMPARE(batches[0].patientName, QStringLiteral("A^Given"));
        const QVector<UploadBatch> studies = UploadSelection::read(RecordLevel::Study, {2, 1});
        QCOMPARE(studies.size(), 1);
        QCOMPARE(studies[0].seriesUIDs.size(), 3);
        QCOMPARE(studies[0].patientName, QStringLiteral("B^Given"));
        QCOMPARE(UploadSelection::read(RecordLevel::Series, {1}).value(0).sopInstanceUIDs.size(), 2);
    }

    void nothingIsSentWithoutBeingAsked()
    {
        QSignalSpy sent(window, &PatientManagerMainWindow::notifyWriteDB);
        upload(); // nothing is selected
        choosePatients(0, 0);
        kivMessageBoxForm::setAnswerer(
            [](const kivMessageBoxForm::Request &) { return int(kivMessageBoxForm::AnswerCancel); });
        upload();
        window->setLoginInfo("", "", "", 0);
        upload();
        QVERIFY(visibleWindow("LoginForm"));
        QCOMPARE(sent.count(), 0);
        QVERIFY(!window->isUploadToCloudByManual());
        QVERIFY(window->isuploadCloudFinished());
    }

    void theSameSeriesIsOneRow()
    {
        const UploadBatch batch = UploadSelection::read(RecordLevel::Patient, {1}).value(0);
        const auto send = [&batch] {
            uploads()->setUploadFiles(
                batch.seriesUIDs, batch.sopInstanceUIDs, batch.filePaths, batch.patientName, {});
        };
        send();
        send();
        QCOMPARE(rows(), 1);
        // Once an upload has ended its series may go again, in the place of the row that told of it.
        const QString first = text(0, 0);
        uploads()->deleteUploadTask();
        QTRY_COMPARE(tally(0).state, UploadTally::State::Cancelled);
        QTRY_VERIFY((send(), text(0, 0) != first)); // it may still be on its way to its end
        QCOMPARE(rows(), 1);
        // The patient form sends its first selected patient, whose series is on its way.
        choosePatients(0, 1);
        window->getPatientForm()->uploadFile(QStringLiteral("somebody"));
        QCOMPARE(rows(), 1);
    }

    void anotherWindowTakesUpWhatIsLeft()
    {
        choosePatients(0, 1);
        upload();
        QTRY_COMPARE(rows(), 2);
        QTRY_COMPARE(tally(0).state, UploadTally::State::NeedsSession);
        QTRY_COMPARE(tally(1).state, UploadTally::State::NeedsSession);
        SharedWindows::deleteAll();
        QCOMPARE(rows(), 0);
        uploads()->resumeUploads();
        uploads()->resumeUploads();
        QCOMPARE(rows(), 2);
        QVERIFY(uploads()->isHidden());
        QCOMPARE(text(0, 1), QStringLiteral("A^Given"));
        QCOMPARE(text(0, 2), QStringLiteral("2"));
        choosePatients(0, 0);
        window->getPatientForm()->uploadFile(QString());
        QCOMPARE(rows(), 2);
    }

    void countsGoWhereTheirTitlesAre()
    {
        const UploadBatch batch = UploadSelection::read(RecordLevel::Patient, {1}).value(0);
        uploads()->setUploadFiles(
            batch.seriesUIDs, batch.sopInstanceUIDs, batch.filePaths, batch.patientName, {});
        auto *task = uploads()->findChild<UpLoadTask *>();
        QVERIFY(task);
        auto *bar = uploads()->findChild<QProgressBar *>(QStringLiteral("progressBar"));
        emit task->progress(1, 5, 9, task);
        QCOMPARE(bar->maximum(), 9);
        emit task->progress(2, 6, 9, task);
        QCOMPARE(bar->value(), 2);
        QCOMPARE(text(0, 2), QStringLiteral("9"));
        QCOMPARE(text(0, 3), QStringLiteral("6"));
        QCOMPARE(text(0, 4), QStringLiteral("2"));
    }

    void aFolderIsLookedThrough()
    {
        const QString folder = fixture->path(QStringLiteral("upload me"));
        writeFile(folder + QStringLiteral("/deep/er/1.txt"));
        writeFile(folder + QStringLiteral("/2.txt"));
        FileChooser::setAnswerer([&folder](const FileChooser::Request &) { return folder; });
        uploads()->show();
        button("selectFloders")->click();
        QTRY_COMPARE(rows(), 1);
        QCOMPARE(text(0, 1), QStringLiteral("upload me"));
        QCOMPARE(text(0, 2), QStringLiteral("2"));
        QVERIFY(text(0, 3).isEmpty());
    }

    void whatIsStoredIsShownInTheTables()
    {
        const std::unique_ptr<DicomServer> archive = WebArchive::start();
        if (!archive) {
            QSKIP("no web archive on this machine");
        }
        HttpUploadFile::instance()->setSession(webSessionAt(WebArchive::address(*archive)));
        choosePatients(0, 0);
        PatientForm *patients = window->getPatientForm();
        patients->selectIndex(patients->tableModel()->index(0, 1)); // fills the tables below
        window->getStudyForm()->view()->clearSelection();
        upload();
        const auto state = [](const RecordForm *form) {
            const QSqlTableModel *model = form->tableModel();
            return model->index(0, model->fieldIndex(QLatin1String(UploadStatus::column))).data().toString();
        };
        QTRY_COMPARE(state(patients), UploadStatus::uploaded());
        QTRY_COMPARE(state(window->getStudyForm()), UploadStatus::uploaded());
        QTRY_COMPARE(state(window->getSeriesForm()), UploadStatus::uploaded());
        QCOMPARE(tally(0).succeeded, 2);
        QCOMPARE(text(0, 3), QStringLiteral("2"));
        QVERIFY(window->isuploadCloudFinished());
        QVERIFY(!uploads()->isUploading());
        // What cannot be uploaded is listed with its reason, and stays until the user has seen to it.
        const QString folder = fixture->path(QStringLiteral("texts"));
        writeFile(folder + QStringLiteral("/1.txt"));
        uploads()->uploadFiles(
            {folder + QStringLiteral("/1.txt"), folder + QStringLiteral("/2.txt")}, QString());
        QTRY_COMPARE(shown("failures").rowCount(), 2);
        QVERIFY(shown("failures").index(0, 0).data().toString().startsWith(folder));
        QVERIFY(shown("failures").index(0, 2).data() != shown("failures").index(1, 2).data());
        QVERIFY(button("retry")->isEnabled());
        uploads()->findChild<QTableView *>(QStringLiteral("tableView"))->selectRow(1);
        button("cancelUpload")->click();
        QTRY_COMPARE(shown("failures").rowCount(), 0);
    }

private:
    /// Two patients of two images and of one.
    void prepare() override
    {
        fixture->index.import(
            {fixture->makeSeries(QStringLiteral("A"), 2), fixture->makeSeries(QStringLiteral("B"), 1)},
            ImportMode::Reference);
        window = &fixture->open();
        window->setLoginInfo("ann", "", "session", 1);
        kivMessageBoxForm::setAnswerer(
            [](const kivMessageBoxForm::Request &) { return int(kivMessageBoxForm::AnswerOk); });
    }

    void upload() const { QVERIFY(QMetaObject::invokeMethod(window, "on_actionUploadCloudData_triggered")); }

    void choosePatients(int first, int last) const
    {
        PatientForm *form = window->getPatientForm();
        form->onShowPatient();
        QSet<qlonglong> keys;
        for (int row = first; row <= last; ++row) {
            keys.insert(form->tableModel()->index(row, 0).data().toLongLong());
        }
        form->selectKeys(keys);
    }

    PatientManagerMainWindow *window = nullptr;
};

PM_TEST_MAIN(WindowUploadTest)
#include "windowuploadtest.moc"
