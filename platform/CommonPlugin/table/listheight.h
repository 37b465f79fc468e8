#pragma once

#include <QHeaderView>
#include <QTableView>
#include <QTreeView>

/// The least height at which a list shows its header and so many rows.
inline int heightOfRows(const QTreeView &list, int rows)
{
    constexpr int leading = 4; // of a row that is not there yet
    const int row = qMax(list.sizeHintForRow(0), list.fontMetrics().height() + leading);
    return list.header()->sizeHint().height() + rows * row + 2 * list.frameWidth();
}

inline int heightOfRows(const QTableView &list, int rows)
{
    return list.horizontalHeader()->sizeHint().height() + rows * list.verticalHeader()->defaultSectionSize()
        + 2 * list.frameWidth();
}
