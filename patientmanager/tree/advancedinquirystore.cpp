// The slots of the editor that write the table of stored inquiries.

#include "advancedinquiryform.h"

#include "conditionmodel.h"
#include "inquirysaveform.h"
#include "inquirytable.h"
#include "ui_advancedinquiryform.h"

void AdvancedInquiryForm::on_Save_clicked()
{
    finishEditing();
    if (InquiryTable::replace(ui->inquiryBox->currentText(), m_model->conditions())) {
        m_model->markSaved();
    }
    setShown(ui->inquiryBox->currentIndex());
}

void AdvancedInquiryForm::on_SaveAs_clicked()
{
    finishEditing();
    if (!m_saveForm) {
        m_saveForm = new InquirySaveForm;
        connect(m_saveForm, &InquirySaveForm::setText, this, &AdvancedInquiryForm::getText);
        connect(this, &AdvancedInquiryForm::sameInquiryName, m_saveForm, &InquirySaveForm::onSameInquiryName);
        // The name would have nobody to go to.
        connect(this, &QObject::destroyed, m_saveForm, &QWidget::close);
    }
    m_saveForm->show();
    m_saveForm->raise();
    m_saveForm->activateWindow();
}

void AdvancedInquiryForm::getText(const QString &name)
{
    if (InquiryTable::isTaken(name)) {
        emit sameInquiryName(tr("the name is exist"));
        return;
    }
    emit sameInquiryName(QString());
    if (InquiryTable::append(name, m_model->conditions())) {
        m_model->markSaved();
    }
    ui->inquiryBox->addItem(name);
    emit setComboBox(name);
    const int added = ui->inquiryBox->count() - 1;
    ui->inquiryBox->setCurrentIndex(added);
    if (!name.isEmpty()) {
        setShown(added);
    }
    emit setComboBoxIdx(name);
}

void AdvancedInquiryForm::getComboBoxIdx(const QString &name)
{
    const int found = ui->inquiryBox->findData(name, Qt::DisplayRole, Qt::MatchFixedString);
    if (found >= 0) {
        ui->inquiryBox->setCurrentIndex(found);
        onTreeView(found);
    }
}

void AdvancedInquiryForm::on_Delete_clicked()
{
    const QString name = ui->inquiryBox->currentText();
    InquiryTable::remove(name);
    emit setDeleteIdx(name);
    const int found = ui->inquiryBox->findData(name, Qt::DisplayRole, Qt::MatchFixedString);
    if (found >= 0) {
        ui->inquiryBox->removeItem(found);
    }
    onTreeView(ui->inquiryBox->currentIndex());
}
