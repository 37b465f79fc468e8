#pragma once

#include "patientmanager_export.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>

class QPatients;
class QPatientTreeItem;

/**
 * The patients, studies and series of a result as a read-only tree. All levels share one row of columns; a
 * row holds "" in those of other levels.
 *
 * Owns its items, borrows the records: the result must outlive the model, or the next setPatients(). GUI
 * thread.
 */
class PATIENTMANAGER_EXPORT QPatientTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// Without rows. @param headers texts of the header
    QPatientTreeModel(QObject *parent, const QStringList &headers);
    ~QPatientTreeModel() override;

    /// Puts a result in the place of the tree it has; items and indexes from before are no longer valid. No
    /// signal tells of it: for a model that no view shows yet.
    /// @param columns header texts and names of the records' properties; each "pk" begins the next level
    void setPatients(QPatients *patients, const QStringList &columns);
    /// Deletes the last patients with all below them, without a signal: for a model that no view shows any
    /// more.
    void dropLast(int patients);
    /// Null for an invalid index.
    QPatientTreeItem *treeItem(const QModelIndex &index) const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;

private:
    const QPatientTreeItem &itemOrRoot(const QModelIndex &index) const;

    std::unique_ptr<QPatientTreeItem> m_root;
};
