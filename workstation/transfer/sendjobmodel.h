#pragma once

#include "importrate.h"
#include "sendjob.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QHash>

/// The send jobs, a row each, the latest first. Rows stay where they are while their jobs go on, so that a
/// selection does, too. GUI thread.
class SendJobModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        DestinationColumn,
        SourceColumn,
        StateColumn,
        ProgressColumn,
        CountColumn,
        NoticeColumn,
        CreatedColumn,
        ColumnCount
    };
    /// Of ProgressColumn: the share that is done, 0 to 1; invalid where nobody knows it yet.
    static constexpr int shareRole = Qt::UserRole;

    explicit SendJobModel(QObject *parent = nullptr);

    /// @param jobs by their age
    void setJobs(const QVector<SendJob> &jobs);
    const SendJob &job(int row) const { return m_jobs.at(row); }
    /// -1 where it is gone.
    int rowOf(qint64 id) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void dropGone(const QVector<SendJob> &jobs);
    void take(const SendJob &job);
    QString text(const SendJob &job, int column) const;
    QString countText(const SendJob &job) const;

    QVector<SendJob> m_jobs;
    QHash<qint64, ImportRate> m_rates; ///< of those that run
    QElapsedTimer m_time;
};
