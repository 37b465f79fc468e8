#include "studyform.h"

#include "ui_studyform.h"

#include "pagedtablemodel.h"
#include "recordtable.h"

namespace {
constexpr RecordTable studyTable{"generalstudy", "generalstudyuser", "patient_fk=0", "patient_fk ='%1'", 0};
} // namespace

StudyForm::StudyForm(QWidget *parent)
    : DependentForm(studyTable, parent)
    , ui(std::make_unique<Ui::StudyForm>())
{
    ui->setupUi(this);
    openDependentTable(ui->tableView);
    setMinimumHeight(leastHeight);
}

StudyForm::~StudyForm() = default;

void StudyForm::reportRow(int row)
{
    emit selectStudy(model()->key(row));
}

QList<qlonglong> StudyForm::getSelectList() const
{
    return selectedKeys();
}

void StudyForm::selectIdx(qlonglong pk)
{
    selectNearTop(pk);
}

void StudyForm::onSelectPatient(qlonglong patient_fk)
{
    showChildrenOf(patient_fk);
    reportRow(0);
}

void StudyForm::onStudy(const QList<qlonglong> &pks)
{
    showKeys(pks);
}

void StudyForm::onFixHeight(bool fix)
{
    setMaximumHeight(fix ? freeHeight : fixedHeight);
}
