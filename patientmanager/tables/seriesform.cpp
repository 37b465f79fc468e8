#include "seriesform.h"

#include "ui_seriesform.h"

#include "pagedtablemodel.h"
#include "recordtable.h"

#include <QDebug>
#include <QSqlRecord>

namespace {
constexpr int seriesNumberColumn = 5;
constexpr RecordTable seriesTable{
    "generalseries", "generalseriesuser", "study_fk=0", "study_fk ='%1'", seriesNumberColumn};
} // namespace

SeriesForm::SeriesForm(QWidget *parent)
    : DependentForm(seriesTable, parent)
    , ui(std::make_unique<Ui::SeriesForm>())
{
    ui->setupUi(this);
    openDependentTable(ui->tableView);
    ui->tableView->sortByColumn(seriesNumberColumn, Qt::AscendingOrder);
    connect(ui->tableView, &QAbstractItemView::doubleClicked, this, &SeriesForm::selectList);
    setMinimumHeight(leastHeight);
}

SeriesForm::~SeriesForm() = default;

void SeriesForm::reportRow(int row)
{
    emit selectSeries(model()->key(row));
}

QList<qlonglong> SeriesForm::getSelectList() const
{
    return selectedKeys();
}

void SeriesForm::selectIdx(qlonglong pk)
{
    qDebug() << model()->record().count();
    selectNearTop(pk);
}

void SeriesForm::onSelectStudy(qlonglong study_fk)
{
    showChildrenOf(study_fk);
    emit selectSeries(0);
}

void SeriesForm::onSeries(const QList<qlonglong> &pks)
{
    showKeys(pks);
}

void SeriesForm::on_tableView_doubleClicked(const QModelIndex &) { }
