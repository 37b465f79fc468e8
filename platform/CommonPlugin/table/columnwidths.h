#pragma once

#include "commonplugin_export.h"

#include <QHash>
#include <QString>

/// The column widths that a user chose for one table, by column name; kept in the user's settings.
class COMMONPLUGIN_EXPORT ColumnWidths
{
public:
    /// Reads what is kept for a table.
    void load(const QString &table);
    /// The chosen width in pixels; 0 where the user chose none.
    int width(const QString &column) const { return m_widths.value(column, 0); }
    /// Chooses a width and keeps it; 0 forgets it.
    void choose(const QString &column, int width);

private:
    QString m_table;
    QHash<QString, int> m_widths;
};
