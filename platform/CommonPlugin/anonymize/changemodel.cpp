#include "changemodel.h"

void ChangeModel::setChanges(const QVector<AttributeChange> &changes)
{
    beginResetModel();
    m_changes = changes;
    endResetModel();
}

int ChangeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_changes.size();
}

int ChangeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ChangeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case PlaceColumn:
        return tr("Tag");
    case NameColumn:
        return tr("Attribute");
    case BeforeColumn:
        return tr("Now");
    default:
        return tr("In the copy");
    }
}

QVariant ChangeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const AttributeChange &change = m_changes.at(index.row());
    const QString text = index.column() == PlaceColumn ? change.place
        : index.column() == NameColumn                 ? change.name
        : index.column() == BeforeColumn               ? before(change)
                                                       : after(change);
    return role == Qt::ToolTipRole ? text.toHtmlEscaped() : text;
}

QString ChangeModel::before(const AttributeChange &change)
{
    switch (change.kind) {
    case AttributeChange::Kind::Items:
        return tr("%n item(s)", nullptr, int(change.amount));
    case AttributeChange::Kind::Bytes:
        return tr("%n byte(s)", nullptr, int(change.amount));
    case AttributeChange::Kind::Text:
        break;
    }
    return change.before;
}

QString ChangeModel::after(const AttributeChange &change)
{
    return change.isKept         ? tr("stays")
        : change.isRemoved       ? tr("removed")
        : change.after.isEmpty() ? tr("empty")
                                 : change.after;
}
