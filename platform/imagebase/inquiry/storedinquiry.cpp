#include "storedinquiry.h"

#include "attributes.h"

#include <QSqlQuery>
#include <QVariant>

namespace StoredInquiry {

InquiryConditions read(const QSqlDatabase &db, const QString &name, QSqlError *error)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    bool good =
        query.prepare(QStringLiteral("SELECT GroupName, FieldName, Symbol, FieldValue, Logic, QueryType "
                                     "FROM andvancequiry WHERE InquiryName = ? ORDER BY pk"));
    if (good) {
        query.addBindValue(name);
        good = query.exec();
    }
    InquiryConditions conditions;
    while (good && query.next()) {
        const auto text = [&query](int column) { return query.value(column).toString(); };
        conditions.append({text(0), text(1), text(2), text(3), text(4), text(5)});
    }
    if (error) {
        *error = query.lastError();
    }
    return conditions;
}

InquiryConditions updatedToday()
{
    return {{QLatin1String(recordTableName(RecordLevel::Patient)), QStringLiteral("updated_time"),
        QLatin1String(InquiryWord::greater), QStringLiteral("today-1"),
        QLatin1String(InquiryWord::conjunction), QLatin1String(InquiryWord::precise)}};
}

} // namespace StoredInquiry
