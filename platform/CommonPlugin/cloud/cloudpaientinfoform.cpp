#include "cloudpaientinfoform.h"

CloudPaientInfoForm::CloudPaientInfoForm(QWidget *parent)
    : QWidget(parent)
{ }

CloudPaientInfoForm::~CloudPaientInfoForm() = default;
