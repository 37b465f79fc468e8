#include "treeplace.h"

#include "indexrecord.h"
#include "patienttreeview.h"
#include "qpatienttreeitem.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QScrollBar>

TreePlace::TreePlace(PatientTreeView *view)
    : m_view(view)
    , m_header(view->header()->saveState())
    , m_columns(view->model()->columnCount())
    , m_vertical(view->verticalScrollBar()->value())
    , m_horizontal(view->horizontalScrollBar()->value())
{
    noteOpenBranches({});
    for (const QModelIndex &row : view->selectionModel()->selectedRows()) {
        m_selected.insert(recordOf(view->item(row)));
    }
    m_current = recordOf(view->item(view->currentIndex()));
    m_currentColumn = view->currentIndex().column();
    if (m_vertical > 0) {
        m_top = recordOf(view->item(view->indexAt(QPoint(0, 0))));
    }
}

TreePlace::Record TreePlace::recordOf(const QPatientTreeItem *item)
{
    const IndexRecord *record = item ? item->record() : nullptr;
    return record ? Record(int(record->level()), record->getPk()) : Record(-1, 0);
}

void TreePlace::noteOpenBranches(const QModelIndex &parent)
{
    const QAbstractItemModel *model = m_view->model();
    const int rows = model->rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (m_view->isExpanded(index)) {
            m_open.insert(recordOf(m_view->item(index)));
            noteOpenBranches(index);
        }
    }
}

void TreePlace::restore() const
{
    if (m_view->model()->columnCount() == m_columns) {
        m_view->header()->restoreState(m_header); // for the order; the widths follow the new rows
    }
    m_view->openWhere([this](const QPatientTreeItem &item) { return m_open.contains(recordOf(&item)); });
    m_view->verticalScrollBar()->setValue(m_vertical);
    restoreRows();
    m_view->fitColumns();
    m_view->horizontalScrollBar()->setValue(m_horizontal);
}

/// Of the rows in open branches: a closed one hides what was chosen in it.
void TreePlace::restoreRows() const
{
    QItemSelection selection;
    QModelIndex current;
    QModelIndex top;
    QModelIndex row = m_view->model()->index(0, 0);
    for (; row.isValid(); row = m_view->indexBelow(row)) {
        const Record record = recordOf(m_view->item(row));
        if (m_selected.contains(record)) {
            selection.select(row, row.siblingAtColumn(m_view->model()->columnCount() - 1));
        }
        if (record == m_current) {
            current = row.siblingAtColumn(m_currentColumn);
        }
        if (record == m_top) {
            top = row;
        }
    }
    m_view->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    m_view->selectionModel()->select(selection, QItemSelectionModel::Select);
    if (top.isValid()) {
        m_view->scrollTo(top, QAbstractItemView::PositionAtTop);
    }
}
