#pragma once

#include "patientmanager_export.h"

#include <QAbstractItemModel>

#include <memory>

class TreeItem;

/**
 * An editable tree of items with the same columns, first read from an indented text.
 *
 * A line of the text is a row, its columns stand apart by tabs; a line that begins with more blanks than the
 * row above is a child of that row. For hosts; no form of the library uses it. GUI thread.
 */
class PATIENTMANAGER_EXPORT TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    TreeModel(const QStringList &headers, const QString &data, QObject *parent = nullptr);
    ~TreeModel() override;

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    /// Rows hang below the first column.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;

    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    bool setHeaderData(
        int section, Qt::Orientation orientation, const QVariant &value, int role = Qt::EditRole) override;
    bool insertRows(int position, int rows, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int position, int rows, const QModelIndex &parent = QModelIndex()) override;
    /// Columns come and go in the whole tree. With the last one all rows go.
    bool insertColumns(int position, int columns, const QModelIndex &parent = QModelIndex()) override;
    bool removeColumns(int position, int columns, const QModelIndex &parent = QModelIndex()) override;

    /// The item of a valid index, else the root. It stays the model's.
    TreeItem *getItem(const QModelIndex &index) const;

private:
    void setupModelData(const QStringList &lines, TreeItem *parent);
    void moveColumnsElsewhere(int position, int columns, const QModelIndex &parent);

    std::unique_ptr<TreeItem> m_root;
};
