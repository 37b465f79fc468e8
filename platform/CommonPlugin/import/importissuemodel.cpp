#include "importissuemodel.h"

#include "importreporttext.h"

void ImportIssueModel::setIssues(const QVector<ImportIssue> &issues)
{
    beginResetModel();
    m_issues = issues;
    endResetModel();
}

int ImportIssueModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_issues.size();
}

int ImportIssueModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ImportIssueModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const ImportIssue &issue = m_issues.at(index.row());
    switch (index.column()) {
    case PathColumn:
        return issue.path;
    case VerdictColumn:
        return verdictText(issue.verdict);
    default:
        return reasonText(issue);
    }
}

QVariant ImportIssueModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case PathColumn:
        return tr("File");
    case VerdictColumn:
        return tr("Result");
    default:
        return tr("Reason");
    }
}
