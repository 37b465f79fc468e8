#pragma once

#include <QSet>

class PagedTableModel;
class QTableView;

/**
 * Where the user is in a table: the selected rows, the current cell and what stands at the top of the screen,
 * all by key. Taken before the rows are read again and put back afterwards; rows that are gone are left out.
 */
class ViewPlace
{
public:
    ViewPlace(QTableView *view, PagedTableModel *model);
    void restore() const;

private:
    int rowOf(qlonglong key) const;
    void restoreCurrentCell() const;
    void restoreScroll() const;

    QTableView *m_view;
    PagedTableModel *m_model;
    QSet<qlonglong> m_selected;
    qlonglong m_currentKey = 0;
    int m_currentColumn = -1;
    qlonglong m_topKey = 0; // 0 where the table is scrolled to its top: new rows may appear there
    int m_vertical = 0;
    int m_horizontal = 0;
};
