#include "indexcheck.h"

#include "indexconnection.h"
#include "nativehandle.h"
#include "stopflag.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

QString firstDamage(const QString &databasePath, const std::atomic<bool> &stop)
{
    const IndexConnection connection(databasePath);
    if (!connection.isOpen()) {
        return connection.failure().detail;
    }
    if (sqlite3 *native = nativeHandle(connection.database())) {
        StopFlag::watch(native, stop);
    }
    QSqlQuery query(connection.database());
    const bool read = query.exec(QStringLiteral("PRAGMA quick_check(1)")) && query.next();
    if (stop) {
        return {};
    }
    const QString answer = read ? query.value(0).toString() : query.lastError().databaseText();
    return answer == QLatin1String("ok") ? QString() : answer;
}
