// The window's send dialog: made at the first use, filled with the selection reported last.
#include "patientmanagermainwindow.h"

#include "attributes.h"
#include "companionwindow.h"
#include "dicomsend.h"
#include "sendselection.h"
#include "waitcursor.h"

void PatientManagerMainWindow::on_actionSendDicom_triggered()
{
    const std::optional<RecordLevel> level = recordLevelOf(currentTableName);
    if (level != RecordLevel::Image) {
        showSendDialog();
    }
    if (!sendDialog) {
        return; // nobody would see what is selected
    }
    const WaitCursor wait;
    const SendSelection selection = level ? SendSelection::read(*level, selectedPks) : SendSelection();
    sendDialog->setSendServiceInfo();
    sendDialog->setPatientInfo(selection.names, selection.modalities, selection.files);
}

void PatientManagerMainWindow::sendFiles(
    const QStringList &files, const QStringList &names, const QStringList &modalities)
{
    showSendDialog();
    sendDialog->setSendServiceInfo();
    sendDialog->setPatientInfo(names, modalities, {files});
}

void PatientManagerMainWindow::showSendDialog()
{
    if (!sendDialog) { // also where somebody has deleted it
        sendDialog = new dicomSend(nullptr);
        sendDialog->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(
            sendDialog, &dicomSend::sendDicomfiles, this, &PatientManagerMainWindow::notifySendSelectData);
        connect(this, &PatientManagerMainWindow::notifyInstanceSent, sendDialog,
            &dicomSend::setseriesSuccessCount);
    }
    bringUp(sendDialog);
}
