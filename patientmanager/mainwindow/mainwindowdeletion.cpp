// The window's deletion: what is asked before it, and what is told while it runs and when it is over.
#include "patientmanagermainwindow.h"

#include "deletionnotice.h"
#include "deletionnotifier.h"
#include "kivmessageboxform.h"
#include "maintenancetext.h"
#include "recorddeletion.h"
#include "waitcursor.h"

#include <QSqlDatabase>

namespace {

QString failureText(const DeletionReport &report)
{
    const QString reason = MaintenanceText::refused(report.error);
    return report.isPending
        ? PatientManagerMainWindow::tr("The deletion could not be finished: %1\nThe next start finishes it.")
              .arg(reason)
        : PatientManagerMainWindow::tr("Nothing was deleted: %1").arg(reason);
}

} // namespace

void PatientManagerMainWindow::on_actionDelete_triggered()
{
    emit uploadFlag(); // whoever knows answers it by onUpLoadFlag() before this returns
    if (uploadByManual) {
        kivMessageBoxForm::warning(nullptr, tr("删除警告"), tr("数据正在上传中，请勿删除!"),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
        return;
    }
    getSelectPatientPk();
    if (selectedPks.isEmpty()) {
        kivMessageBoxForm::warning(nullptr, tr("警告"), tr("请选择至少一个病人数据!"),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
        return;
    }
    const int answer = kivMessageBoxForm::question(nullptr, tr("删除"), tr("确定要删除病人数据吗?"),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk);
    if (answer != kivMessageBoxForm::AnswerCancel && deletionNotifier->mayBegin()) {
        onDeleteSelected();
    }
}

void PatientManagerMainWindow::onDeleteSelected()
{
    if (isDeleting) {
        return;
    }
    isDeleting = true;
    getSelectPatientPk();
    DeletionReport report;
    {
        const WaitCursor cursor;
        DeletionNotice notice(this);
        RecordDeletion deletion(QSqlDatabase::database(), RecordDeletion::isEveryFileToGo());
        connect(&deletion, &RecordDeletion::tableChanged, this, &PatientManagerMainWindow::deletereflash);
        connect(&deletion, &RecordDeletion::progress, &notice, &DeletionNotice::showProgress);
        report = deletion.run(currentTableName, selectedPks);
    }
    emit thumbViewReflash();
    isDeleting = false;
    if (report.error.isValid()) {
        kivMessageBoxForm::warning(
            this, tr("删除"), failureText(report), kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    }
    emit deletionNotifier->ended(report);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link this signature
void PatientManagerMainWindow::deleteDataFloder(QString sql)
{
    RecordDeletion deletion(QSqlDatabase::database(), RecordDeletion::isEveryFileToGo());
    deletion.removeFiles(sql, currentTableName, selectedPks);
}

void PatientManagerMainWindow::onUpLoadFlag(bool isUploading)
{
    uploadByManual = isUploading;
}

bool PatientManagerMainWindow::isUploadToCloudByManual() const
{
    return uploadByManual;
}

DeletionNotifier *PatientManagerMainWindow::deletions() const
{
    return deletionNotifier;
}
