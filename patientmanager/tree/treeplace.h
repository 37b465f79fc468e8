#pragma once

#include <QPair>
#include <QSet>
#include <QStringList>
#include <QVector>

class PatientTreeView;
class QModelIndex;
class QPatientTreeItem;

/**
 * Where the user is in the patient tree: the open branches, the selected rows, the current cell, what stands
 * at the top of the screen, the order of the columns; all by record. Taken before another result is shown
 * and put back afterwards; records that are gone are left out.
 */
class TreePlace
{
public:
    explicit TreePlace(PatientTreeView *view);
    void restore() const;

private:
    /// Level and key of a record; a level of -1 for none.
    using Record = QPair<int, qint64>;

    static Record recordOf(const QPatientTreeItem *item);
    void noteOpenBranches(const QModelIndex &parent);
    void restoreOrder() const;
    QModelIndex restoreRows() const;
    void scrollBack(const QModelIndex &top) const;

    PatientTreeView *m_view;
    QStringList m_columns;
    QVector<int> m_order; ///< of the columns, from left to right
    QSet<Record> m_open;
    QSet<Record> m_selected;
    Record m_current{-1, 0};
    int m_currentColumn = 0;
    Record m_top{-1, 0}; ///< none where the tree is scrolled to its top: new rows may appear there
    int m_vertical;
    int m_horizontal;
};
