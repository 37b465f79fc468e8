#include "readsnapshot.h"

#include <QSqlQuery>

ReadSnapshot::ReadSnapshot(const QSqlDatabase &db)
    : m_db(db)
    , m_held(db.isOpen() && QSqlQuery(m_db).exec(QStringLiteral("SAVEPOINT read_snapshot")))
{ }

ReadSnapshot::~ReadSnapshot()
{
    if (m_held) {
        QSqlQuery(m_db).exec(QStringLiteral("RELEASE read_snapshot"));
    }
}
