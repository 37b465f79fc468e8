// The windows that the panel opens, and what the editor of inquiries tells it.

#include "patienttreeform.h"

#include "ui_patienttreeform.h"

#include "advancedinquiryform.h"
#include "companionwindow.h"
#include "inquiryentry.h"
#include "selecthideform.h"

void PatientTreeForm::on_AdvancedInquiryNew_clicked()
{
    forgetClosed(inquiryForm);
    if (!inquiryForm) {
        inquiryForm = new AdvancedInquiryForm(nullptr, currentInquiry());
        inquiryForm->setWindowFlag(Qt::WindowStaysOnTopHint);
        inquiryForm->getComboBoxIdx(currentInquiry());
        connect(inquiryForm, &AdvancedInquiryForm::setComboBox, this, &PatientTreeForm::getComboBox);
        connect(inquiryForm, &AdvancedInquiryForm::setDeleteIdx, this, &PatientTreeForm::getDeleteIdx);
        connect(inquiryForm, &AdvancedInquiryForm::setComboBoxIdx, this, &PatientTreeForm::getComboBoxIdx);
    }
    bringUp(inquiryForm);
}

void PatientTreeForm::on_AdvancedInquirySettingField_clicked()
{
    forgetClosed(fieldForm);
    if (!fieldForm) {
        fieldForm = new selectHideForm(nullptr, 1);
        fieldForm->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(fieldForm, &selectHideForm::updateFieldHeader, this, &PatientTreeForm::updateFieldHeader);
        connect(fieldForm, &selectHideForm::updateFieldHeader, this, &PatientTreeForm::reload);
    }
    bringUp(fieldForm);
}

bool PatientTreeForm::closeCompanions()
{
    forgetClosed(inquiryForm); // nobody is asked twice
    forgetClosed(fieldForm);
    return (!inquiryForm || inquiryForm->close()) && (!fieldForm || fieldForm->close());
}

void PatientTreeForm::getComboBox(const QString &name)
{
    ui->comboBox->addItem(name);
}

void PatientTreeForm::getComboBoxIdx(const QString &name)
{
    const int index = inquiryEntry(*ui->comboBox, name);
    if (index >= 0) {
        ui->comboBox->setCurrentIndex(index);
    }
}

void PatientTreeForm::getDeleteIdx(const QString &name)
{
    // An unknown name has the index -1, at which nothing is removed.
    ui->comboBox->removeItem(inquiryEntry(*ui->comboBox, name));
    on_AdvancedInquiry_clicked();
}
