#include "checks.h"

#include <imageformatform.h>
#include <ntableview.h>
#include <patientform.h>
#include <patientmanagermainwindow.h>
#include <patienttreeform.h>
#include <qpatients.h>
#include <qpatienttreeitem.h>
#include <qpatienttreemodel.h>
#include <seriesform.h>
#include <studyform.h>
#include <tableinfoform.h>

#include <QAction>
#include <QTest>

namespace {

void windowOperations(PatientManagerMainWindow &window)
{
    Checks::expect(window.findChildren<QAction *>(QRegularExpression(QStringLiteral("^action"))).size() == 15,
        QStringLiteral("the fifteen actions"));
    window.showPatientManager();
    window.onSelectTable({1}, QStringLiteral("patient"));
    window.onMutiSelect({1, 2}, QStringLiteral("generalstudy"));
    Checks::expect(
        window.selectedKeys().size() == 2 && window.selectedTable() == QLatin1String("generalstudy"),
        QStringLiteral("the latest selection"));
    window.onShowTable(QStringLiteral("patient"));
    window.onLoadDir(0); // no path was taken yet: ends at once
    window.cancelImports();
    Checks::expect(QTest::qWaitFor([&window] { return !window.isImporting(); }), QStringLiteral("an end"));
    window.forwordData(QStringLiteral("/nowhere"));
    Checks::expect(window.getUploadTime().isNull() && !window.isLoadFiles() && !window.isImporting(),
        QStringLiteral("an idle window"));
}

template <typename Form>
void recordFormOperations(Form *form)
{
    form->onInquiryShow();
    form->onDeletereflash(QStringLiteral("patient"));
    form->updateFieldHeader();
    form->selectIndex(QModelIndex());
    form->selectList();
    form->submit();
    form->on_submit_clicked();
    form->on_revertall_clicked();
    form->reload();
    Checks::expect(form->view() && form->tableModel() && !form->hasUnsavedEdits() && !form->isEditing(),
        QStringLiteral("a form at rest"));
}

void formOperations(PatientManagerMainWindow &window)
{
    const QPointer<PatientForm> patients = window.getPatientForm();
    const QPointer<StudyForm> studies = window.getStudyForm();
    const QPointer<SeriesForm> series = window.getSeriesForm();
    const QPointer<ImageformatForm> images = window.getImagesForm();
    const QPointer<::tableInfoForm> information = window.getTableInfoForm();
    Checks::expect(
        patients && studies && series && images && information, QStringLiteral("the window's forms"));
    recordFormOperations(patients.data());
    recordFormOperations(studies.data());
    recordFormOperations(series.data());
    recordFormOperations(images.data());
    patients->onSearchPatient(QStringLiteral("pk > 0"));
    patients->onPatient({});
    patients->onShowPatient();
    patients->getPreSelectedRows();
    patients->showPreSelectedRows();
    patients->on_Delete_clicked();
    patients->on_reflash_clicked();
    patients->on_reflash_enable(true);
    patients->onExpertList();
    patients->setLoginUserType(0);
    patients->selectIdx(1);
    studies->onSelectPatient(1);
    studies->onStudy({1});
    studies->onFixHeight(true);
    studies->selectIdx(1);
    series->onSelectStudy(1);
    series->onSeries({1});
    series->selectIdx(1);
    series->on_tableView_doubleClicked(QModelIndex());
    studies->onLoadFileFinished(true);
    series->onLoadFileFinished(true);
    images->onLoadFileFinished(false);
    images->onSelectSeries(1);
    images->onInstances(QStringLiteral("pk > 0"));
    images->onFixHeight(true);
    Checks::expect(patients->getSelectList().isEmpty() && studies->getSelectList().isEmpty()
            && series->getSelectList().isEmpty(),
        QStringLiteral("an empty selection"));
    information->onTableInfo(QStringLiteral("<b>text</b>"));
}

void treeOperations(PatientManagerMainWindow &window)
{
    const QPointer<PatientTreeForm> panel = window.getPatientTreeForm();
    Checks::expect(panel && !panel->parent(), QStringLiteral("a tree without a dock"));
    window.showPatientTreeForm();
    window.showPatientTreeForm();
    panel->setDockWidget(nullptr);
    panel->on_AdvancedInquiry_clicked();
    panel->on_AdvancedInquiryPatient_clicked();
    panel->on_AdvancedInquiryStudy_clicked();
    panel->on_AdvancedInquirySeries_clicked();
    panel->onTreeModel(QModelIndex());
    panel->onMutiTreeModel();
    panel->getComboBox(QStringLiteral("new"));
    panel->getComboBoxIdx(QStringLiteral("NEW"));
    panel->getDeleteIdx(QStringLiteral("new"));
    panel->on_AdvancedInquiryNew_clicked();
    panel->on_AdvancedInquirySettingField_clicked();
    Checks::expect(panel->problemText().isEmpty(), QStringLiteral("an inquiry that runs"));
    QPatients patients;
    const QStringList columns = patients.getPatientTitleList();
    QPatientTreeModel model(nullptr, columns);
    model.setPatients(&patients, columns);
    const QPatientTreeItem item(columns, nullptr, columns);
    Checks::expect(!model.treeItem(QModelIndex()) && item.data(0) == QLatin1String("pk")
            && !QPatientTreeItem(item).getPatient(),
        QStringLiteral("a tree without rows"));
}

/// Each record form and the panels can also be made by the host itself.
void ownForms()
{
    const PatientTreeForm tree(nullptr);
    const PatientForm patients(nullptr);
    const StudyForm studies(nullptr);
    const SeriesForm series(nullptr);
    const ImageformatForm images(nullptr);
    const tableInfoForm information(nullptr);
}

} // namespace

void Checks::operations(PatientManagerMainWindow &window)
{
    windowOperations(window);
    formOperations(window);
    treeOperations(window);
    ownForms();
}
