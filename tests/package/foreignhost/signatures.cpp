#include "checks.h"

#include <advancedinquiryform.h>
#include <datasavetypeform.h>
#include <imageformatform.h>
#include <inquirysaveform.h>
#include <nrunnable.h>
#include <ntableview.h>
#include <patientform.h>
#include <patientmanagermainwindow.h>
#include <patientqueryform.h>
#include <patienttreeform.h>
#include <qdcmrecvfile.h>
#include <selecthideform.h>
#include <seriesform.h>
#include <studyform.h>
#include <tableinfoform.h>

#include <QMetaMethod>

namespace {

void expectMethods(
    const QMetaObject &meta, QMetaMethod::MethodType type, std::initializer_list<const char *> texts)
{
    for (const char *text : texts) {
        const int index = meta.indexOfMethod(QMetaObject::normalizedSignature(text));
        Checks::expect(index >= 0 && meta.method(index).methodType() == type,
            QLatin1String(meta.className()) + QStringLiteral("::") + QLatin1String(text));
    }
}

void expectSignals(const QMetaObject &meta, std::initializer_list<const char *> texts)
{
    expectMethods(meta, QMetaMethod::Signal, texts);
}

void expectSlots(const QMetaObject &meta, std::initializer_list<const char *> texts)
{
    expectMethods(meta, QMetaMethod::Slot, texts);
}

void windowSignatures()
{
    const QMetaObject &meta = PatientManagerMainWindow::staticMetaObject;
    expectSignals(meta,
        {"patientChanged(QPatient*)", "basicInquiyShow()", "deletereflash(QString)", "updateFieldHeader()",
            "jessionInfo(QByteArray)", "loginInfo(QByteArray,QByteArray,QByteArray,int)",
            "thumbViewReflash()", "notifySendSelectData(QStringList,QString,QString,int)",
            "notifyInstanceSent()", "notifyWriteDB(QStringList,QStringList,QStringList,QString)",
            "uploadFlag()", "runnable()"});
    expectSlots(meta,
        {"onLoadSelecetPath(QString)", "onSelectTable(QList<qlonglong>,QString)",
            "onMutiSelect(QList<qlonglong>,QString)", "onShowTable(QString)", "onLoadDir(int)",
            "on_actionLoadDir_triggered()", "on_actionDatabase_triggered()", "on_actionRefresh_triggered()",
            "on_actionSettingField_triggered()", "on_actionSubmit_triggered()",
            "on_actionRevertall_triggered()", "on_actionTest_triggered()"});
}

/// What the four record forms have in common.
void recordFormSignatures(const QMetaObject &meta)
{
    expectSignals(meta, {"selectPK(QList<qlonglong>,QString)", "selectMutiPK(QList<qlonglong>,QString)"});
    expectSlots(meta,
        {"selectIndex(QModelIndex)", "selectList()", "onInquiryShow()", "onDeletereflash(QString)",
            "updateFieldHeader()", "submit()", "on_submit_clicked()", "on_revertall_clicked()"});
}

void formSignatures()
{
    for (const QMetaObject *meta : {&PatientForm::staticMetaObject, &StudyForm::staticMetaObject,
             &SeriesForm::staticMetaObject, &ImageformatForm::staticMetaObject}) {
        recordFormSignatures(*meta);
    }
    expectSignals(PatientForm::staticMetaObject,
        {"selectPatient(long long)", "selectPatient(qlonglong)", "deleteSelected()",
            "refrshData(qlonglong)"});
    expectSlots(PatientForm::staticMetaObject,
        {"onSearchPatient(QString)", "onPatient(QList<qlonglong>)", "onShowPatient()", "getPreSelectedRows()",
            "showPreSelectedRows()", "selectIdx(qlonglong)", "on_reflash_clicked()",
            "on_reflash_enable(bool)", "onExpertList()", "on_Delete_clicked()"});
    expectSignals(StudyForm::staticMetaObject, {"selectStudy(long long)", "signalLoadFileFinished(bool)"});
    expectSlots(StudyForm::staticMetaObject,
        {"onSelectPatient(long long)", "onStudy(QList<qlonglong>)", "onFixHeight(bool)",
            "onLoadFileFinished(bool)", "selectIdx(qlonglong)"});
    expectSignals(SeriesForm::staticMetaObject, {"selectSeries(long long)", "signalLoadFileFinished(bool)"});
    expectSlots(SeriesForm::staticMetaObject,
        {"onSelectStudy(long long)", "onSeries(QList<qlonglong>)", "on_tableView_doubleClicked(QModelIndex)",
            "onLoadFileFinished(bool)", "selectIdx(qlonglong)"});
    expectSignals(ImageformatForm::staticMetaObject,
        {"selectInstance(qint64,long,QString)", "signalLoadFileFinished(bool)"});
    expectSlots(ImageformatForm::staticMetaObject,
        {"onSelectSeries(long long)", "onInstances(QString)", "onFixHeight(bool)",
            "onLoadFileFinished(bool)"});
    expectSlots(tableInfoForm::staticMetaObject, {"onTableInfo(QString)"});
}

void inquirySignatures()
{
    expectSignals(AdvancedInquiryForm::staticMetaObject,
        {"setComboBox(QString)", "setComboBoxIdx(QString)", "setDeleteIdx(QString)",
            "sameInquiryName(QString)"});
    expectSlots(AdvancedInquiryForm::staticMetaObject,
        {"on_InquiryButton_clicked()", "on_NewTree_clicked()", "on_InquiryCancel_clicked()",
            "on_Save_clicked()", "on_SaveAs_clicked()", "on_Delete_clicked()", "getText(QString)",
            "getComboBoxIdx(QString)", "onListSelectPD(int)", "onListSelectSI(int)", "onTreeView(int)"});
    expectSignals(InquirySaveForm::staticMetaObject, {"setText(QString)"});
    expectSlots(InquirySaveForm::staticMetaObject, {"onSameInquiryName(QString)"});
}

void treeSignatures()
{
    const QMetaObject &meta = PatientTreeForm::staticMetaObject;
    expectSignals(meta,
        {"selectPatientPks(QList<qlonglong>,QString)", "selectPatientPks(QList<qlonglong>)",
            "selectStudyPks(QList<qlonglong>,QString)", "selectStudyPks(QList<qlonglong>)",
            "selectSeriesPks(QList<qlonglong>,QString)", "selectSeriesPks(QList<qlonglong>)",
            "selectSeriesPk(QList<qlonglong>,QString)", "selectMutiPK(QList<qlonglong>,QString)",
            "selectInstancesFilter(QString)", "selectTable(QString)", "tableInfo(QString)",
            "searchPatient(QString)", "updateFieldHeader()", "deleteThumbView()", "setComboBoxIdx(int)"});
    expectSlots(meta,
        {"onTreeModel(QModelIndex)", "onMutiTreeModel()", "on_AdvancedInquiry_clicked()",
            "on_AdvancedInquiryNew_clicked()", "on_AdvancedInquiryPatient_clicked()",
            "on_AdvancedInquiryStudy_clicked()", "on_AdvancedInquirySeries_clicked()",
            "on_AdvancedInquirySettingField_clicked()", "getComboBox(QString)", "getComboBoxIdx(QString)",
            "getDeleteIdx(QString)"});
}

void querySignatures()
{
    const QMetaObject &meta = PatientQueryForm::staticMetaObject;
    expectSignals(meta,
        {"searchPatient(QString)", "setComboBoxIdx(int)", "loadDir(bool)", "IsChecked(bool)",
            "compareStart()", "jointStart()", "vesselStart()", "swiStart()", "advanceInquiry(bool)",
            "brainSegment(bool)"});
    expectSlots(meta,
        {"onAction(QAction*)", "onPatient(QSharedPointer<QPatient>)", "onInstancePK(qint64)",
            "setDockWidget(QDockWidget*)", "onDeleteThumbView()", "on_search_clicked()",
            "on_AdvanceInquiry_clicked(bool)", "on_LoadDir_clicked()", "on_btQueryMinimize_clicked()",
            "on_btThumbnailMinimize_clicked()", "on_btApplicationMinimize_clicked()",
            "on_dockButton_clicked()", "on_pushButton_joint_clicked(bool)", "on_pushButton_regist_clicked()",
            "on_pushButton_swi_clicked(bool)", "on_pushButton_vessel_clicked(bool)",
            "on_pushButton_infarction_clicked(bool)", "on_pushButton_swim_clicked()",
            "on_pushButton_ich_clicked(bool)", "on_pushButton_clicked()", "enablePatient(bool)",
            "enablePatientID(bool)", "enableIDCardNum(bool)", "enableInPatientNo(bool)",
            "enableOutPatientNo(bool)", "getComboBox(QString)", "getComboBoxIdx(int)"});
}

void platformSignatures()
{
    expectSignals(NTableView::staticMetaObject, {"fileFinished(bool)"});
    expectSlots(NRunnable::staticMetaObject, {"runRunnable()"});
    expectSignals(LoadNotifier::staticMetaObject, {"finishReadFiles(bool)"});
    expectSignals(DataSaveTypeForm::staticMetaObject, {"dataType(int)"});
    expectSignals(selectHideForm::staticMetaObject, {"updateFieldHeader()"});
    expectSignals(
        QDcmRecvFile::staticMetaObject, {"notifyUploadFile(QStringList,QStringList,QStringList,QString)"});
    expectSlots(
        QDcmRecvFile::staticMetaObject, {"onNotifyWriteDB(QStringList,QStringList,QStringList,QString)"});
}

} // namespace

void Checks::signatures()
{
    windowSignatures();
    formSignatures();
    inquirySignatures();
    treeSignatures();
    querySignatures();
    platformSignatures();
}
