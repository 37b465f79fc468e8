#include "tableinfoform.h"

#include "ui_tableinfoform.h"

tableInfoForm::tableInfoForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::tableInfoForm>())
{
    ui->setupUi(this);
}

tableInfoForm::~tableInfoForm() = default;

void tableInfoForm::onTableInfo(const QString &text)
{
    ui->textBrowser->setText(text);
}
