#pragma once

#include "uploadtally.h"

#include <QAbstractTableModel>
#include <QMap>
#include <QVector>

/// The files that uploads could not store, a row each, upload after upload in the order of their numbers. GUI
/// thread.
class UploadFailureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FileColumn, PatientColumn, ReasonColumn, ColumnCount };

    /// What failed of one upload until now.
    struct Part
    {
        int task;
        QString patientName; ///< as DICOM writes it
        QVector<UploadFault> faults;
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Takes parts in the place of those of the same uploads; without faults an upload is removed.
    void setParts(const QVector<Part> &parts);
    /// The row of a file, looked for by its path; -1 where it is not listed.
    int rowOf(const QString &path) const;
    /// How many failed files of an upload are listed.
    int count(int task) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(int row, int column) const;

    QMap<int, Part> m_parts; ///< by upload
    int m_count = 0;
};
