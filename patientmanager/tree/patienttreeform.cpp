#include "patienttreeform.h"

#include "ui_patienttreeform.h"

#include "advancedinquiryform.h"
#include "attributes.h"
#include "columncaptions.h"
#include "companionwindow.h"
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

#include <QApplication>
#include <QDockWidget>
#include <QItemSelection>
#include <QMouseEvent>
#include <QSet>
#include <QSqlQuery>

namespace {

/// Shown while a slot reads the index.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

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

QStringList captionsOf(RecordLevel level, const QStringList &columns)
{
    const QHash<QString, QString> captions = columnCaptions(tableName(level));
    QStringList texts;
    for (const QString &column : columns) {
        texts.append(captions.value(column, column));
    }
    return texts;
}

} // namespace

PatientTreeForm::PatientTreeForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::PatientTreeForm>())
{
    ui->setupUi(this);
    treeView = ui->treeView;
    listInquiries();
    runInquiry();
    setUpView();
}

PatientTreeForm::~PatientTreeForm()
{
    delete inquiryForm;
    delete fieldForm;
}

void PatientTreeForm::listInquiries()
{
    ui->comboBox->addItems(InquiryTable::names());
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

bool PatientTreeForm::closeCompanions()
{
    return (!inquiryForm || inquiryForm->close()) && (!fieldForm || fieldForm->close());
}

QString PatientTreeForm::problemText() const
{
    return inquiryProblemText(patients->problem());
}

QString PatientTreeForm::currentInquiry() const
{
    return ui->comboBox->currentText();
}

void PatientTreeForm::runInquiry()
{
    const WaitCursor cursor;
    auto result = std::make_unique<QPatients>(nullptr);
    result->advanceQueryByName(currentInquiry());
    showResult(std::move(result));
    showProblem();
}

void PatientTreeForm::reload()
{
    const TreePlace place(treeView);
    runInquiry();
    place.restore();
}

void PatientTreeForm::showResult(std::unique_ptr<QPatients> result)
{
    const QStringList ofPatients = result->getPatientTitleList();
    const QStringList ofStudies = result->getStudyTitleList();
    const QStringList ofSeries = result->getSeriesTitleList();
    const QStringList columns = ofPatients + ofStudies + ofSeries;
    auto *tree = new QPatientTreeModel(this, columns);
    tree->setPatients(result.get(), columns);
    treeView->setTree(tree, ofPatients.size(),
        captionsOf(RecordLevel::Patient, ofPatients) + captionsOf(RecordLevel::Study, ofStudies)
            + captionsOf(RecordLevel::Series, ofSeries));
    if (patientTreeModel) {
        RetiredTree::retire(patientTreeModel, patients);
    }
    patientTreeModel = tree;
    patients = result.release();
    patients->setParent(tree); // the records go with the items that borrow them, and after them
    allPatients = patients->getAllPatient();
    allStudies = patients->getAllStudy();
    allSeries = patients->getAllSeries();
    const int studyPk = ofPatients.size();
    const int seriesPk = studyPk + ofStudies.size();
    for (int column = 0; column < columns.size(); ++column) {
        treeView->setColumnHidden(column,
            (column == studyPk && patients->isStudyPkHidden())
                || (column == seriesPk && patients->isSeriesPkHidden()));
    }
    treeView->collapseAll();
    treeView->fitColumns();
}

void PatientTreeForm::showProblem()
{
    const QString text = problemText();
    ui->comboBox->setToolTip(text.isEmpty() ? tr("Stored inquiry that \"Query\" runs") : text);
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
        runInquiry();
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
    const QPersistentModelIndex clicked(index); // a question lets time pass
    if (index.model() != patientTreeModel || !mayFillTables()) {
        return;
    }
    const QPatientTreeItem *item = patientTreeModel->treeItem(clicked);
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
    emit selectInstancesFilter(instanceFilter(key));
    emit selectSeriesPk({key}, tableName(RecordLevel::Series));
    tellTable(RecordLevel::Image, text);
}

QString PatientTreeForm::instanceFilter(qlonglong series) const
{
    InstanceFilter filter;
    QSqlQuery query;
    query.setForwardOnly(true);
    query.exec(InquiryTable::allOf(currentInquiry()));
    while (query.next()) {
        const auto text = [&query](InquiryTable::Column column) { return query.value(column).toString(); };
        filter.add(text(InquiryTable::GroupName), text(InquiryTable::FieldName), text(InquiryTable::Symbol),
            text(InquiryTable::FieldValue), text(InquiryTable::Logic));
    }
    return filter.text(series);
}

void PatientTreeForm::onMutiTreeModel()
{
    QSet<qlonglong> keys;
    QString table;
    // Row by row: the cells of a row stand for one record.
    const QItemSelection selection = treeView->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QModelIndex index = patientTreeModel->index(row, range.left(), range.parent());
            const QPatientTreeItem *item = patientTreeModel->treeItem(index);
            if (const IndexRecord *record = item ? item->record() : nullptr) {
                keys.insert(record->getPk());
                table = tableName(record->level());
            }
        }
    }
    emit selectMutiPK(keys.values(), table);
}

void PatientTreeForm::on_AdvancedInquiryNew_clicked()
{
    if (!inquiryForm) {
        inquiryForm = new AdvancedInquiryForm(nullptr, currentInquiry());
        inquiryForm->setWindowFlag(Qt::WindowStaysOnTopHint);
        inquiryForm->getComboBoxIdx(currentInquiry());
        connect(inquiryForm, &AdvancedInquiryForm::setComboBox, this, &PatientTreeForm::getComboBox);
        connect(inquiryForm, &AdvancedInquiryForm::setDeleteIdx, this, &PatientTreeForm::getDeleteIdx);
        connect(inquiryForm, &AdvancedInquiryForm::setComboBoxIdx, this, &PatientTreeForm::getComboBoxIdx);
    }
    bringUp(inquiryForm);
}

void PatientTreeForm::on_AdvancedInquirySettingField_clicked()
{
    if (!fieldForm) {
        fieldForm = new selectHideForm(nullptr, 1);
        fieldForm->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(fieldForm, &selectHideForm::updateFieldHeader, this, &PatientTreeForm::updateFieldHeader);
        connect(fieldForm, &selectHideForm::updateFieldHeader, this, &PatientTreeForm::reload);
    }
    bringUp(fieldForm);
}

void PatientTreeForm::getComboBox(const QString &name)
{
    ui->comboBox->addItem(name);
}

void PatientTreeForm::getComboBoxIdx(const QString &name)
{
    const int index = ui->comboBox->findData(name, Qt::DisplayRole, Qt::MatchFixedString);
    if (index >= 0) {
        ui->comboBox->setCurrentIndex(index);
    }
}

void PatientTreeForm::getDeleteIdx(const QString &name)
{
    // An unknown name has the index -1, at which nothing is removed.
    ui->comboBox->removeItem(ui->comboBox->findData(name, Qt::DisplayRole, Qt::MatchFixedString));
    on_AdvancedInquiry_clicked();
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
}
