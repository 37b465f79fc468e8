#include "recordform.h"

#include "columncaptions.h"
#include "keyfilter.h"
#include "kivmessageboxform.h"
#include "maintenancetext.h"
#include "ntableview.h"
#include "pagedtablemodel.h"
#include "recordcolumnlook.h"
#include "recordtable.h"
#include "selectedrows.h"
#include "uploadstatus.h"
#include "viewplace.h"

#include <QDate>
#include <QHeaderView>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlRecord>

RecordForm::RecordForm(const RecordTable &table, QWidget *parent)
    : QWidget(parent)
    , m_table(table)
{ }

RecordForm::~RecordForm() = default;

QSqlTableModel *RecordForm::tableModel() const
{
    return m_model;
}

bool RecordForm::hasUnsavedEdits() const
{
    return m_model->isDirty();
}

bool RecordForm::isEditing() const
{
    return m_view->currentIndex().isValid() && m_view->isPersistentEditorOpen(m_view->currentIndex());
}

void RecordForm::reload()
{
    if (hasUnsavedEdits() || isEditing()) {
        return;
    }
    const ViewPlace place(m_view, m_model);
    m_model->select();
    place.restore();
}

void RecordForm::openTable(NTableView *view)
{
    m_view = view;
    m_view->setTableName(QLatin1String(m_table.name));
    PagedTableModel *model = createModel();
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    model->setFilter(QString::fromLatin1(m_table.startFilter).replace(QLatin1String("%1"), today));
    model->setEditStrategy(QSqlTableModel::OnManualSubmit);
    ColumnCaptions::apply(model);
    model->select();

    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    setModel(model);
    RecordColumnLook::installDelegates(m_view, m_model);
    m_view->resizeColumnsToContents();
    updateFieldHeader();
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->horizontalHeader()->setSortIndicator(m_table.sortColumn, Qt::AscendingOrder);
    m_view->horizontalHeader()->setSortIndicatorShown(true);
    connect(m_view->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        m_view->sortByColumn(column, m_view->horizontalHeader()->sortIndicatorOrder());
    });
    connect(m_view, &QAbstractItemView::clicked, this, &RecordForm::selectIndex);
}

PagedTableModel *RecordForm::createModel()
{
    auto *model = new PagedTableModel(this, QSqlDatabase());
    model->setTable(QLatin1String(m_table.name));
    return model;
}

void RecordForm::setModel(PagedTableModel *model)
{
    PagedTableModel *old = m_model;
    m_model = model;
    m_view->setModel(model);
    connect(model, &QAbstractItemModel::dataChanged, this, &RecordForm::noteEdits);
    connect(model, &QAbstractItemModel::headerDataChanged, this, &RecordForm::noteEdits);
    connect(model, &QAbstractItemModel::modelReset, this, &RecordForm::noteEdits);
    connect(model, &QAbstractItemModel::modelReset, this, &RecordForm::rowsRead);
    delete old;
    noteEdits();
    emit rowsRead();
}

void RecordForm::replaceModel()
{
    PagedTableModel *model = createModel();
    model->setEditStrategy(QSqlTableModel::OnManualSubmit);
    model->select();
    setModel(model);
}

void RecordForm::noteEdits()
{
    if (hasUnsavedEdits() != m_unsaved) {
        m_unsaved = !m_unsaved;
        emit editsChanged();
    }
}

void RecordForm::selectIndex(const QModelIndex &index)
{
    reportRow(index.row());
    emit selectPK(selectedKeys(), QLatin1String(m_table.name));
}

void RecordForm::selectList()
{
    emit selectMutiPK(selectedKeys(), QLatin1String(m_table.name));
}

void RecordForm::onInquiryShow()
{
    showKeys({});
}

void RecordForm::readUploadStates()
{
    const int column = m_model->fieldIndex(QLatin1String(UploadStatus::column));
    const bool isTyped = isEditing() && m_view->currentIndex().column() == column;
    if (column >= 0 && !isTyped) {
        m_model->readColumn(column);
        m_view->viewport()->update();
    }
}

void RecordForm::onDeletereflash(const QString &tableName)
{
    if (tableName == QLatin1String(m_table.name)) {
        readAgain();
    }
}

void RecordForm::updateFieldHeader()
{
    RecordColumnLook::showChosen(m_view, m_model, m_table.fieldTable);
    m_view->update();
}

void RecordForm::submit()
{
    const ViewPlace place(m_view, m_model); // what is stored is read again
    QSqlDatabase db = m_model->database();
    db.transaction();
    if (!m_model->submitAll()) {
        const QString error = MaintenanceText::refused(m_model->lastError());
        db.rollback();
        reportFailure(error);
    } else if (!db.commit()) {
        const QString error = MaintenanceText::refused(db.lastError());
        db.rollback();
        m_model->select();
        reportFailure(error);
    }
    place.restore();
}

void RecordForm::reportFailure(const QString &error)
{
    kivMessageBoxForm::warning(
        nullptr, tr("Cached Table"), tr("The database reported an error: %1").arg(error), 1, 1);
}

void RecordForm::on_submit_clicked()
{
    submit();
}

void RecordForm::on_revertall_clicked()
{
    m_model->revertAll();
}

void RecordForm::showWhere(const QString &filter)
{
    m_model->selectWhere(filter);
    refreshView();
}

bool RecordForm::narrowTo(const QString &filter)
{
    const int selected = selectedKeys().size();
    const bool wasEmpty = m_model->rowCount() == 0;
    const ViewPlace place(m_view, m_model);
    m_model->selectWhere(filter);
    if (wasEmpty) {
        m_view->resizeColumnsToContents(); // later rows leave the widths alone
    }
    place.restore();
    return selectedKeys().size() == selected;
}

void RecordForm::showKeys(const QList<qlonglong> &keys)
{
    showWhere(keyFilter(keys));
}

void RecordForm::showChildrenOf(qlonglong parent)
{
    showWhere(QString::fromLatin1(m_table.parentFilter).arg(parent));
}

void RecordForm::readAgain()
{
    m_model->select();
    refreshView();
}

void RecordForm::refreshView()
{
    m_view->resizeColumnsToContents();
    m_view->update();
}

QList<qlonglong> RecordForm::selectedKeys() const
{
    return m_model->keys(SelectedRows::of(m_view));
}

void RecordForm::selectKeys(const QSet<qlonglong> &keys)
{
    SelectedRows::add(m_view, m_model, keys);
}

void RecordForm::selectNearTop(qlonglong key)
{
    m_view->clearSelection();
    const int columns = m_model->record().count();
    for (int row = 0; row < columns; ++row) {
        if (m_model->key(row) == key) {
            m_view->selectRow(row);
        }
    }
}
