#pragma once

#include <QCache>
#include <QHash>
#include <QSqlDatabase>
#include <QVariant>
#include <QVector>

/**
 * The rows of one result of a record table: the key of every row, and the values of the rows looked at last.
 *
 * The keys stand in the order of the result and never change while it is shown; values are read by key, a
 * page of rows at a time, and only a bounded number of pages is kept. A row that has been deleted meanwhile
 * keeps its place and reads as empty. No statement stays open between two calls. Belongs to a model, on the
 * model's thread.
 */
class RecordPages
{
public:
    RecordPages();

    void clear();
    /// Values are read again when they are next asked for.
    void dropValues() { m_pages.clear(); }
    /// Starts a result: `select` reads whole rows and has no WHERE yet, `keyColumn` is its first column.
    void open(
        const QSqlDatabase &db, const QString &select, const QString &keyColumn, QVector<qlonglong> keys);

    const QVector<qlonglong> &keys() const { return m_keys; }
    /// The values of one column now, by key; rows that are gone are left out.
    QHash<qlonglong, QVariant> readColumn(
        const QString &column, const QString &table, const QVector<qlonglong> &keys) const;
    /// Keys as a list in SQL.
    static QString listed(const QVector<qlonglong> &keys);
    /// Invalid outside the result, and where the row cannot be read any more.
    QVariant value(int row, int column);

    static constexpr int pageRows = 128;
    static constexpr int keptPages = 32;

private:
    using Page = QVector<QVector<QVariant>>;
    Page read(int page) const;

    QSqlDatabase m_db;
    QString m_select;
    QString m_keyColumn;
    QVector<qlonglong> m_keys;
    QCache<int, Page> m_pages;
};
