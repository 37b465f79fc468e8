// The window's anonymizer: copies that it makes are sent, uploaded or taken into the index.
#include "patientmanagermainwindow.h"

#include "anonymizeform.h"
#include "ndockwidget.h"
#include "uploadprogressform.h"

namespace {

constexpr QPoint anonymizePlace{400, 100};

} // namespace

void PatientManagerMainWindow::on_actionAnonymize_triggered()
{
    getSelectPatientPk();
    auto *dock = new NDockWidget(tr("Anonymize"), this);
    auto *form = new AnonymizeForm(dock);
    connect(form, &AnonymizeForm::sendRequested, this, &PatientManagerMainWindow::sendFiles);
    connect(form, &AnonymizeForm::uploadRequested, UploadProgressForm::instance(),
        &UploadProgressForm::uploadFiles);
    connect(form, &AnonymizeForm::picturesWanted, this, &PatientManagerMainWindow::picturesWanted);
    connect(form, &AnonymizeForm::imported, this, &PatientManagerMainWindow::readNewPatients);
    form->choose(currentTableName, selectedPks);
    dock->setWidget(form);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->setFloating(true);
    dock->move(anonymizePlace);
    dock->show();
}
