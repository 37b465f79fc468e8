#include "patienttreeform.h"

#include "ui_patienttreeform.h"

#include "advancedinquiryform.h"
#include "attributes.h"
#include "inquiryentry.h"
#include "inquiryproblemtext.h"
#include "inquirytable.h"
#include "instancefilter.h"
#include "patienttreeview.h"
#include "qpatient.h"
#include "qpatients.h"
#include "qpatienttreeitem.h"
#include "qpatienttreemodel.h"
#include "qseries.h"
#include "qstudy.h"
#include "retiredtree.h"
#include "selecthideform.h"
#include "treeplace.h"
#include "treeresult.h"
#include "waitcursor.h"

#include <QDockWidget>
#include <QMouseEvent>
#include <QSet>

namespace {

constexpr int floatOffset = 40; ///< pixels

QString tableName(RecordLevel level)
{
    return QString::fromLatin1(recordTableName(level));
}

template <typename Record>
QList<qlonglong> keysOf(const QList<Record *> &records)
{
    QList<qlonglong> keys;
    keys.reserve(records.size());
    for (const Record *record : records) {
        keys.append(record->getPk());
    }
    return keys;
}

QString patientText(const QPatient &patient)
{
    return QStringLiteral("patientName:") + patient.patientName() + QStringLiteral("; patientPK:")
        + QString::number(patient.getPk());
}

} // namespace

PatientTreeForm::PatientTreeForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::PatientTreeForm>())
{
    ui->setupUi(this);
    treeView = ui->treeView;
    listInquiries();
    run(currentInquiry());
    setUpView();
}

PatientTreeForm::~PatientTreeForm()
{
    delete inquiryForm;
    delete fieldForm;
}

void PatientTreeForm::listInquiries()
{
    const QStringList names = InquiryTable::names();
    for (const QString &known : qAsConst(storedInquiries)) {
        if (!names.contains(known)
            && known != currentInquiry()) { // Query will say that the chosen one is gone
            ui->comboBox->removeItem(exactEntry(*ui->comboBox, known));
        }
    }
    for (const QString &name : names) {
        if (!storedInquiries.contains(name) && exactEntry(*ui->comboBox, name) < 0) {
            ui->comboBox->addItem(name);
        }
    }
    storedInquiries = names;
}

void PatientTreeForm::setUpView()
{
    treeView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    treeView->setSelectionMode(QAbstractItemView::ContiguousSelection);
    connect(treeView, &QAbstractItemView::clicked, this, &PatientTreeForm::onTreeModel);
    connect(treeView, &QAbstractItemView::doubleClicked, this, &PatientTreeForm::onMutiTreeModel);
}

void PatientTreeForm::setDockWidget(QDockWidget *dock)
{
    dockWidget = dock;
}

void PatientTreeForm::setGuard(const std::function<bool()> &guard)
{
    mayFillTables = guard;
}

QString PatientTreeForm::problemText() const
{
    return inquiryProblemText(patients->problem());
}

QString PatientTreeForm::currentInquiry() const
{
    return ui->comboBox->currentText();
}

void PatientTreeForm::run(const QString &inquiry)
{
    shownInquiry = inquiry;
    auto result = std::make_unique<QPatients>(nullptr);
    result->advanceQueryByName(inquiry);
    showResult(std::move(result));
    showProblem();
}

void PatientTreeForm::reload()
{
    listInquiries();
    const TreePlace place(treeView);
    run(shownInquiry);
    place.restore();
}

void PatientTreeForm::showResult(std::unique_ptr<QPatients> result)
{
    const TreeResult shown(result.get(), this);
    treeView->setTree(shown.model, shown.patientColumns, shown.captions);
    if (patientTreeModel) {
        RetiredTree::retire(patientTreeModel, patients);
    }
    patientTreeModel = shown.model;
    patients = result.release();
    patients->setParent(shown.model); // the records go with the items that borrow them, and after them
    allPatients = patients->getAllPatient();
    allStudies = patients->getAllStudy();
    allSeries = patients->getAllSeries();
    for (int column = 0; column < shown.captions.size(); ++column) {
        treeView->setColumnHidden(column, shown.hiddenColumns.contains(column));
    }
    treeView->collapseAll();
    treeView->fitColumns();
}

void PatientTreeForm::showProblem()
{
    const QString text = problemText();
    ui->comboBox->setToolTip(text.isEmpty() ? tr("Stored inquiry that \"Query\" runs") : text);
    treeView->setEmptyText(text.isEmpty() ? tr("The inquiry finds nothing.") : text);
    emit inquiryProblem(text);
}

void PatientTreeForm::tellTable(RecordLevel level, const QString &text)
{
    emit selectTable(tableName(level));
    emit tableInfo(text);
}

void PatientTreeForm::tellAllPatients()
{
    emit selectPatientPks(keysOf(allPatients), QString());
    tellTable(RecordLevel::Patient, QStringLiteral("ALL Patient"));
}

void PatientTreeForm::on_AdvancedInquiry_clicked()
{
    if (mayFillTables()) {
        {
            const WaitCursor cursor;
            run(currentInquiry());
        }
        tellAllPatients();
    }
}

void PatientTreeForm::on_AdvancedInquiryPatient_clicked()
{
    if (!mayFillTables()) {
        return;
    }
    treeView->openLevels(0);
    tellAllPatients();
    emit deleteThumbView();
}

void PatientTreeForm::on_AdvancedInquiryStudy_clicked()
{
    if (!mayFillTables()) {
        return;
    }
    treeView->openLevels(1);
    emit selectStudyPks(keysOf(allStudies), QString());
    tellTable(RecordLevel::Study, QStringLiteral("ALL Study"));
    emit deleteThumbView();
}

void PatientTreeForm::on_AdvancedInquirySeries_clicked()
{
    if (!mayFillTables()) {
        return;
    }
    treeView->openLevels(2);
    emit selectSeriesPks(keysOf(allSeries), QString());
    tellTable(RecordLevel::Series, QStringLiteral("ALL Series"));
    emit deleteThumbView();
}

void PatientTreeForm::onTreeModel(const QModelIndex &index)
{
    const QPersistentModelIndex clicked(index);
    // A question lets time pass: another tree may have taken the place of the one that was clicked.
    const QPatientTreeItem *item =
        index.model() == patientTreeModel && mayFillTables() && clicked.model() == patientTreeModel
        ? patientTreeModel->treeItem(clicked)
        : nullptr;
    if (!item) {
        return;
    }
    if (const QPatient *patient = item->getPatient()) {
        clickPatient(*patient);
    } else if (const QStudy *study = item->getStudy()) {
        clickStudy(*study);
    } else if (const QSeries *series = item->getSeries()) {
        clickSeries(*series);
    }
}

void PatientTreeForm::clickPatient(const QPatient &patient)
{
    const QString text = patientText(patient);
    emit selectStudyPks(keysOf(patient.getStudys()), tableName(RecordLevel::Study));
    tellTable(RecordLevel::Study, text);
}

void PatientTreeForm::clickStudy(const QStudy &study)
{
    const QString text = patientText(*study.getPatient());
    emit selectSeriesPks(keysOf(study.getSeries()), tableName(RecordLevel::Series));
    tellTable(RecordLevel::Series, text);
}

void PatientTreeForm::clickSeries(const QSeries &series)
{
    const qlonglong key = series.getPk();
    const QString text = patientText(*series.getStudy()->getPatient());
    emit selectInstancesFilter(InstanceFilter::of(currentInquiry()).text(key));
    emit selectSeriesPk({key}, tableName(RecordLevel::Series));
    tellTable(RecordLevel::Image, text);
}

void PatientTreeForm::onMutiTreeModel()
{
    QSet<qlonglong> keys;
    QString table;
    for (const IndexRecord *record : treeView->selectedRecords()) {
        keys.insert(record->getPk());
        table = tableName(record->level());
    }
    emit selectMutiPK(keys.values(), table);
}

void PatientTreeForm::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!dockWidget || childAt(event->pos()) != ui->titleLabel) {
        QWidget::mouseDoubleClickEvent(event);
        return;
    }
    QWidget *old = dockWidget->titleBarWidget();
    dockWidget->setTitleBarWidget(dockWidget->isFloating() ? new QWidget(dockWidget) : nullptr);
    delete old; // the dock only hides what it no longer uses
    dockWidget->setFloating(!dockWidget->isFloating());
    if (dockWidget->isFloating()) {
        dockWidget->move(dockWidget->pos() + QPoint(floatOffset, floatOffset)); // not just over the tables
    }
}
