#pragma once

#include <QStringList>

/**
 * The SQL condition by which the images of a series are chosen: the image conditions of a stored inquiry as
 * they stand, and the series.
 *
 * Takes the rows of the inquiry as they are read. An empty value counts twice, as "" and as "NULL", and so
 * moves those of all later rows by one; hosts know this text.
 */
class InstanceFilter
{
public:
    /// Of a stored inquiry, read on the default connection; without conditions where that fails.
    static InstanceFilter of(const QString &inquiry);
    /// The next row, of whatever group.
    void add(const QString &group, const QString &field, const QString &symbol, const QString &value,
        const QString &logic);
    QString text(qlonglong series) const;

private:
    QStringList m_groups;
    QStringList m_fields;
    QStringList m_symbols;
    QStringList m_values;
    QStringList m_logics;
};
