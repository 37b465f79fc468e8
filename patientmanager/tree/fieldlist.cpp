#include "fieldlist.h"

QVariant FieldList::data(const QModelIndex &index, int role) const
{
    if (role == Qt::ToolTipRole) {
        const auto caption = m_captions.constFind(index.data().toString());
        return caption == m_captions.constEnd() ? QVariant() : *caption;
    }
    return QStringListModel::data(index, role);
}
