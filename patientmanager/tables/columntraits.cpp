#include "columntraits.h"

#include "columnkind.h"

#include <QSqlField>
#include <QSqlRecord>

ColumnTraits::ColumnTraits(const QSqlRecord &columns)
{
    for (int column = 0; column < columns.count(); ++column) {
        m_traits.push_back({column == 0 || columns.fieldName(column).endsWith(QLatin1String("_fk")),
            columnKind(columns.field(column)) == ColumnKind::Number});
    }
}
