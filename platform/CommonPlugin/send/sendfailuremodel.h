#pragma once

#include "sentjob.h"

#include <QAbstractTableModel>

/// The objects that destinations did not take, a row each.
class SendFailureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FileColumn, DestinationColumn, ReasonColumn, ColumnCount };

    struct Row
    {
        QString destination;
        SendFailure failure;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(const QVector<Row> &rows);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString text(const Row &row, int column);

    QVector<Row> m_rows;
};
