#include "sendlogmodel.h"

#include "jobtext.h"
#include "plaintooltip.h"

#include <QDir>
#include <QLocale>

namespace {

constexpr int pageSize = 200;
constexpr int keptPages = 20;

} // namespace

SendLogModel::SendLogModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_pages(keptPages)
{ }

void SendLogModel::show(const Reader &reader, int count)
{
    beginResetModel();
    m_reader = reader;
    m_count = count;
    m_pages.clear();
    endResetModel();
}

void SendLogModel::refresh(int count)
{
    m_pages.clear();
    if (count < m_count) {
        show(m_reader, count);
        return;
    }
    if (m_count > 0) {
        emit dataChanged(index(0, 0), index(m_count - 1, ColumnCount - 1));
    }
    if (count > m_count) {
        beginInsertRows({}, m_count, count - 1);
        m_count = count;
        endInsertRows();
    }
}

int SendLogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int SendLogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

/// An empty one where it is gone meanwhile.
SendObject SendLogModel::object(int row) const
{
    const int page = row / pageSize;
    if (!m_pages.contains(page)) {
        m_pages.insert(page, new QVector<SendObject>(m_reader(page * pageSize, pageSize)));
    }
    return m_pages.object(page)->value(row % pageSize);
}

QString SendLogModel::lineOf(const SendObject &sent)
{
    QString line;
    for (int column = 0; column < ColumnCount; ++column) {
        line += text(sent, column) + (column + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    }
    return line;
}

QVariant SendLogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const SendObject sent = object(index.row());
    if (sent.id == 0) {
        return {};
    }
    const QString shown = text(sent, index.column());
    return role == Qt::ToolTipRole ? plainToolTip(shown) : shown;
}

QString SendLogModel::text(const SendObject &sent, int column)
{
    switch (column) {
    case FileColumn:
        return QDir::toNativeSeparators(sent.path);
    case StateColumn:
        return JobText::stateOf(sent);
    case ReasonColumn:
        return JobText::reasonOf(sent);
    case AttemptsColumn:
        return QLocale().toString(sent.attempts);
    case TimeColumn:
        return JobText::timeOf(sent.changed);
    default:
        return sent.sopInstanceUid;
    }
}

QVariant SendLogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case FileColumn:
        return tr("File");
    case StateColumn:
        return tr("Result");
    case ReasonColumn:
        return tr("Reason");
    case AttemptsColumn:
        return tr("Attempts");
    case TimeColumn:
        return tr("Time");
    default:
        return tr("SOP instance UID");
    }
}
