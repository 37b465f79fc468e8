#pragma once

#include "foundstudy.h"

#include <QAbstractTableModel>
#include <QVector>

/// Studies of a service as rows, the fields of FoundStudy as columns. GUI thread.
class StudyModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    void add(const QVector<DicomJson> &studies);
    QString uidAt(int row) const { return m_studies.value(row).uid; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<FoundStudy> m_studies;
};
