#include "foundkeys.h"

#include "nativehandle.h"

#include <QMutex>

#include <algorithm>
#include <map>
#include <memory>

namespace {

using Keys = std::shared_ptr<const std::vector<qint64>>;

struct Registry
{
    QMutex mutex;
    std::map<int, Keys> sets;
    int lastNumber = 0;
};

Registry &registry()
{
    static Registry all;
    return all;
}

Keys keysOf(int number)
{
    const QMutexLocker lock(&registry().mutex);
    const auto set = registry().sets.find(number);
    return set == registry().sets.end() ? std::make_shared<const std::vector<qint64>>() : set->second;
}

/// The keys that a statement asks, taken once for all its rows.
const Keys *keysOfStatement(sqlite3_context *context, sqlite3_value *number)
{
    constexpr int numberArgument = 1;
    const auto *known = static_cast<const Keys *>(sqlite3_get_auxdata(context, numberArgument));
    if (!known) {
        const auto destroy = [](void *keys) { delete static_cast<Keys *>(keys); };
        sqlite3_set_auxdata(context, numberArgument, new Keys(keysOf(sqlite3_value_int(number))), destroy);
        known = static_cast<const Keys *>(sqlite3_get_auxdata(context, numberArgument));
    }
    return known;
}

void isFound(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const Keys *keys = keysOfStatement(context, arguments[1]);
    if (!keys) {
        sqlite3_result_error_nomem(context);
        return;
    }
    const qint64 key = sqlite3_value_int64(arguments[0]);
    sqlite3_result_int(context, std::binary_search((*keys)->begin(), (*keys)->end(), key) ? 1 : 0);
}

int nextNumber()
{
    const QMutexLocker lock(&registry().mutex);
    return ++registry().lastNumber;
}

} // namespace

FoundKeys::FoundKeys()
    : m_number(nextNumber())
{ }

FoundKeys::~FoundKeys()
{
    const QMutexLocker lock(&registry().mutex);
    registry().sets.erase(m_number);
}

void FoundKeys::set(std::vector<qint64> keys)
{
    const QMutexLocker lock(&registry().mutex);
    registry().sets[m_number] = std::make_shared<const std::vector<qint64>>(std::move(keys));
}

QString FoundKeys::condition() const
{
    return QStringLiteral("found(pk, %1)").arg(m_number);
}

void registerFoundKeys(const QSqlDatabase &db)
{
    if (sqlite3 *native = nativeHandle(db)) {
        sqlite3_create_function_v2(
            native, "found", 2, SQLITE_UTF8, nullptr, isFound, nullptr, nullptr, nullptr);
    }
}
