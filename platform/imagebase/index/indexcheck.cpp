#include "indexcheck.h"

#include "indexconnection.h"
#include "nativehandle.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// SQLite's virtual machine asks after this many steps whether to go on: some milliseconds.
constexpr int stepsBetweenLooks = 10'000;

int lookAtStop(void *stop)
{
    return static_cast<const std::atomic<bool> *>(stop)->load() ? 1 : 0;
}

} // namespace

QString firstDamage(const QString &databasePath, const std::atomic<bool> &stop)
{
    const IndexConnection connection(databasePath);
    if (!connection.isOpen()) {
        return connection.failure().detail;
    }
    if (sqlite3 *native = nativeHandle(connection.database())) {
        sqlite3_progress_handler(
            native, stepsBetweenLooks, lookAtStop, const_cast<std::atomic<bool> *>(&stop));
    }
    QSqlQuery query(connection.database());
    const bool read = query.exec(QStringLiteral("PRAGMA quick_check(1)")) && query.next();
    if (stop) {
        return {};
    }
    const QString answer = read ? query.value(0).toString() : query.lastError().databaseText();
    return answer == QLatin1String("ok") ? QString() : answer;
}
