#pragma once

#include "sendjob.h"

#include <QAbstractTableModel>
#include <QCache>

#include <functional>

/// The objects of a job and what became of each. Reads them by pages as they come into sight, so that the log
/// of a hundred thousand costs what is looked at. GUI thread.
class SendLogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        FileColumn,
        StateColumn,
        ReasonColumn,
        AttemptsColumn,
        TimeColumn,
        InstanceColumn,
        ColumnCount
    };
    /// Reads so many objects from the given one on; fewer where there are no more.
    using Reader = std::function<QVector<SendObject>(int first, int count)>;

    explicit SendLogModel(QObject *parent = nullptr);

    /// Another log, with so many objects.
    void show(const Reader &reader, int count);
    /// The same log; what is in sight is read again. More objects are added behind, fewer begin anew.
    void refresh(int count);

    /// A row as a line, columns parted by tabs. Any thread, as JobText's functions.
    static QString lineOf(const SendObject &sent);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    SendObject object(int row) const;
    static QString text(const SendObject &sent, int column);

    Reader m_reader;
    int m_count = 0;
    mutable QCache<int, QVector<SendObject>> m_pages; ///< by number
};
