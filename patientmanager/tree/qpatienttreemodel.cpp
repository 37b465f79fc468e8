#include "qpatienttreemodel.h"

#include "qpatients.h"
#include "qpatienttreeitem.h"

QPatientTreeModel::QPatientTreeModel(QObject *parent, const QStringList &headers)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<QPatientTreeItem>(headers, nullptr, headers))
{ }

QPatientTreeModel::~QPatientTreeModel() = default;

void QPatientTreeModel::setPatients(QPatients *patients, const QStringList &columns)
{
    m_root = std::make_unique<QPatientTreeItem>(columns, nullptr, columns);
    const QList<QPatient *> all = patients->getAllPatient();
    for (const QPatient *patient : all) {
        m_root->appendChild(new QPatientTreeItem(patient, m_root.get(), columns));
    }
}

void QPatientTreeModel::dropLast(int patients)
{
    for (int i = 0; i < patients; ++i) {
        delete m_root->takeLast();
    }
}

QPatientTreeItem *QPatientTreeModel::treeItem(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<QPatientTreeItem *>(index.internalPointer()) : nullptr;
}

const QPatientTreeItem &QPatientTreeModel::itemOrRoot(const QModelIndex &index) const
{
    return index.isValid() ? *treeItem(index) : *m_root;
}

QVariant QPatientTreeModel::data(const QModelIndex &index, int role) const
{
    return index.isValid() && role == Qt::DisplayRole ? treeItem(index)->data(index.column()) : QVariant();
}

QVariant QPatientTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? m_root->data(section) : QVariant();
}

Qt::ItemFlags QPatientTreeModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? QAbstractItemModel::flags(index) : Qt::NoItemFlags;
}

QModelIndex QPatientTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    QPatientTreeItem *child = itemOrRoot(parent).child(row);
    return child ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex QPatientTreeModel::parent(const QModelIndex &index) const
{
    QPatientTreeItem *above = index.isValid() ? treeItem(index)->parentItem() : nullptr;
    return !above || above == m_root.get() ? QModelIndex() : createIndex(above->row(), 0, above);
}

int QPatientTreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : itemOrRoot(parent).childCount();
}

int QPatientTreeModel::columnCount(const QModelIndex &parent) const
{
    return itemOrRoot(parent).columnCount();
}
