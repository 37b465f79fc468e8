#include "selectedrows.h"

#include "pagedtablemodel.h"

#include <QItemSelectionModel>
#include <QSet>
#include <QTableView>

#include <vector>

namespace {

/// A view does not report the cells of hidden columns.
bool hasVisibleColumn(const QTableView *view, const QItemSelectionRange &range)
{
    for (int column = range.left(); column <= range.right(); ++column) {
        if (!view->isColumnHidden(column)) {
            return true;
        }
    }
    return false;
}

} // namespace

QVector<int> SelectedRows::of(const QTableView *view)
{
    QVector<int> rows;
    if (!view->selectionModel()) {
        return rows;
    }
    std::vector<bool> taken(std::size_t(view->model()->rowCount()), false);
    const QItemSelection selection = view->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        if (!hasVisibleColumn(view, range)) {
            continue;
        }
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (!taken[std::size_t(row)]) {
                taken[std::size_t(row)] = true;
                rows.append(row);
            }
        }
    }
    return rows;
}

void SelectedRows::add(QTableView *view, const PagedTableModel *model, const QSet<qlonglong> &keys)
{
    QItemSelection selection;
    const int rows = keys.isEmpty() ? 0 : model->rowCount();
    const int lastColumn = model->columnCount() - 1;
    int first = -1;
    for (int row = 0; row <= rows; ++row) {
        const bool wanted = row < rows && keys.contains(model->key(row));
        if (wanted && first < 0) {
            first = row;
        } else if (!wanted && first >= 0) {
            selection.append(QItemSelectionRange(model->index(first, 0), model->index(row - 1, lastColumn)));
            first = -1;
        }
    }
    view->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}
