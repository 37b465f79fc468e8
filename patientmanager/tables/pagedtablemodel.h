#pragma once

#include "columntraits.h"
#include "patientmanager_export.h"
#include "recordpages.h"

#include <QHash>
#include <QPair>
#include <QSqlTableModel>

#include <set>

/**
 * A QSqlTableModel for tables of any size whose first column is an integer primary key.
 *
 * select() reads the first rows and the keys of all, from one snapshot, and leaves no statement open: the
 * connection sees what others write and can write itself. rowCount() is the whole result at once, sorted by
 * the database with the key as the last criterion; rows further down are read when they are looked at. The
 * key of a row never changes until the next select(). Keys are read-only, rows can be edited and removed but
 * not inserted: records enter by an import. GUI thread.
 */
class PATIENTMANAGER_EXPORT PagedTableModel : public QSqlTableModel
{
    Q_OBJECT

public:
    explicit PagedTableModel(QObject *parent = nullptr, const QSqlDatabase &db = QSqlDatabase());

    /// Sets the filter and selects exactly once, whether or not the model was filled before.
    bool selectWhere(const QString &filter);

    /// Reads the values of one column again, where they are not edited; the rows stay the same, in their
    /// order. Rows beyond those held have all their values read when they are next looked at.
    void readColumn(int column);

    /// 0 outside the result.
    qlonglong key(int row) const;
    /// -1 where no row has the key.
    int rowOf(qlonglong key) const { return m_pages.keys().indexOf(key); }
    /// The keys of the rows in the order given; costs no statement however many there are.
    QList<qlonglong> keys(const QVector<int> &rows) const;

    void setTable(const QString &table) override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool insertRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    void clear() override;
    bool select() override;

    /// Qt fetches 256 rows of a result at once: one row fewer, and the statement has come to its end by then.
    static constexpr int firstRows = 255;

protected:
    QString orderByClause() const override;
    QString selectStatement() const override;
    bool updateRowInTable(int row, const QSqlRecord &values) override;

private:
    QString columnName(int column) const;
    QString rowsOfTable() const;
    bool readAllKeys(QVector<qlonglong> *keys);
    bool isRowDirty(int row) const;
    bool writeEditedRows();
    void takeValue(int row, int column, const QVariant &value);
    void forget();

    mutable RecordPages m_pages;
    QHash<QPair<int, int>, QVariant> m_later; // by row and column: of the base class's rows, read since
    QVector<qlonglong> m_firstKeys; // of the rows that the base class holds
    bool m_selectsByKeys = false; // while select() runs the base class's statement
    ColumnTraits m_columns;
    std::set<int> m_edited; // every row edited since the last select(), reverted ones too
    std::set<int> m_written; // by the submit under way
};
