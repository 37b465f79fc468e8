#include "uploadrows.h"

#include "plaintooltip.h"
#include "uploadtext.h"

QVariant UploadRows::data(const QModelIndex &index, int role) const
{
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole || role == Qt::AccessibleTextRole;
    if (!isText || !index.isValid()) {
        return UploadFilesModel::data(index, role);
    }
    const int column = index.column() - columnOf(Progress);
    if (column < 0) {
        const QVariant shown = UploadFilesModel::data(index, Qt::DisplayRole);
        return role == Qt::ToolTipRole ? plainToolTip(shown.toString()) : shown;
    }
    const QString shown = text(tally(index.row()), column);
    return role == Qt::ToolTipRole ? plainToolTip(shown) : shown;
}

UploadTally UploadRows::tally(int row) const
{
    return UploadFilesModel::data(index(row, 0), TallyRole).value<UploadTally>();
}

QString UploadRows::text(const UploadTally &tally, int column)
{
    switch (column) {
    case Progress:
        return UploadText::ofProgress(tally);
    case Rate:
        return UploadText::ofRate(tally);
    case TimeLeft:
        return UploadText::ofTimeLeft(tally);
    case State:
        return UploadText::ofState(tally);
    default:
        return {};
    }
}
