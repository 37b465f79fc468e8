#include "treemodel.h"

#include "treeitem.h"

#include <QStack>
#include <QStringList>

namespace {

QVector<QVariant> valuesOf(const QStringList &texts)
{
    QVector<QVariant> values;
    for (const QString &text : texts) {
        values.append(text);
    }
    return values;
}

int indentationOf(const QString &line)
{
    int blanks = 0;
    while (blanks < line.size() && line.at(blanks) == QLatin1Char(' ')) {
        ++blanks;
    }
    return blanks;
}

void appendRow(TreeItem *parent, int columns, const QStringList &values)
{
    parent->insertChildren(parent->childCount(), 1, columns);
    TreeItem *row = parent->child(parent->childCount() - 1);
    for (int column = 0; column < values.size(); ++column) {
        row->setData(column, values.at(column));
    }
}

} // namespace

TreeModel::TreeModel(const QStringList &headers, const QString &data, QObject *parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<TreeItem>(valuesOf(headers)))
{
    setupModelData(data.split(QLatin1Char('\n')), m_root.get());
}

TreeModel::~TreeModel() = default;

void TreeModel::setupModelData(const QStringList &lines, TreeItem *parent)
{
    QStack<TreeItem *> parents;
    QStack<int> indentations;
    parents.push(parent);
    indentations.push(0);
    for (const QString &line : lines) {
        const int position = indentationOf(line);
        const QString text = line.mid(position).trimmed();
        if (text.isEmpty()) {
            continue;
        }
        const int siblings = parents.top()->childCount();
        if (position > indentations.top() && siblings > 0) {
            parents.push(parents.top()->child(siblings - 1));
            indentations.push(position);
        }
        while (position < indentations.top()) {
            parents.pop();
            indentations.pop();
        }
        appendRow(parents.top(), m_root->columnCount(), text.split(QLatin1Char('\t'), Qt::SkipEmptyParts));
    }
}

TreeItem *TreeModel::getItem(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<TreeItem *>(index.internalPointer()) : m_root.get();
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    const bool isValue = role == Qt::DisplayRole || role == Qt::EditRole;
    return index.isValid() && isValue ? getItem(index)->data(index.column()) : QVariant();
}

Qt::ItemFlags TreeModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? QAbstractItemModel::flags(index) | Qt::ItemIsEditable : Qt::NoItemFlags;
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? m_root->data(section) : QVariant();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column, getItem(parent)->child(row))
                                         : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex &index) const
{
    TreeItem *item = index.isValid() ? getItem(index)->parent() : nullptr;
    return item && item != m_root.get() ? createIndex(item->childNumber(), 0, item) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : getItem(parent)->childCount();
}

int TreeModel::columnCount(const QModelIndex &) const
{
    return m_root->columnCount();
}

bool TreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || !getItem(index)->setData(index.column(), value)) {
        return false;
    }
    emit dataChanged(index, index);
    return true;
}

bool TreeModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (role != Qt::EditRole || orientation != Qt::Horizontal || !m_root->setData(section, value)) {
        return false;
    }
    emit headerDataChanged(orientation, section, section);
    return true;
}

bool TreeModel::insertRows(int position, int rows, const QModelIndex &parent)
{
    if (parent.column() > 0 || position < 0 || position > rowCount(parent) || rows < 1) {
        return false;
    }
    beginInsertRows(parent, position, position + rows - 1);
    const bool done = getItem(parent)->insertChildren(position, rows, m_root->columnCount());
    endInsertRows();
    return done;
}

bool TreeModel::removeRows(int position, int rows, const QModelIndex &parent)
{
    if (position < 0 || rows < 1 || position > rowCount(parent) - rows) {
        return false;
    }
    beginRemoveRows(parent, position, position + rows - 1);
    const bool done = getItem(parent)->removeChildren(position, rows);
    endRemoveRows();
    return done;
}

bool TreeModel::insertColumns(int position, int columns, const QModelIndex &parent)
{
    if (position < 0 || position > columnCount() || columns < 1) {
        return false;
    }
    beginInsertColumns(parent, position, position + columns - 1);
    const bool done = m_root->insertColumns(position, columns);
    moveColumnsElsewhere(position, columns, parent);
    endInsertColumns();
    return done;
}

bool TreeModel::removeColumns(int position, int columns, const QModelIndex &parent)
{
    if (position < 0 || columns < 1 || position > columnCount() - columns) {
        return false;
    }
    beginRemoveColumns(parent, position, position + columns - 1);
    const bool done = m_root->removeColumns(position, columns);
    moveColumnsElsewhere(position, -columns, parent);
    endRemoveColumns();
    if (m_root->columnCount() == 0) {
        removeRows(0, rowCount());
    }
    return done;
}

/// The notifications name one parent, while the columns change below all: indexes that others hold must
/// follow.
/// @param columns how many came, negative where they went
void TreeModel::moveColumnsElsewhere(int position, int columns, const QModelIndex &parent)
{
    QModelIndexList from;
    QModelIndexList to;
    for (const QModelIndex &index : persistentIndexList()) {
        if (index.column() >= position && index.parent() != parent) {
            const int column = index.column() + columns;
            from.append(index);
            to.append(column < position ? QModelIndex()
                                        : createIndex(index.row(), column, index.internalPointer()));
        }
    }
    changePersistentIndexList(from, to);
}
