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
    const UploadTally tally = this->tally(index.row());
    return role == Qt::ToolTipRole ? toolTip(tally, column) : text(tally, column);
}

UploadTally UploadRows::tally(int row) const
{
    return UploadFilesModel::data(index(row, 0), TallyRole).value<UploadTally>();
}

QString UploadRows::text(const UploadTally &tally, int column)
{
    switch (column) {
    case Progress:
        return tr("%1 %", "what part of an upload is stored").arg(UploadText::percentOf(tally));
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

QString UploadRows::toolTip(const UploadTally &tally, int column)
{
    return plainToolTip(column == Progress ? UploadText::ofProgress(tally) : text(tally, column));
}
