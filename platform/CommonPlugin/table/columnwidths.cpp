#include "columnwidths.h"

#include <QSettings>

namespace {

/// The user's own file of table settings, with a group for each table.
class WidthSettings : public QSettings
{
public:
    explicit WidthSettings(const QString &table)
        : QSettings(IniFormat, UserScope, QStringLiteral("PatientManager"), QStringLiteral("columnwidths"))
    {
        beginGroup(table);
    }
};

} // namespace

void ColumnWidths::load(const QString &table)
{
    m_table = table;
    m_widths.clear();
    const WidthSettings settings(table);
    const QStringList columns = settings.childKeys();
    for (const QString &column : columns) {
        m_widths.insert(column, settings.value(column).toInt());
    }
}

void ColumnWidths::choose(const QString &column, int width)
{
    WidthSettings settings(m_table);
    if (width > 0) {
        m_widths.insert(column, width);
        settings.setValue(column, width);
    } else {
        m_widths.remove(column);
        settings.remove(column);
    }
}
