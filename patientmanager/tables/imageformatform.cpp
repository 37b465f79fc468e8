#include "imageformatform.h"

#include "ui_imageformatform.h"

#include "pagedtablemodel.h"
#include "recordtable.h"

#include <QSqlRecord>

namespace {
constexpr RecordTable imageTable{"imageformat", "imageformatuser", "series_fk=0", "series_fk ='%1'", 0};
/// Fixed places in the index's image table.
constexpr int instanceNumberColumn = 3;
constexpr int filePathColumn = 32;
} // namespace

ImageformatForm::ImageformatForm(QWidget *parent)
    : DependentForm(imageTable, parent)
    , ui(std::make_unique<Ui::ImageformatForm>())
{
    ui->setupUi(this);
    setMaximumHeight(fixedHeight);
    openDependentTable(ui->tableView);
}

ImageformatForm::~ImageformatForm() = default;

void ImageformatForm::reportRow(int row)
{
    const QSqlRecord record = model()->record(row);
    emit selectInstance(model()->key(row), record.value(instanceNumberColumn).toInt(),
        record.value(filePathColumn).toString());
}

void ImageformatForm::onSelectSeries(qlonglong series_fk)
{
    showChildrenOf(series_fk);
}

void ImageformatForm::onInstances(const QString &strFileter)
{
    showWhere(strFileter);
}

void ImageformatForm::onFixHeight(bool fix)
{
    setMaximumHeight(fix ? freeHeight : fixedHeight);
}
