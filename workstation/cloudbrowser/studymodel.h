#pragma once

#include "dicomjson.h"

#include <QAbstractTableModel>

/// Studies of a service as rows. GUI thread.
class StudyModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Id, Date, Modalities, Description, Images, ColumnCount };
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    void add(const QVector<DicomJson> &studies);
    QString uidAt(int row) const { return m_studies.value(row).text(DicomTag::studyUid); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString textOf(const DicomJson &study, int column) const;

    QVector<DicomJson> m_studies;
};
