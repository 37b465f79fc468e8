// The slots of the editor that write the table of stored inquiries.

#include "advancedinquiryform.h"

#include "companionwindow.h"
#include "conditionmodel.h"
#include "inquiryentry.h"
#include "inquirysaveform.h"
#include "inquirytable.h"
#include "kivmessageboxform.h"
#include "ui_advancedinquiryform.h"

using InquiryTable::Outcome;

void AdvancedInquiryForm::on_Save_clicked()
{
    const bool byHand = sender() == ui->Save;
    finishEditing();
    const Outcome outcome = InquiryTable::replace(ui->inquiryBox->currentText(), m_model->conditions());
    if (outcome == Outcome::Refused) {
        tellRefusal(byHand);
        return;
    }
    if (outcome == Outcome::Done) {
        m_model->markSaved();
    }
    setShown(ui->inquiryBox->currentIndex());
}

void AdvancedInquiryForm::tellRefusal(bool byHand)
{
    if (byHand) {
        kivMessageBoxForm::warning(this, windowTitle(),
            tr("Nothing has been changed: the index cannot be written at the moment, perhaps because "
               "another program is writing to it. Please try again."),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    }
}

void AdvancedInquiryForm::on_SaveAs_clicked()
{
    finishEditing();
    forgetClosed(m_saveForm);
    if (!m_saveForm) {
        m_saveForm = new InquirySaveForm;
        connect(m_saveForm, &InquirySaveForm::setText, this, &AdvancedInquiryForm::getText);
        connect(this, &AdvancedInquiryForm::sameInquiryName, m_saveForm, &InquirySaveForm::onSameInquiryName);
        // The name would have nobody to go to.
        connect(this, &QObject::destroyed, m_saveForm, &QWidget::close);
    }
    bringUp(m_saveForm);
    m_saveForm->raise();
    m_saveForm->activateWindow();
}

void AdvancedInquiryForm::dropSaveForm()
{
    if (m_saveForm) {
        m_saveForm->close();
    }
}

void AdvancedInquiryForm::getText(const QString &name)
{
    const bool byHand = m_saveForm && sender() == m_saveForm;
    // The question fails for a name with a quote: the box knows such a one.
    const bool isListed = exactEntry(*ui->inquiryBox, name) >= 0;
    if (isListed || InquiryTable::isTaken(name)) {
        emit sameInquiryName(tr("the name is exist"));
        return;
    }
    emit sameInquiryName(QString());
    const Outcome outcome = InquiryTable::append(name, m_model->conditions());
    if (outcome == Outcome::Refused) {
        tellRefusal(byHand);
        return;
    }
    if (outcome == Outcome::Done) {
        m_model->markSaved();
    }
    addName(name);
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
    const int found = inquiryEntry(*ui->inquiryBox, name);
    if (found >= 0) {
        ui->inquiryBox->setCurrentIndex(found);
        onTreeView(found);
    }
}

void AdvancedInquiryForm::on_Delete_clicked()
{
    const bool byHand = sender() == ui->Delete;
    const QString name = ui->inquiryBox->currentText();
    if (byHand && !mayDelete(name)) {
        return;
    }
    if (InquiryTable::remove(name) == Outcome::Refused) {
        tellRefusal(byHand);
        return;
    }
    emit setDeleteIdx(name);
    // An unknown name has the index -1, at which nothing is removed.
    ui->inquiryBox->removeItem(inquiryEntry(*ui->inquiryBox, name));
    onTreeView(ui->inquiryBox->currentIndex());
    if (byHand) {
        // Away from the button, which would delete the next one.
        (ui->inquiryBox->isEnabled() ? ui->inquiryBox : static_cast<QWidget *>(ui->fieldsPD))->setFocus();
    }
}

bool AdvancedInquiryForm::mayDelete(const QString &name)
{
    const QString shown = fontMetrics().elidedText(name, Qt::ElideMiddle, width() / 2);
    return kivMessageBoxForm::question(this, tr("Delete inquiry"),
               tr("Delete the stored inquiry \"%1\"? This cannot be undone.").arg(shown),
               kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel)
        == kivMessageBoxForm::AnswerOk;
}
