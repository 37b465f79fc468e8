#pragma once

#include "patientmanager_export.h"

#include <QList>
#include <QVariant>
#include <QVector>

/**
 * A node of an editable tree: the values of its columns and its children, which it owns.
 *
 * A copy is member-wise: it has the same values and parent and refers to the very children of the original.
 * They stay the original's, so that such a copy deletes none, must not be asked for them after the original
 * is gone, and refuses to insert or remove anything. A copy of an item without children is an item like any
 * other. Knows nothing of models.
 */
class PATIENTMANAGER_EXPORT TreeItem
{
public:
    explicit TreeItem(const QVector<QVariant> &data, TreeItem *parent = nullptr);
    TreeItem(const TreeItem &other);
    TreeItem &operator=(const TreeItem &other);
    ~TreeItem();

    /// Null where there is none.
    TreeItem *child(int number) const;
    int childCount() const { return m_children.size(); }
    /// The place among the parent's children; 0 for the root.
    int childNumber() const;
    int columnCount() const { return m_data.size(); }
    QVariant data(int column) const { return m_data.value(column); }
    /// False where there is no such column.
    bool setData(int column, const QVariant &value);
    TreeItem *parent() const { return m_parent; }

    /// The changes answer false, and change nothing, where the range is not within the item.
    /// @param columns number of empty values of each new child
    bool insertChildren(int position, int count, int columns);
    bool removeChildren(int position, int count);
    /// Columns come and go in the item and in all below it.
    bool insertColumns(int position, int columns);
    bool removeColumns(int position, int columns);

private:
    void deleteChildren();

    QList<TreeItem *> m_children;
    QVector<QVariant> m_data;
    TreeItem *m_parent;
    bool m_ownsChildren = true;
};
