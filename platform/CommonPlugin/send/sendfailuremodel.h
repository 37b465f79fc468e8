#pragma once

#include "sentjob.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QPair>
#include <QVector>

#include <functional>

/// The objects that destinations did not take, a row each, job after job. Reads them by pages as they come
/// into sight. GUI thread.
class SendFailureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FileColumn, DestinationColumn, ReasonColumn, ColumnCount };

    /// What failed of one job.
    struct Part
    {
        qint64 job;
        QString destination;
        int count;
        bool isOver; ///< what failed stays as it is

        bool operator==(const Part &other) const
        {
            return job == other.job && destination == other.destination && count == other.count
                && isOver == other.isOver;
        }
    };
    /// Reads so many failures of a job from the given one on; fewer where there are no more.
    using Reader = std::function<QVector<SendFailure>(qint64 job, int first, int count)>;

    explicit SendFailureModel(Reader reader, QObject *parent = nullptr);

    /// Rows keep their places where there are only more behind.
    void show(const QVector<Part> &parts);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QString destination;
        SendFailure failure;
    };
    Row row(int number) const;
    SendFailure failure(qint64 job, int number) const;
    static QString text(const Row &row, int column);

    const Reader m_reader;
    QVector<Part> m_parts;
    int m_count = 0;
    mutable QCache<QPair<qint64, int>, QVector<SendFailure>> m_pages; ///< by job and number
};
