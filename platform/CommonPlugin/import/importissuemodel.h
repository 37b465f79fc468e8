#pragma once

#include "importreport.h"

#include <QAbstractTableModel>

/// The files that a report names, a row each: path, count that it went into, reason. Sentences are made when
/// a row is shown, so that a hundred thousand cost nothing.
class ImportIssueModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { PathColumn, VerdictColumn, ReasonColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setIssues(const QVector<ImportIssue> &issues);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<ImportIssue> m_issues;
};
