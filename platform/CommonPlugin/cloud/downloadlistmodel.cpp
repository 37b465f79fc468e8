#include "downloadlistmodel.h"

#include "downloadtext.h"
#include "plaintooltip.h"

#include <algorithm>

namespace {

QVariant shareOf(const DownloadTally &tally)
{
    if (tally.state == DownloadState::Finished) {
        return 1.0;
    }
    return tally.expected > 0 ? QVariant(qMin(1.0, double(tally.fetched) / double(tally.expected)))
                              : QVariant();
}

QString textOf(const DownloadTally &tally, int column)
{
    switch (column) {
    case DownloadListModel::StudyColumn:
        return tally.label;
    case DownloadListModel::ProgressColumn:
        return DownloadText::ofCounts(tally);
    case DownloadListModel::SpeedColumn:
        return DownloadText::ofSpeed(tally);
    case DownloadListModel::TimeColumn:
        return DownloadText::ofTimeLeft(tally);
    default:
        return DownloadText::ofState(tally);
    }
}

} // namespace

void DownloadListModel::setTallies(const QVector<DownloadTally> &tallies)
{
    const bool isSameRows = tallies.size() == m_tallies.size()
        && std::equal(tallies.begin(), tallies.end(), m_tallies.begin(),
            [](const DownloadTally &one, const DownloadTally &other) {
                return one.studyUid == other.studyUid;
            });
    if (!isSameRows) {
        beginResetModel();
        m_tallies = tallies;
        endResetModel();
        return;
    }
    m_tallies = tallies;
    if (!m_tallies.isEmpty()) {
        emit dataChanged(index(0, 0), index(m_tallies.size() - 1, ColumnCount - 1));
    }
}

int DownloadListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_tallies.size();
}

int DownloadListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DownloadListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const DownloadTally &tally = m_tallies[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return textOf(tally, index.column());
    case Qt::ToolTipRole:
        return plainToolTip(textOf(tally, index.column()));
    case shareRole:
        return shareOf(tally);
    default:
        return {};
    }
}

QVariant DownloadListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const QStringList names{tr("Download"), tr("Images"), tr("Speed"), tr("Time left"), tr("State")};
    return names.value(section);
}
