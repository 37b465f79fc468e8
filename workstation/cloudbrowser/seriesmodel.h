#pragma once

#include "dicomjson.h"

#include <QAbstractListModel>
#include <QIcon>

/// The series of a study with their pictures, which come later. GUI thread.
class SeriesModel : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int side = 128; ///< of a picture

    using QAbstractListModel::QAbstractListModel;

    void clear();
    void add(const QVector<DicomJson> &series);
    QString uidAt(int row) const;
    void setPicture(const QString &seriesUid, const QImage &picture);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    struct Row
    {
        DicomJson series;
        QIcon picture;
    };
    QString textOf(const DicomJson &series) const;

    QVector<Row> m_rows;
};
