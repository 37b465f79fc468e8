#include "sendjobmodel.h"

#include "jobtext.h"
#include "plaintooltip.h"
#include "transfertext.h"

#include <QLocale>

#include <algorithm>

namespace {

QVariant shareOf(const SendJob &job)
{
    if (job.total <= 0 || job.unlisted > 0) {
        return job.isOver() ? QVariant(1.0) : QVariant();
    }
    return double(job.accepted + job.failed) / double(job.total);
}

} // namespace

SendJobModel::SendJobModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    m_time.start();
}

void SendJobModel::setJobs(const QVector<SendJob> &jobs)
{
    dropGone(jobs);
    for (const SendJob &job : jobs) {
        take(job);
    }
}

void SendJobModel::dropGone(const QVector<SendJob> &jobs)
{
    for (int row = m_jobs.size() - 1; row >= 0; --row) {
        const qint64 id = m_jobs[row].id;
        if (std::none_of(jobs.begin(), jobs.end(), [id](const SendJob &job) { return job.id == id; })) {
            beginRemoveRows({}, row, row);
            m_jobs.remove(row);
            endRemoveRows();
            m_rates.remove(id);
        }
    }
}

void SendJobModel::take(const SendJob &job)
{
    if (job.state != SendJobState::Paused && !job.isOver() && job.trouble.isNone()) {
        m_rates[job.id].add(m_time.elapsed(), job.accepted + job.failed);
    } else {
        m_rates.remove(job.id);
    }
    const int row = rowOf(job.id);
    if (row >= 0) {
        m_jobs[row] = job;
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    } else {
        beginInsertRows({}, 0, 0);
        m_jobs.prepend(job);
        endInsertRows();
    }
}

int SendJobModel::rowOf(qint64 id) const
{
    const auto found =
        std::find_if(m_jobs.begin(), m_jobs.end(), [id](const SendJob &job) { return job.id == id; });
    return found == m_jobs.end() ? -1 : int(found - m_jobs.begin());
}

int SendJobModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_jobs.size();
}

int SendJobModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SendJobModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const SendJob &job = m_jobs.at(index.row());
    if (role == shareRole && index.column() == ProgressColumn) {
        return shareOf(job);
    }
    if (role == Qt::ToolTipRole && index.column() == DestinationColumn) {
        return plainToolTip(tr("%1, at %2:%3", "AE title, at host:port")
                                .arg(JobText::destinationOf(job), job.node.host)
                                .arg(job.node.port));
    }
    if (role == Qt::ToolTipRole) {
        return plainToolTip(text(job, index.column()));
    }
    return role == Qt::DisplayRole ? text(job, index.column()) : QVariant();
}

QString SendJobModel::text(const SendJob &job, int column) const
{
    switch (column) {
    case DestinationColumn:
        return JobText::destinationOf(job);
    case SourceColumn:
        return JobText::sourceOf(job);
    case CreatedColumn:
        return JobText::timeOf(job.created);
    case StateColumn:
        return job.state == SendJobState::Ended && job.failed > 0
            ? tr("Finished with failures")
            : TransferText::ofState(JobText::stateOf(job.state));
    case ProgressColumn: {
        const QVariant share = shareOf(job);
        return share.isValid() ? tr("%1 %").arg(int(share.toDouble() * 100)) : QString();
    }
    case CountColumn:
        return countText(job);
    default:
        return JobText::noticeOf(job);
    }
}

QString SendJobModel::countText(const SendJob &job) const
{
    if (job.total == 0 && job.unlisted > 0) { // nobody knows yet what there is
        return {};
    }
    const QString counts = TransferText::ofCounts(job.accepted, job.total, job.failed);
    const ImportRate rate = m_rates.value(job.id);
    const QString speed = TransferText::ofRate(rate.filesPerSecond(), rate.millisecondsFor(job.left()));
    return speed.isEmpty() ? counts : counts + QStringLiteral(" – ") + speed;
}

QVariant SendJobModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case DestinationColumn:
        return tr("Destination");
    case SourceColumn:
        return tr("Whose images");
    case CreatedColumn:
        return tr("Asked for");
    case StateColumn:
        return tr("State");
    case ProgressColumn:
        return tr("Progress");
    case CountColumn:
        return tr("Sent");
    default:
        return tr("Notice");
    }
}
