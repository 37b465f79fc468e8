// The window's silent copy of what is selected into a folder.
#include "patientmanagermainwindow.h"

#include "filechooser.h"
#include "kivmessageboxform.h"
#include "recordcopy.h"
#include "waitcursor.h"

void PatientManagerMainWindow::on_actionSaveDicom_triggered()
{
    getSelectPatientPk();
    if (selectedPks.isEmpty()) {
        kivMessageBoxForm::warning(nullptr, tr("警告"), tr("请选择要保存的病人数据!"),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
        return;
    }
    const QString destination = FileChooser::toFolder(this, {});
    const std::optional<RecordLevel> level = recordLevelOf(currentTableName);
    if (destination.isEmpty() || !level) {
        return;
    }
    const WaitCursor wait;
    RecordCopy(destination).copy(*level, selectedPks);
}
