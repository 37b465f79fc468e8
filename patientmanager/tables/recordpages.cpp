#include "recordpages.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <utility>

namespace {

QVector<QVariant> valuesOf(const QSqlQuery &query, int columns)
{
    QVector<QVariant> values;
    values.reserve(columns);
    for (int column = 0; column < columns; ++column) {
        values.append(query.value(column));
    }
    return values;
}

} // namespace

RecordPages::RecordPages()
    : m_pages(keptPages)
{ }

void RecordPages::clear()
{
    m_keys.clear();
    m_pages.clear();
}

void RecordPages::open(
    const QSqlDatabase &db, const QString &select, const QString &keyColumn, QVector<qlonglong> keys)
{
    m_db = db;
    m_select = select;
    m_keyColumn = keyColumn;
    m_keys = std::move(keys);
    m_pages.clear();
}

QVariant RecordPages::value(int row, int column)
{
    if (row < 0 || row >= m_keys.size()) {
        return {};
    }
    const int number = row / pageRows;
    if (!m_pages.contains(number)) {
        m_pages.insert(number, new Page(read(number)));
    }
    const Page *page = m_pages.object(number);
    return page ? page->value(row % pageRows).value(column) : QVariant();
}

RecordPages::Page RecordPages::read(int page) const
{
    const QVector<qlonglong> keys = m_keys.mid(page * pageRows, pageRows);
    Page rows(keys.size());
    if (!m_db.isOpen()) {
        return rows;
    }
    QHash<qlonglong, int> places;
    for (int i = 0; i < keys.size(); ++i) {
        places.insert(keys.at(i), i);
    }
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("%1 WHERE %2 IN (%3)").arg(m_select, m_keyColumn, listed(keys)));
    const int columns = query.record().count();
    while (query.next()) {
        const int place = places.value(query.value(0).toLongLong(), -1);
        if (place >= 0) {
            rows[place] = valuesOf(query, columns);
        }
    }
    return rows;
}

QHash<qlonglong, QVariant> RecordPages::readColumn(
    const QString &column, const QString &table, const QVector<qlonglong> &keys) const
{
    QHash<qlonglong, QVariant> values;
    if (keys.isEmpty() || !m_db.isOpen()) {
        return values;
    }
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT %1, %2 FROM %3 WHERE %1 IN (%4)")
                   .arg(m_keyColumn, column, table, listed(keys)));
    while (query.next()) {
        values.insert(query.value(0).toLongLong(), query.value(1));
    }
    return values;
}

QString RecordPages::listed(const QVector<qlonglong> &keys)
{
    QStringList texts;
    texts.reserve(keys.size());
    for (const qlonglong key : keys) {
        texts.append(QString::number(key));
    }
    return texts.join(QLatin1Char(','));
}
