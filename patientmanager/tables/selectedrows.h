#pragma once

#include <QVector>

class QTableView;
template <typename T>
class QSet;
class PagedTableModel;

/// Selections of whole rows, without an index object for each cell: a table may have a million rows.
namespace SelectedRows {

/// The distinct rows of the view's selection, in the order of its selected indexes.
QVector<int> of(const QTableView *view);
/// Adds the rows with these keys to the selection of the view, whose model is given.
void add(QTableView *view, const PagedTableModel *model, const QSet<qlonglong> &keys);

} // namespace SelectedRows
