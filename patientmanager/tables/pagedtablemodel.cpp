#include "pagedtablemodel.h"

#include "keyreader.h"
#include "readsnapshot.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>

#include <utility>

namespace {

constexpr int keyColumn = 0;

} // namespace

PagedTableModel::PagedTableModel(QObject *parent, const QSqlDatabase &db)
    : QSqlTableModel(parent, db)
{ }

bool PagedTableModel::selectWhere(const QString &filter)
{
    const bool filled = query().isActive();
    setFilter(filter);
    return filled ? !lastError().isValid() : select();
}

qlonglong PagedTableModel::key(int row) const
{
    return m_pages.keys().value(row, 0);
}

QList<qlonglong> PagedTableModel::keys(const QVector<int> &rows) const
{
    QList<qlonglong> result;
    result.reserve(rows.size());
    for (const int row : rows) {
        result.append(key(row));
    }
    return result;
}

void PagedTableModel::setTable(const QString &table)
{
    QSqlTableModel::setTable(table);
    m_columns = ColumnTraits(record());
}

int PagedTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_pages.keys().size();
}

QVariant PagedTableModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::TextAlignmentRole && m_columns.has(index.column())) {
        return int((m_columns.isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    const bool isValue = role == Qt::DisplayRole || role == Qt::EditRole;
    const bool isOfBase = index.row() < QSqlTableModel::rowCount();
    if (isValue && isOfBase && !m_later.isEmpty() && !isDirty(index)) {
        const auto later = m_later.constFind({index.row(), index.column()});
        if (later != m_later.constEnd()) {
            return *later;
        }
    }
    if (!isValue || isOfBase || isDirty(index)) {
        return QSqlTableModel::data(index, role);
    }
    return m_pages.value(index.row(), index.column());
}

bool PagedTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole) {
        return QSqlTableModel::setData(index, value, role);
    }
    if (!index.isValid() || !(flags(index) & Qt::ItemIsEditable)) {
        return false;
    }
    // The base class compares with its own rows alone, and takes a plain "no value" for unchanged in a paged
    // one.
    const QVariant wanted = value.isValid() ? value : QVariant(record().field(index.column()).type());
    const QVariant old = data(index, role);
    if (!isDirty(index) && wanted == old && wanted.isNull() == old.isNull()) {
        return true;
    }
    m_edited.insert(index.row());
    return QSqlTableModel::setData(index, wanted, role);
}

Qt::ItemFlags PagedTableModel::flags(const QModelIndex &index) const
{
    // A selection of all rows asks for each of them: without edits the base class need not look for one.
    const Qt::ItemFlags ofRow = isDirty() || !index.isValid()
        ? QSqlTableModel::flags(index)
        : Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
    return m_columns.isKey(index.column()) ? ofRow & ~Qt::ItemIsEditable : ofRow;
}

bool PagedTableModel::insertRows(int, int, const QModelIndex &)
{
    return false;
}

bool PagedTableModel::removeRows(int row, int count, const QModelIndex &parent)
{
    m_edited.erase(m_edited.lower_bound(row), m_edited.lower_bound(row + count));
    return QSqlTableModel::removeRows(row, count, parent);
}

void PagedTableModel::clear()
{
    beginResetModel();
    forget();
    QSqlTableModel::clear();
    endResetModel();
}

bool PagedTableModel::select()
{
    beginResetModel();
    forget();
    bool good = false;
    {
        const ReadSnapshot snapshot(database());
        QVector<qlonglong> keys;
        const bool hasKeys = readAllKeys(&keys);
        m_firstKeys = hasKeys ? keys.mid(0, firstRows) : QVector<qlonglong>();
        m_selectsByKeys = hasKeys;
        good = QSqlTableModel::select() && hasKeys;
        m_selectsByKeys = false;
        if (good) {
            m_pages.open(database(), rowsOfTable(), columnName(keyColumn), std::move(keys));
        }
    }
    endResetModel();
    return good;
}

/// The base class keeps the rows that it has read until it selects anew, which costs a large table too much.
void PagedTableModel::readColumn(int column)
{
    m_pages.dropValues();
    const QHash<qlonglong, QVariant> values =
        m_pages.readColumn(columnName(column), tableName(), m_firstKeys);
    for (int row = 0; row < m_firstKeys.size(); ++row) {
        const auto value = values.constFind(m_firstKeys.at(row));
        if (value != values.constEnd()) {
            takeValue(row, column, *value);
        }
    }
}

void PagedTableModel::takeValue(int row, int column, const QVariant &value)
{
    const QModelIndex cell = index(row, column);
    if (cell.isValid() && !isDirty(cell) && data(cell, Qt::EditRole) != value) {
        m_later.insert({row, column}, value);
        emit dataChanged(cell, cell);
    }
}

QString PagedTableModel::columnName(int column) const
{
    const QString name =
        database().driver()->escapeIdentifier(record().fieldName(column), QSqlDriver::FieldName);
    return tableName() + QLatin1Char('.') + name;
}

QString PagedTableModel::orderByClause() const
{
    // Rows that are equal otherwise follow their keys: the two reads of select() must agree on every place.
    const QString chosen = QSqlTableModel::orderByClause();
    if (chosen.isEmpty()) {
        return QStringLiteral("ORDER BY %1 ASC").arg(columnName(keyColumn));
    }
    const QLatin1String direction(chosen.endsWith(QLatin1String("DESC")) ? "DESC" : "ASC");
    return QStringLiteral("%1, %2 %3").arg(chosen, columnName(keyColumn), direction);
}

QString PagedTableModel::selectStatement() const
{
    if (!m_selectsByKeys) {
        const QString statement = QSqlTableModel::selectStatement();
        return statement.isEmpty() ? statement : statement + QStringLiteral(" LIMIT %1").arg(firstRows);
    }
    // The keys are known by now: the filter need not be asked of every row again, nor all rows be sorted.
    return QStringLiteral("%1 WHERE %2 IN (%3) %4")
        .arg(rowsOfTable(), columnName(keyColumn), RecordPages::listed(m_firstKeys), orderByClause());
}

QString PagedTableModel::rowsOfTable() const
{
    return database().driver()->sqlStatement(QSqlDriver::SelectStatement, tableName(), record(), false);
}

bool PagedTableModel::readAllKeys(QVector<qlonglong> *keys)
{
    const QString where = filter().isEmpty() ? QString() : QStringLiteral("WHERE %1\n").arg(filter());
    const QSqlError error = readKeys(database(),
        QStringLiteral("SELECT %1 AS k FROM %2 ").arg(columnName(keyColumn), tableName()) + where
            + orderByClause(),
        keys);
    if (error.isValid()) {
        setLastError(error);
    }
    return !error.isValid();
}

bool PagedTableModel::isRowDirty(int row) const
{
    for (int column = 0; column < columnCount(); ++column) {
        if (isDirty(index(row, column))) {
            return true;
        }
    }
    return false;
}

/**
 * The base class notes each row as saved as soon as its statement succeeded; where a later row fails and the
 * caller rolls back, the earlier edits would be lost without a word. So the first row writes all, or fails
 * for all.
 */
bool PagedTableModel::updateRowInTable(int row, const QSqlRecord &values)
{
    if (editStrategy() != OnManualSubmit) {
        return QSqlTableModel::updateRowInTable(row, values);
    }
    if (m_written.count(row) == 0 && !writeEditedRows()) {
        m_written.clear();
        return false;
    }
    return m_written.erase(row) > 0;
}

bool PagedTableModel::writeEditedRows()
{
    for (const int row : m_edited) {
        if (isRowDirty(row) && !QSqlTableModel::updateRowInTable(row, record(row))) {
            return false;
        }
        m_written.insert(row);
    }
    return true;
}

void PagedTableModel::forget()
{
    m_pages.clear();
    m_firstKeys.clear();
    m_later.clear();
    m_edited.clear();
    m_written.clear();
}
