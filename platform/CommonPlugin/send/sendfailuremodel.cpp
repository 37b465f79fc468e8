#include "sendfailuremodel.h"

#include "plaintooltip.h"

#include <QDir>

void SendFailureModel::setRows(const QVector<Row> &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

int SendFailureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int SendFailureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SendFailureModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const QString shown = text(m_rows.at(index.row()), index.column());
    return role == Qt::ToolTipRole ? plainToolTip(shown) : shown;
}

QString SendFailureModel::text(const Row &row, int column)
{
    switch (column) {
    case FileColumn:
        return QDir::toNativeSeparators(row.failure.file);
    case DestinationColumn:
        return row.destination;
    default:
        return row.failure.reason;
    }
}

QVariant SendFailureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case FileColumn:
        return tr("File");
    case DestinationColumn:
        return tr("Destination");
    default:
        return tr("Reason");
    }
}
