#pragma once

#include "attributechange.h"

#include <QAbstractTableModel>
#include <QVector>

/// What becomes of the attributes of one image, a row each.
class ChangeModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { PlaceColumn, NameColumn, BeforeColumn, AfterColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setChanges(const QVector<AttributeChange> &changes);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    static QString before(const AttributeChange &change);
    static QString after(const AttributeChange &change);

    QVector<AttributeChange> m_changes;
};
