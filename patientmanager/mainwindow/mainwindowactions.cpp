// What the window's actions do, except for the import.
#include "patientmanagermainwindow.h"

#include "companionwindow.h"
#include "databasesetform.h"
#include "imageformatform.h"
#include "kivmessageboxform.h"
#include "patientform.h"
#include "selecthideform.h"
#include "seriesform.h"
#include "studyform.h"
#include "swimconfig.h"

void PatientManagerMainWindow::on_actionDatabase_triggered()
{
    if (!databaseSetForm) {
        databaseSetForm = DataBaseSetForm::instance();
    }
    bringUp(databaseSetForm);
}

void PatientManagerMainWindow::on_actionRefresh_triggered()
{
    if (patientForm) {
        patientForm->on_reflash_clicked();
    }
    // The patient form does not listen: it has just been refreshed with its filter kept.
    emit basicInquiyShow();
}

void PatientManagerMainWindow::on_actionSettingField_triggered()
{
    forgetClosed(fieldForm);
    if (!fieldForm) {
        fieldForm = new selectHideForm(nullptr, 0);
        connect(fieldForm, &selectHideForm::updateFieldHeader, this,
            &PatientManagerMainWindow::updateFieldHeader);
        fieldForm->setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    bringUp(fieldForm);
}

void PatientManagerMainWindow::on_actionSubmit_triggered()
{
    const int answer = kivMessageBoxForm::question(nullptr, tr("发送"), tr("确定要发送选择的病人数据吗?"),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk);
    if (answer == kivMessageBoxForm::AnswerCancel) {
        return;
    }
    const auto submit = [](const auto &form) {
        if (form) {
            form->submit();
        }
    };
    submit(patientForm);
    submit(studyForm);
    submit(seriesForm);
    submit(imagesForm);
}

void PatientManagerMainWindow::on_actionRevertall_triggered()
{
    const auto revert = [](const auto &form) {
        if (form) {
            form->on_revertall_clicked();
        }
    };
    revert(patientForm);
    revert(studyForm);
    revert(seriesForm);
    revert(imagesForm);
}

void PatientManagerMainWindow::on_actionTest_triggered()
{
    swimconfig::instance()->show();
}
