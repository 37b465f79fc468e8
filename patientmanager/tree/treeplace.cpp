#include "treeplace.h"

#include "indexrecord.h"
#include "patienttreeview.h"
#include "qpatienttreeitem.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QScrollBar>

TreePlace::TreePlace(PatientTreeView *view)
    : m_view(view)
    , m_columns(view->columnNames())
    , m_vertical(view->verticalScrollBar()->value())
    , m_horizontal(view->horizontalScrollBar()->value())
{
    for (int place = 0; place < view->header()->count(); ++place) {
        m_order.append(view->header()->logicalIndex(place));
    }
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
    restoreOrder();
    m_view->openWhere([this](const QPatientTreeItem &item) { return m_open.contains(recordOf(&item)); });
    scrollBack(restoreRows());
}

/// Columns that are others now begin in the order of the model: the header keeps that of their number.
void TreePlace::restoreOrder() const
{
    QHeaderView *header = m_view->header();
    const bool areSame = m_view->columnNames() == m_columns;
    for (int place = 0; place < header->count(); ++place) {
        header->moveSection(header->visualIndex(areSame ? m_order.at(place) : place), place);
    }
}

/// The widths follow the rows in sight, and how far the view can be scrolled follows the widths.
void TreePlace::scrollBack(const QModelIndex &top) const
{
    if (top.isValid()) {
        m_view->scrollTo(top, QAbstractItemView::PositionAtTop);
    } else {
        m_view->verticalScrollBar()->setValue(m_vertical);
    }
    m_view->fitColumns();
    m_view->horizontalScrollBar()->setValue(m_horizontal);
}

/// Of the rows in open branches: a closed one hides what was chosen in it. @return the row that was at the
/// top
QModelIndex TreePlace::restoreRows() const
{
    const Record none = recordOf(nullptr);
    if (m_selected.isEmpty() && m_current == none && m_top == none) {
        return {};
    }
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
    // A current row that was scrolled out of sight stays there.
    m_view->setAutoScroll(false);
    m_view->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    m_view->setAutoScroll(true);
    m_view->selectionModel()->select(selection, QItemSelectionModel::Select);
    return top;
}
