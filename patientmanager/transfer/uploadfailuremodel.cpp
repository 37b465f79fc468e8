#include "uploadfailuremodel.h"

#include "personname.h"
#include "plaintooltip.h"
#include "uploadtext.h"

#include <QDir>

/// All in one: each reset makes the view look at every row.
void UploadFailureModel::setParts(const QVector<Part> &parts)
{
    beginResetModel();
    for (const Part &part : parts) {
        m_parts.remove(part.task);
        if (!part.faults.isEmpty()) {
            m_parts.insert(part.task, part);
        }
    }
    m_count = 0;
    for (const Part &part : qAsConst(m_parts)) {
        m_count += part.faults.size();
    }
    endResetModel();
}

int UploadFailureModel::rowOf(const QString &path) const
{
    int row = 0;
    for (const Part &part : m_parts) {
        for (const UploadFault &fault : part.faults) {
            if (fault.path == path) {
                return row;
            }
            ++row;
        }
    }
    return -1;
}

int UploadFailureModel::count(int task) const
{
    const auto part = m_parts.constFind(task);
    return part == m_parts.constEnd() ? 0 : part->faults.size();
}

int UploadFailureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int UploadFailureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant UploadFailureModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const QString shown = text(index.row(), index.column());
    return role == Qt::ToolTipRole ? plainToolTip(shown) : shown;
}

QString UploadFailureModel::text(int row, int column) const
{
    for (const Part &part : m_parts) {
        if (row < part.faults.size()) {
            const UploadFault &fault = part.faults.at(row);
            return column == FileColumn   ? QDir::toNativeSeparators(fault.path)
                : column == PatientColumn ? personNameForDisplay(part.patientName)
                                          : UploadText::of(fault);
        }
        row -= part.faults.size();
    }
    return {};
}

QVariant UploadFailureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == FileColumn ? tr("File") : section == PatientColumn ? tr("Patient") : tr("Reason");
}
