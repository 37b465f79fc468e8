#include "columnkind.h"

namespace {

bool isPersonName(const QString &column)
{
    return column == QLatin1String("PatientName") || column == QLatin1String("OperatorsName")
        || column.endsWith(QLatin1String("PhysicianName"));
}

} // namespace

ColumnKind columnKind(const QString &column, bool isNumber)
{
    if (isPersonName(column)) {
        return ColumnKind::PersonName;
    }
    if (column == QLatin1String("FileTime")) {
        return ColumnKind::FileTime;
    }
    if (column == QLatin1String("updated_time")) {
        return ColumnKind::DateTime;
    }
    if (column.endsWith(QLatin1String("Date"))) {
        return ColumnKind::Date;
    }
    if (column.endsWith(QLatin1String("Time"))) {
        return ColumnKind::Time;
    }
    return isNumber ? ColumnKind::Number : ColumnKind::Text;
}

ColumnKind columnKind(const QSqlField &column)
{
    return columnKind(column.name(), holdsNumbers(column));
}

bool holdsNumbers(const QSqlField &column)
{
    return column.type() != QVariant::String;
}
