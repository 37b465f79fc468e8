#include "fieldconfiguration.h"

#include "maintenancetext.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

namespace {

QString quoted(const QString &name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

} // namespace

FieldConfiguration::FieldConfiguration(const QString &table)
    : m_userTable(table + QLatin1String("user"))
{
    const QSqlRecord record = QSqlDatabase::database().record(table);
    QSqlQuery query;
    query.exec(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(m_userTable)));
    const int nameColumn = query.record().indexOf(QStringLiteral("name"));
    const int defaultColumn = query.record().indexOf(QStringLiteral("dflt_value"));
    while (query.next() && m_columns.size() < record.count()) {
        m_columns.append(record.fieldName(m_columns.size()));
        m_userColumns.append(query.value(nameColumn).toString());
        m_defaults.append(query.value(defaultColumn).toInt());
    }
}

FieldConfiguration::Flags FieldConfiguration::flags() const
{
    Flags flags(m_columns.size(), 0);
    QSqlQuery query;
    query.exec(QStringLiteral("SELECT * FROM %1 LIMIT 1").arg(quoted(m_userTable)));
    if (query.next()) {
        for (int i = 0; i < flags.size(); ++i) {
            flags[i] = query.value(i).toInt();
        }
    }
    return flags;
}

bool FieldConfiguration::hasRow() const
{
    QSqlQuery query;
    return query.exec(QStringLiteral("SELECT 1 FROM %1 LIMIT 1").arg(quoted(m_userTable))) && query.next();
}

QString FieldConfiguration::write(const Flags &flags) const
{
    QStringList names;
    for (const QString &column : m_userColumns) {
        names.append(quoted(column));
    }
    const QString columns = names.join(QStringLiteral(", "));
    const QStringList places = QStringList(QVector<QString>(names.size(), QStringLiteral("?")).toList());
    const QString sql = hasRow()
        ? QStringLiteral("UPDATE %1 SET (%2) = (%3) WHERE rowid = (SELECT min(rowid) FROM %1)")
        : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)");
    QSqlQuery query;
    bool good = query.prepare(sql.arg(quoted(m_userTable), columns, places.join(QStringLiteral(", "))));
    for (const int flag : flags) {
        query.addBindValue(flag);
    }
    good = good && query.exec();
    return good ? QString() : MaintenanceText::refused(query.lastError());
}
