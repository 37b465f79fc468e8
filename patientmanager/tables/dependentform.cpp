#include "dependentform.h"

#include "ntableview.h"

void DependentForm::openDependentTable(NTableView *view)
{
    openTable(view);
    connect(view, &NTableView::fileFinished, this, &DependentForm::onLoadFileFinished);
}

void DependentForm::onLoadFileFinished(bool bResult)
{
    emit signalLoadFileFinished(bResult);
}
