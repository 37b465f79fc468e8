#include "rowreader.h"

#include "recordcolumns.h"

#include <numeric>

namespace {

/// Key and parent key stand before the columns asked for.
constexpr int firstColumn = 2;

QVector<int> allColumns(RecordLevel level)
{
    QVector<int> columns(recordColumns(level).size());
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

QString selectText(RecordLevel level, const QVector<int> &columns, const QString &where)
{
    const QString parent = RowReader::parentColumn(level);
    QString text = QStringLiteral("SELECT pk, ") + (parent.isEmpty() ? QStringLiteral("0") : parent);
    for (const int column : columns) {
        text += QStringLiteral(", \"%1\"").arg(recordColumns(level).at(column));
    }
    text += QStringLiteral(" FROM ") + QLatin1String(recordTableName(level));
    return where.isEmpty() ? text : text + QStringLiteral(" WHERE ") + where;
}

RecordRow::Places placesOf(RecordLevel level, const QVector<int> &columns)
{
    QVector<int> places(recordColumns(level).size(), -1);
    for (int place = 0; place < columns.size(); ++place) {
        places[columns.at(place)] = place;
    }
    return QSharedPointer<const QVector<int>>::create(places);
}

} // namespace

RowReader::RowReader(
    const QSqlDatabase &db, RecordLevel level, const QVector<int> &columns, SqlCondition where)
    : m_where(std::move(where))
    , m_statement(db, selectText(level, columns, m_where.text))
    , m_places(placesOf(level, columns))
    , m_columns(columns.size())
{
    bind();
}

RowReader::RowReader(const QSqlDatabase &db, RecordLevel level, SqlCondition where)
    : RowReader(db, level, allColumns(level), std::move(where))
{ }

void RowReader::bind()
{
    m_texts.reserve(m_where.values.size());
    for (int i = 0; i < m_where.values.size(); ++i) {
        const QVariant &value = m_where.values.at(i);
        if (value.type() == QVariant::Double) {
            m_statement.bind(i, value.toDouble());
        } else if (value.type() == QVariant::LongLong) {
            m_statement.bind(i, qint64(value.toLongLong()));
        } else {
            m_texts.append(value.toString());
            m_statement.bind(i, m_texts.constLast());
        }
    }
}

bool RowReader::next()
{
    return m_statement.step() == NativeStatement::Step::Row;
}

RecordRow RowReader::row()
{
    QVector<QVariant> values;
    values.reserve(m_columns);
    for (int column = 0; column < m_columns; ++column) {
        values.append(m_statement.value(firstColumn + column, &m_pool));
    }
    return {m_places, std::move(values)};
}

SqlCondition RowReader::keyIs(const QString &column, qint64 key)
{
    return {column + QStringLiteral(" = ?"), {qlonglong(key)}};
}

QString RowReader::parentColumn(RecordLevel level)
{
    return QLatin1String(recordParentColumn(level));
}
