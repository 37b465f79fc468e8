#include "viewplace.h"

#include "pagedtablemodel.h"
#include "selectedrows.h"

#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTableView>

ViewPlace::ViewPlace(QTableView *view, PagedTableModel *model)
    : m_view(view)
    , m_model(model)
    , m_vertical(view->verticalScrollBar()->value())
    , m_horizontal(view->horizontalScrollBar()->value())
{
    const QVector<int> rows = SelectedRows::of(view);
    m_selected.reserve(rows.size());
    for (const int row : rows) {
        m_selected.insert(model->key(row));
    }
    const QModelIndex current = view->currentIndex();
    if (current.isValid()) {
        m_currentKey = model->key(current.row());
        m_currentColumn = current.column();
    }
    if (m_vertical > 0) {
        m_topKey = model->key(view->rowAt(0));
    }
}

void ViewPlace::restore() const
{
    SelectedRows::add(m_view, m_model, m_selected);
    restoreCurrentCell();
    restoreScroll();
}

int ViewPlace::rowOf(qlonglong key) const
{
    return key == 0 ? -1 : m_model->rowOf(key);
}

void ViewPlace::restoreCurrentCell() const
{
    const int row = rowOf(m_currentKey);
    if (row >= 0) {
        m_view->selectionModel()->setCurrentIndex(
            m_model->index(row, m_currentColumn), QItemSelectionModel::NoUpdate);
    }
}

void ViewPlace::restoreScroll() const
{
    m_view->doItemsLayout(); // gives the scroll bars the ranges of the new rows
    const int top = rowOf(m_topKey);
    m_view->verticalScrollBar()->setValue(top >= 0 ? top : m_vertical);
    m_view->horizontalScrollBar()->setValue(m_horizontal);
}
