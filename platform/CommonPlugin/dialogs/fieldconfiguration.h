#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The field configuration of one record table in the index, on the default connection: a flag for each
/// column, by position, in the first row of `<table>user`. GUI thread.
class FieldConfiguration
{
public:
    using Flags = QVector<int>;

    explicit FieldConfiguration(const QString &table);

    /// Columns of the record table that the configuration has a flag for.
    QStringList columns() const { return m_columns; }
    /// Their flags; all 0 where the configuration has no row, as the tables read it.
    Flags flags() const;
    /// What a new index starts with.
    Flags defaults() const { return m_defaults; }
    /// Writes all flags in one statement. @return the database's words where it refused, else empty
    QString write(const Flags &flags) const;

private:
    bool hasRow() const;

    QString m_userTable;
    QStringList m_columns;
    QStringList m_userColumns;
    Flags m_defaults;
};
