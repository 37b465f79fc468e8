#pragma once

#include "imagebase_export.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariantList>

/**
 * A statement that is carried out often: prepared at its first use and kept, as preparing takes longer than
 * most of them run. For one thread, and not longer than the connection.
 */
class IMAGEBASE_EXPORT KeptStatement
{
public:
    KeptStatement(const QSqlDatabase &db, QString sql);

    /// @param values for its question marks, in their order
    /// @return false where the database refused
    bool exec(const QVariantList &values);
    bool next() { return m_query.next(); }
    QVariant value(int column) const { return m_query.value(column); }
    int rowsAffected() const { return m_query.numRowsAffected(); }
    QSqlError error() const { return m_query.lastError(); }
    /// Lets go of what it has read.
    void finish() { m_query.finish(); }

private:
    QSqlQuery m_query;
    QString m_sql;
    bool m_isPrepared = false;
};
