#pragma once

#include "attributes.h"
#include "inquiryfilter.h"
#include "nativestatement.h"
#include "recordrow.h"
#include "textpool.h"

/// Reads rows of one record table with one statement. Lives no longer than its connection, on its thread.
class RowReader
{
public:
    /// @param columns of the table, by place; key and parent key come in any case
    RowReader(const QSqlDatabase &db, RecordLevel level, const QVector<int> &columns, SqlCondition where);

    /// Reads all columns.
    RowReader(const QSqlDatabase &db, RecordLevel level, SqlCondition where);

    bool next();
    qint64 key() const { return m_statement.integer(0); }
    /// 0 for a patient.
    qint64 parentKey() const { return m_statement.integer(1); }
    RecordRow row();
    /// Valid once next() has answered false because of it.
    const QSqlError &error() const { return m_statement.error(); }

    /// "column = value" for one key.
    static SqlCondition keyIs(const QString &column, qint64 key);
    /// The column of a level's table that names its parent; empty for a patient.
    static QString parentColumn(RecordLevel level);

private:
    void bind();

    const SqlCondition m_where;
    QVector<QString> m_texts; ///< kept while they are bound
    NativeStatement m_statement;
    TextPool m_pool;
    RecordRow::Places m_places;
    int m_columns;
};
