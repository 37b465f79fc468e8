#include "sendfailuremodel.h"

#include "plaintooltip.h"

#include <QDir>

#include <numeric>

namespace {

constexpr int pageSize = 200;
constexpr int keptPages = 20;

int sum(const QVector<SendFailureModel::Part> &parts)
{
    return std::accumulate(parts.begin(), parts.end(), 0,
        [](int count, const SendFailureModel::Part &part) { return count + part.count; });
}

/// Whether only the last part has become longer.
bool isLonger(QVector<SendFailureModel::Part> before, const QVector<SendFailureModel::Part> &after)
{
    if (before.isEmpty() || before.size() != after.size()
        || before.constLast().count >= after.constLast().count) {
        return false;
    }
    before.last().count = after.constLast().count;
    before.last().isOver = after.constLast().isOver;
    return before == after;
}

} // namespace

SendFailureModel::SendFailureModel(Reader reader, QObject *parent)
    : QAbstractTableModel(parent)
    , m_reader(std::move(reader))
    , m_pages(keptPages)
{ }

void SendFailureModel::show(const QVector<Part> &parts)
{
    if (parts == m_parts) {
        return;
    }
    m_pages.clear();
    const int count = sum(parts);
    if (isLonger(m_parts, parts)) {
        beginInsertRows({}, m_count, count - 1);
        m_parts = parts;
        m_count = count;
        endInsertRows();
        return;
    }
    beginResetModel();
    m_parts = parts;
    m_count = count;
    endResetModel();
}

int SendFailureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

/// An empty one where it is gone meanwhile.
SendFailure SendFailureModel::failure(qint64 job, int number) const
{
    const QPair<qint64, int> page(job, number / pageSize);
    if (!m_pages.contains(page)) {
        m_pages.insert(page, new QVector<SendFailure>(m_reader(job, page.second * pageSize, pageSize)));
    }
    return m_pages.object(page)->value(number % pageSize);
}

SendFailureModel::Row SendFailureModel::row(int number) const
{
    for (const Part &part : m_parts) {
        if (number < part.count) {
            return {part.destination, failure(part.job, number)};
        }
        number -= part.count;
    }
    return {};
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
    const QString shown = text(row(index.row()), index.column());
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
