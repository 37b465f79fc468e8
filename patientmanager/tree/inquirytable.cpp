#include "inquirytable.h"

#include "lockwait.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

constexpr char user[] = "super";
/// For the write lock: somebody looks at the screen meanwhile.
constexpr int longestWaitMs = 1500;

/// A statement read once from its start, on the default connection.
QSqlQuery executed(const QString &statement)
{
    QSqlQuery query;
    query.setForwardOnly(true);
    query.exec(statement);
    return query;
}

/// @param statement with %1 for the name
bool removeBy(const QString &statement, const QString &name)
{
    // A quote ends the name: the rest could match other inquiries.
    return !name.contains(QLatin1Char('\'')) && executed(statement.arg(name)).isActive();
}

/// A transaction of its own, or a part of the one that is open already.
template <typename Write>
InquiryTable::Outcome inTransaction(const Write &write)
{
    using InquiryTable::Outcome;
    const QSqlDatabase db = QSqlDatabase::database();
    const LockWait wait(db, longestWaitMs);
    if (IndexConnection::isInTransaction(db)) {
        return write() ? Outcome::Done : Outcome::Incomplete;
    }
    WriteTransaction own(db);
    const bool written = own.isActive() && write();
    if (!own.commit()) {
        return Outcome::Refused;
    }
    return written ? Outcome::Done : Outcome::Incomplete;
}

/// Goes on after one that fails. @return whether none did
bool insert(const QString &name, const InquiryConditions &conditions)
{
    QSqlQuery query;
    query.prepare(QStringLiteral("INSERT INTO andvancequiry (UserName,InquiryName, "
                                 "GroupName,FieldName,Symbol,FieldValue,Logic,QueryType) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
    bool good = true;
    for (const InquiryCondition &condition : conditions) {
        if (condition.field.isEmpty()) {
            continue;
        }
        int place = 0;
        for (const QString &value : {QString::fromLatin1(user), name, condition.group, condition.field,
                 condition.symbol, condition.value, condition.logic, condition.queryType}) {
            query.bindValue(place++, value);
        }
        good = query.exec() && good;
    }
    return good;
}

} // namespace

QStringList InquiryTable::names()
{
    QStringList names;
    QSqlQuery query = executed(QStringLiteral("SELECT InquiryName FROM andvancequiry"));
    while (query.next()) {
        names.append(query.value(0).toString());
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

QString InquiryTable::allOf(const QString &name)
{
    return QStringLiteral("SELECT * FROM andvancequiry WHERE InquiryName = '%1' "
                          "ORDER BY `andvancequiry`.`GroupName` ASC ")
        .arg(name);
}

InquiryConditions InquiryTable::conditions(const QString &name, const QString &group)
{
    InquiryConditions conditions;
    QSqlQuery query =
        executed(QStringLiteral("SELECT * FROM andvancequiry WHERE InquiryName = '%1' and GroupName = '%2'")
                     .arg(name, group));
    while (query.next()) {
        const auto text = [&query](Column column) { return query.value(column).toString(); };
        conditions.append(
            {group, text(FieldName), text(Symbol), text(FieldValue), text(Logic), text(QueryType)});
    }
    return conditions;
}

bool InquiryTable::isTaken(const QString &name)
{
    return executed(QStringLiteral("SELECT InquiryName FROM andvancequiry WHERE InquiryName = '") + name
        + QLatin1Char('\''))
        .next();
}

InquiryTable::Outcome InquiryTable::replace(const QString &name, const InquiryConditions &conditions)
{
    return inTransaction([&] {
        const bool removed =
            removeBy(QStringLiteral("DELETE FROM `andvancequiry` WHERE InquiryName = '%1'"), name);
        return insert(name, conditions) && removed;
    });
}

InquiryTable::Outcome InquiryTable::append(const QString &name, const InquiryConditions &conditions)
{
    return inTransaction([&] { return insert(name, conditions); });
}

InquiryTable::Outcome InquiryTable::remove(const QString &name)
{
    return inTransaction([&] {
        return removeBy(QStringLiteral("DELETE FROM andvancequiry WHERE InquiryName = '%1' "), name);
    });
}
