#pragma once

#include "cloudclientplugin_export.h"
#include "uploadtally.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>
#include <QVector>

/**
 * The rows of the upload window: texts under the heads, and behind them what a tally tells: progress, rate,
 * time left and state. It makes no sentences: those columns have raw values under RawRole and no text.
 */
class CLOUDCLIENTPLUGIN_EXPORT UploadFilesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum TallyColumn { Progress, Rate, TimeLeft, State, TallyColumns };
    enum Role {
        RawRole =
            Qt::UserRole, ///< of a tally column: percent, bytes a second, seconds (-1: unknown), State as int
        TaskRole, ///< of a row: its first column, as a number
        FailedRole, ///< of a row: how many files have failed
        TallyRole, ///< of a row: its UploadTally
    };

    explicit UploadFilesModel(QStringList heads, QObject *parent = nullptr);

    void setHeads(const QStringList &heads);
    /// The titles of the columns behind the heads, in the order of TallyColumn.
    void setTallyHeads(const QStringList &heads);
    /// Where a column of the tally stands.
    int columnOf(TallyColumn column) const { return m_heads.size() + column; }

    /// A row of its own, with the series that were added since the last one.
    void addRow(const QStringList &texts);
    /// New texts for the row with the same first column; without one nothing happens.
    void updateRow(const QStringList &texts);
    /// The series of the row that is added next.
    void addSeriesUIDList(const QStringList &uids);
    /// The series of each row; what waits for its row comes last.
    QVector<QStringList> getSeriesUIDData() const;
    void removeTask(int taskNumber);
    void setTally(int taskNumber, const UploadTally &tally);
    /// The row of a task; -1 where there is none.
    int rowOf(int taskNumber) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QStringList texts;
        QStringList series;
        UploadTally tally;
    };

    static QVariant raw(const UploadTally &tally, int column);

    QStringList m_heads;
    QStringList m_tallyHeads;
    QVector<Row> m_rows;
    QStringList m_pendingSeries;
    bool m_hasPendingSeries = false;
};
