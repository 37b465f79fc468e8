#include "obsoletefiles.h"

#include <QFile>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

bool ObsoleteFiles::note(const QString &filePath)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("INSERT OR IGNORE INTO obsoletefile (FilePath) VALUES (?)"));
    query.addBindValue(filePath);
    const bool good = query.exec();
    if (!good) {
        m_error = query.lastError();
    }
    return good;
}

bool ObsoleteFiles::contains(const QString &filePath) const
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT 1 FROM obsoletefile WHERE FilePath = ?"));
    query.addBindValue(filePath);
    // In doubt the file stays.
    return !query.exec() || query.next();
}

void ObsoleteFiles::remove()
{
    QStringList done;
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT FilePath FROM obsoletefile"));
    while (query.next()) {
        const QString path = query.value(0).toString();
        if (QFile::remove(path) || !QFile::exists(path)) {
            done.append(path);
        }
    }
    query.finish();
    query.prepare(QStringLiteral("DELETE FROM obsoletefile WHERE FilePath = ?"));
    for (const QString &path : done) {
        query.bindValue(0, path);
        query.exec();
    }
}
