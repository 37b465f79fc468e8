#include "keptstatement.h"

#include <utility>

KeptStatement::KeptStatement(const QSqlDatabase &db, QString sql)
    : m_query(db)
    , m_sql(std::move(sql))
{
    m_query.setForwardOnly(true);
}

bool KeptStatement::exec(const QVariantList &values)
{
    m_isPrepared = m_isPrepared || m_query.prepare(m_sql); // again where the index was locked
    if (!m_isPrepared) {
        return false;
    }
    for (int value = 0; value < values.size(); ++value) {
        m_query.bindValue(value, values[value]);
    }
    return m_query.exec();
}
