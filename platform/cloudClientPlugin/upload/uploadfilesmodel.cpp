#include "uploadfilesmodel.h"

namespace {

constexpr int wholePercent = 100;

/// Of what the service has: what has failed is no progress.
int percentOf(const UploadTally &tally)
{
    if (tally.bytesAll > 0) {
        return static_cast<int>(wholePercent * tally.bytesDone / tally.bytesAll);
    }
    return tally.all > 0 ? static_cast<int>(qint64(wholePercent) * tally.succeeded / tally.all) : 0;
}

} // namespace

UploadFilesModel::UploadFilesModel(QStringList heads, QObject *parent)
    : QAbstractTableModel(parent)
    , m_heads(std::move(heads))
{ }

void UploadFilesModel::setHeads(const QStringList &heads)
{
    beginResetModel();
    m_heads = heads;
    endResetModel();
}

void UploadFilesModel::setTallyHeads(const QStringList &heads)
{
    m_tallyHeads = heads;
    emit headerDataChanged(Qt::Horizontal, m_heads.size(), columnCount() - 1);
}

void UploadFilesModel::addRow(const QStringList &texts)
{
    beginInsertRows({}, m_rows.size(), m_rows.size());
    m_rows.append({texts, m_pendingSeries, {}});
    m_pendingSeries.clear();
    m_hasPendingSeries = false;
    endInsertRows();
}

void UploadFilesModel::updateRow(const QStringList &texts)
{
    const QString key = texts.value(0);
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].texts.value(0) == key) {
            m_rows[row].texts = texts;
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
            return;
        }
    }
}

void UploadFilesModel::addSeriesUIDList(const QStringList &uids)
{
    m_pendingSeries = uids;
    m_hasPendingSeries = true;
}

QVector<QStringList> UploadFilesModel::getSeriesUIDData() const
{
    QVector<QStringList> all;
    for (const Row &row : m_rows) {
        all.append(row.series);
    }
    if (m_hasPendingSeries) {
        all.append(m_pendingSeries);
    }
    return all;
}

void UploadFilesModel::removeTask(int taskNumber)
{
    const int row = rowOf(taskNumber);
    if (row >= 0) {
        beginRemoveRows({}, row, row);
        m_rows.remove(row);
        endRemoveRows();
    }
}

int UploadFilesModel::rowOf(int taskNumber) const
{
    const QString key = QString::number(taskNumber);
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].texts.value(0) == key) {
            return row;
        }
    }
    return -1;
}

void UploadFilesModel::setTally(int taskNumber, const UploadTally &tally)
{
    const int row = rowOf(taskNumber);
    if (row >= 0) {
        m_rows[row].tally = tally;
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    }
}

int UploadFilesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int UploadFilesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_heads.size() + TallyColumns;
}

QVariant UploadFilesModel::raw(const UploadTally &tally, int column)
{
    switch (column) {
    case Progress:
        return percentOf(tally);
    case Rate:
        return tally.bytesPerSecond;
    case TimeLeft:
        return tally.secondsLeft;
    case State:
        return static_cast<int>(tally.state);
    default:
        return {};
    }
}

QVariant UploadFilesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() < m_heads.size() ? row.texts.value(index.column()) : QVariant();
    case RawRole:
        return raw(row.tally, index.column() - m_heads.size());
    case TaskRole:
        return row.texts.value(0).toInt();
    case FailedRole:
        return row.tally.failed;
    case TallyRole:
        return QVariant::fromValue(row.tally);
    default:
        return {};
    }
}

QVariant UploadFilesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    return section < m_heads.size() ? m_heads.value(section) : m_tallyHeads.value(section - m_heads.size());
}
