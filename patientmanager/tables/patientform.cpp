#include "patientform.h"

#include "ui_patientform.h"

#include "httpuploadfile.h"
#include "ntableview.h"
#include "pagedtablemodel.h"
#include "recordtable.h"
#include "uploadprogressform.h"
#include "uploadselection.h"

#include <QCoreApplication>
#include <QDebug>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlRecord>

namespace {
constexpr RecordTable patientTable{"patient", "patientuser", "updated_time >= '%1'", nullptr, 0};
constexpr int leastHeight = 100;
} // namespace

PatientForm::PatientForm(QWidget *parent)
    : RecordForm(patientTable, parent)
    , ui(std::make_unique<Ui::PatientForm>())
    , m_cloud(HttpUploadFile::instance())
{
    ui->setupUi(this);
    openTable(ui->tableView);
    ui->tableView->setSelectionMode(QAbstractItemView::ContiguousSelection);
    connect(ui->tableView, &NTableView::fileFinished, this, &PatientForm::on_reflash_enable);
    setMinimumHeight(leastHeight);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &PatientForm::endWorkers);
}

PatientForm::~PatientForm()
{
    endWorkers();
}

void PatientForm::reportRow(int row)
{
    m_reported = model()->key(row);
    emit selectPatient(m_reported);
}

QList<qlonglong> PatientForm::getSelectList() const
{
    return selectedKeys();
}

void PatientForm::setLoginUserType(int type)
{
    m_loginUserType = type;
}

void PatientForm::selectIdx(qlonglong pk)
{
    qDebug() << model()->record().count();
    selectNearTop(pk);
}

void PatientForm::onSearchPatient(const QString &filter)
{
    m_filter = filter;
    showWhere(filter);
    showNames();
    m_reported = 0;
    emit selectPatient(0);
}

void PatientForm::showFound(const QString &filter)
{
    const bool isComplete = narrowTo(filter);
    if (!selectedKeys().contains(m_reported)) {
        ui->tableView->clearSelection();
        showNames();
        m_reported = 0;
        emit selectPatient(0);
    }
    if (!isComplete) {
        emit selectPK(selectedKeys(), QLatin1String(patientTable.name));
    }
}

/// What tells other patients apart stands at the left.
void PatientForm::showNames()
{
    ui->tableView->horizontalScrollBar()->setValue(0);
}

void PatientForm::onPatient(const QList<qlonglong> &pks)
{
    showKeys(pks);
}

void PatientForm::onShowPatient()
{
    getPreSelectedRows();
    showWhere(QString());
    showPreSelectedRows();
}

void PatientForm::getPreSelectedRows()
{
    const QList<qlonglong> keys = selectedKeys();
    m_preSelected = QSet<qlonglong>(keys.begin(), keys.end());
}

void PatientForm::showPreSelectedRows()
{
    ui->tableView->setSelectionMode(QAbstractItemView::MultiSelection);
    selectKeys(m_preSelected);
    ui->tableView->setSelectionMode(QAbstractItemView::ContiguousSelection);
}

void PatientForm::on_revertall_clicked()
{
    QSqlDatabase db = QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), true);
    if (!db.isValid()) {
        db.open();
    }
    RecordForm::on_revertall_clicked();
}

void PatientForm::on_reflash_clicked()
{
    if (!model()->select()) {
        replaceModel();
    }
    ui->tableView->resizeColumnsToContents();
}

void PatientForm::on_reflash_enable(bool bRet)
{
    // Files dropped on a table end whenever they end: what is being edited is not lost to that.
    if (bRet && !hasUnsavedEdits() && !isEditing()) {
        model()->select();
    }
}

void PatientForm::on_Delete_clicked() { }

void PatientForm::contextMenuEvent(QContextMenuEvent *) { }

void PatientForm::uploadFile(const QString &userid)
{
    const QVector<UploadBatch> batches =
        UploadSelection::read(RecordLevel::Patient, selectedKeys().mid(0, 1));
    for (const UploadBatch &batch : batches) {
        UploadProgressForm::instance()->setUploadFiles(
            batch.seriesUIDs, batch.sopInstanceUIDs, batch.filePaths, batch.patientName, userid.toUtf8());
    }
}

void PatientForm::onExpertList()
{
    m_cloud->expertInfoList();
    m_cloud->getExpertNames();
}
