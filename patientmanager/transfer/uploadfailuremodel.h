#pragma once

#include "uploadtally.h"

#include <QAbstractTableModel>
#include <QVector>

/// The files that uploads could not store, a row each, upload after upload in the order of their numbers. GUI
/// thread.
class UploadFailureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FileColumn, PatientColumn, ReasonColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// What failed of one upload until now, in the place of what was told before; nothing removes it.
    void setFaults(int task, const QString &patientName, const QVector<UploadFault> &faults);
    /// The row of a file, looked for by its path; -1 where it is not listed.
    int rowOf(const QString &path) const;
    /// How many failed files of an upload are listed.
    int count(int task) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Part
    {
        int task;
        QString patientName;
        QVector<UploadFault> faults;
    };
    QString text(int row, int column) const;

    QVector<Part> m_parts;
    int m_count = 0;
};
