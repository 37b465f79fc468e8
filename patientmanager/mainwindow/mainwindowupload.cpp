// The window's uploads: what is selected goes by the receiver, which enters it, to the upload window.
#include "patientmanagermainwindow.h"

#include "companionwindow.h"
#include "kivmessageboxform.h"
#include "patientform.h"
#include "qdcmrecvfile.h"
#include "seriesform.h"
#include "studyform.h"
#include "uploadprogressform.h"
#include "uploadselection.h"
#include "waitcursor.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimer>

#include <optional>
#include <utility>

/// The upload window is there from the start: it may have uploads of an earlier run.
void PatientManagerMainWindow::connectUploads()
{
    const UploadProgressForm *uploads = UploadProgressForm::instance();
    connect(uploads, &UploadProgressForm::signInWanted, this, &PatientManagerMainWindow::openLogin);
    for (RecordForm *form : std::initializer_list<RecordForm *>{patientForm, studyForm, seriesForm}) {
        connect(uploads, &UploadProgressForm::statesRefreshed, form, &RecordForm::readUploadStates);
    }
}

void PatientManagerMainWindow::on_actionUploadCloudData_triggered()
{
    getSelectPatientPk();
    if (!isSignedIn()) {
        waitingUploadTable = currentTableName;
        waitingUploadPks = selectedPks;
        openLogin();
        return;
    }
    askToUpload(currentTableName, selectedPks);
}

/// The upload that asked for the login goes on with what was selected then, once that window is gone: it
/// stands above all questions.
void PatientManagerMainWindow::goOnWithUpload()
{
    const QList<qlonglong> pks = std::exchange(waitingUploadPks, {});
    if (pks.isEmpty()) {
        return;
    }
    if (isSignedIn()) {
        QTimer::singleShot(0, this, [this, table = waitingUploadTable, pks] { askToUpload(table, pks); });
    } else {
        emit told(tr("Nothing is uploaded: nobody has signed in to the cloud."));
    }
}

void PatientManagerMainWindow::askToUpload(const QString &tableName, const QList<qlonglong> &pks)
{
    if (pks.isEmpty()) {
        kivMessageBoxForm::warning(nullptr, tr("警告"), tr("请选择至少一个病人数据!"),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
        return;
    }
    const int answer = kivMessageBoxForm::question(nullptr, tr("上传"), tr("确定要上传病人数据吗?"),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk);
    if (answer != kivMessageBoxForm::AnswerOk) {
        return;
    }
    uploadByManual = true;
    uploadTime = QDateTime::currentDateTime();
    if (const std::optional<RecordLevel> level = recordLevelOf(tableName)) {
        const WaitCursor wait;
        for (const UploadBatch &batch : UploadSelection::read(*level, pks)) {
            upload(batch);
        }
    }
}

void PatientManagerMainWindow::upload(const UploadBatch &batch)
{
    bringUp(UploadProgressForm::instance());
    if (recvFile->needtoWriteDB(batch.seriesUIDs)) {
        emit notifyWriteDB(batch.seriesUIDs, batch.sopInstanceUIDs, batch.filePaths, batch.patientName);
    }
    uploadStarted = true;
}

// NOLINTBEGIN(performance-unnecessary-value-param): hosts link this signature
void PatientManagerMainWindow::onNotifyUploadFile(
    QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName)
{
    UploadProgressForm::instance()->setUploadFiles(
        seriesUIDs, sopInstanceUIDs, filePaths, patientName, QByteArray());
}
// NOLINTEND(performance-unnecessary-value-param)

bool PatientManagerMainWindow::LogInUpLoadClouldFinished() const
{
    const QSqlDatabase db = QSqlDatabase::database(connectionName, false);
    if (!db.isOpen()) {
        return true;
    }
    QSqlQuery query(db);
    const bool good = query.exec(QStringLiteral("SELECT count(*) FROM images WHERE Cloudflag = 0"));
    return !good || !query.next() || query.value(0).toInt() == 0;
}

bool PatientManagerMainWindow::isuploadCloudFinished() const
{
    return !uploadStarted || LogInUpLoadClouldFinished();
}

void PatientManagerMainWindow::deleteUploadTask()
{
    UploadProgressForm::instance()->deleteUploadTask();
}

void PatientManagerMainWindow::setUploadedCloudflag()
{
    UploadProgressForm::instance()->setUploadedCloudflag();
}
