#pragma once

#include "downloadtally.h"

#include <QAbstractTableModel>

/// The downloads of an index, one a row. GUI thread.
class DownloadListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { StudyColumn, ProgressColumn, SpeedColumn, TimeColumn, StateColumn, ColumnCount };
    static constexpr int shareRole = Qt::UserRole; ///< 0 to 1; invalid where nobody knows

    using QAbstractTableModel::QAbstractTableModel;

    void setTallies(const QVector<DownloadTally> &tallies);
    const DownloadTally &at(int row) const { return m_tallies[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<DownloadTally> m_tallies;
};
