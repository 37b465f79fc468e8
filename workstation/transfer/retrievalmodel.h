#pragma once

#include "retrieval.h"

#include <QAbstractTableModel>

/// The retrievals in their order, a row each. Rows stay where they are while retrievals go on. GUI thread.
class RetrievalModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TitleColumn, ArchiveColumn, StateColumn, ProgressColumn, NoticeColumn, ColumnCount };
    /// Of ProgressColumn: the share that is done, 0 to 1; invalid where nobody knows it yet.
    static constexpr int shareRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setRetrievals(const QVector<Retrieval> &retrievals);
    const Retrieval &retrieval(int row) const { return m_retrievals.at(row); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<Retrieval> m_retrievals;
};
