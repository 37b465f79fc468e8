#include "retrievalmodel.h"

#include "archivetext.h"
#include "plaintooltip.h"

#include <algorithm>

namespace {

QVariant shareOf(const Retrieval &retrieval)
{
    if (retrieval.isGood()) {
        return 1.0;
    }
    const RetrieveProgress &now = retrieval.result.progress;
    const int done = now.completed + now.warned + now.failed;
    const int total = now.remaining >= 0 ? done + now.remaining : retrieval.expected;
    return total > 0 ? QVariant(qMin(1.0, double(done) / total)) : QVariant();
}

QString textOf(const Retrieval &retrieval, int column)
{
    switch (column) {
    case RetrievalModel::TitleColumn:
        return retrieval.title;
    case RetrievalModel::ArchiveColumn:
        return retrieval.archive.name;
    case RetrievalModel::StateColumn:
        return ArchiveText::stateOf(retrieval);
    case RetrievalModel::ProgressColumn:
        return ArchiveText::countOf(retrieval);
    default:
        return ArchiveText::noticeOf(retrieval);
    }
}

} // namespace

void RetrievalModel::setRetrievals(const QVector<Retrieval> &retrievals)
{
    const auto isKept = [&retrievals](const Retrieval &old) {
        return std::any_of(
            retrievals.begin(), retrievals.end(), [&old](const Retrieval &now) { return now.id == old.id; });
    };
    for (int row = m_retrievals.size() - 1; row >= 0; --row) {
        if (!isKept(m_retrievals[row])) {
            beginRemoveRows({}, row, row);
            m_retrievals.remove(row);
            endRemoveRows();
        }
    }
    if (retrievals.size() > m_retrievals.size()) { // new ones come at the end
        beginInsertRows({}, m_retrievals.size(), retrievals.size() - 1);
        m_retrievals = retrievals;
        endInsertRows();
    }
    m_retrievals = retrievals;
    if (!m_retrievals.isEmpty()) {
        emit dataChanged(index(0, 0), index(m_retrievals.size() - 1, ColumnCount - 1));
    }
}

int RetrievalModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_retrievals.size();
}

int RetrievalModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RetrievalModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Retrieval &retrieval = m_retrievals.at(index.row());
    if (role == shareRole && index.column() == ProgressColumn) {
        return shareOf(retrieval);
    }
    if (role == Qt::ToolTipRole) { // whatever a patient is called
        return plainToolTip(textOf(retrieval, index.column()));
    }
    return role == Qt::DisplayRole ? textOf(retrieval, index.column()) : QVariant();
}

QVariant RetrievalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const QStringList names{tr("What"), tr("Archive"), tr("State"), tr("Progress"), tr("Notice")};
    return names.value(section);
}
