#include "instancefilter.h"

#include "attributes.h"
#include "inquirytable.h"

#include <QSqlQuery>
#include <QVariant>

InstanceFilter InstanceFilter::of(const QString &inquiry)
{
    InstanceFilter filter;
    QSqlQuery query;
    query.setForwardOnly(true);
    query.exec(InquiryTable::allOf(inquiry));
    while (query.next()) {
        const auto text = [&query](InquiryTable::Column column) { return query.value(column).toString(); };
        filter.add(text(InquiryTable::GroupName), text(InquiryTable::FieldName), text(InquiryTable::Symbol),
            text(InquiryTable::FieldValue), text(InquiryTable::Logic));
    }
    return filter;
}

void InstanceFilter::add(const QString &group, const QString &field, const QString &symbol,
    const QString &value, const QString &logic)
{
    m_groups.append(group);
    m_fields.append(field);
    m_symbols.append(symbol);
    m_values.append(value);
    if (value.isEmpty()) {
        m_values.append(QStringLiteral("NULL"));
    }
    m_logics.append(logic);
}

QString InstanceFilter::text(qlonglong series) const
{
    // One arg() for all values of a template: in a chain a value with "%1" would be filled in turn.
    QString where;
    bool isFirst = true;
    for (int i = 0; i < m_groups.size(); ++i) {
        if (m_groups.at(i) != QLatin1String(recordTableName(RecordLevel::Image))) {
            continue;
        }
        where += isFirst ? QStringLiteral("%1 %2 '%3' ").arg(m_fields.at(i), m_symbols.at(i), m_values.at(i))
                         : QStringLiteral(" %1 %2 %3 '%4'")
                               .arg(m_logics.at(i - 1), m_fields.at(i), m_symbols.at(i), m_values.at(i));
        isFirst = false;
    }
    where += (where.isEmpty() ? QStringLiteral("series_fk='%1'") : QStringLiteral("and series_fk='%1'"))
                 .arg(series);
    return where;
}
