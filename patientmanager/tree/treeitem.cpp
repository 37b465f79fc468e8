#include "treeitem.h"

#include <QtAlgorithms>

namespace {

bool holds(int size, int position, int count)
{
    return position >= 0 && count >= 0 && position <= size - count;
}

} // namespace

TreeItem::TreeItem(const QVector<QVariant> &data, TreeItem *parent)
    : m_data(data)
    , m_parent(parent)
{ }

TreeItem::TreeItem(const TreeItem &other)
    : m_children(other.m_children)
    , m_data(other.m_data)
    , m_parent(other.m_parent)
    , m_ownsChildren(other.m_children.isEmpty())
{ }

TreeItem &TreeItem::operator=(const TreeItem &other)
{
    if (this != &other) {
        deleteChildren();
        m_children = other.m_children;
        m_data = other.m_data;
        m_parent = other.m_parent;
        m_ownsChildren = m_children.isEmpty();
    }
    return *this;
}

TreeItem::~TreeItem()
{
    deleteChildren();
}

void TreeItem::deleteChildren()
{
    if (m_ownsChildren) {
        qDeleteAll(m_children);
    }
    m_children.clear();
}

TreeItem *TreeItem::child(int number) const
{
    return m_children.value(number);
}

int TreeItem::childNumber() const
{
    return m_parent ? m_parent->m_children.indexOf(const_cast<TreeItem *>(this)) : 0;
}

bool TreeItem::setData(int column, const QVariant &value)
{
    if (column < 0 || column >= m_data.size()) {
        return false;
    }
    m_data[column] = value;
    return true;
}

bool TreeItem::insertChildren(int position, int count, int columns)
{
    if (!m_ownsChildren || count < 0 || !holds(m_children.size(), position, 0)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        m_children.insert(position, new TreeItem(QVector<QVariant>(columns), this));
    }
    return true;
}

bool TreeItem::removeChildren(int position, int count)
{
    if (!m_ownsChildren || !holds(m_children.size(), position, count)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        delete m_children.takeAt(position);
    }
    return true;
}

bool TreeItem::insertColumns(int position, int columns)
{
    if (!m_ownsChildren || columns < 0 || !holds(m_data.size(), position, 0)) {
        return false;
    }
    m_data.insert(position, columns, QVariant());
    for (TreeItem *child : qAsConst(m_children)) {
        child->insertColumns(position, columns);
    }
    return true;
}

bool TreeItem::removeColumns(int position, int columns)
{
    if (!m_ownsChildren || !holds(m_data.size(), position, columns)) {
        return false;
    }
    m_data.remove(position, columns);
    for (TreeItem *child : qAsConst(m_children)) {
        child->removeColumns(position, columns);
    }
    return true;
}
