#include "foundkeys.h"

#include "nativehandle.h"

#include <QMutex>

#include <algorithm>
#include <map>
#include <memory>

namespace {

/// A bit for each key of the range that they span, unless they are few in a wide one.
class KeySet
{
public:
    explicit KeySet(std::vector<qint64> keys = {})
        : m_keys(std::move(keys))
    {
        const quint64 span = m_keys.empty() ? 0 : quint64(m_keys.back()) - quint64(m_keys.front());
        if (!m_keys.empty() && (span < leastBits || span / bitsOfKey < m_keys.size())) {
            useBits(std::size_t(span) + 1);
        }
    }

    bool contains(qint64 key) const
    {
        return m_bits.empty() ? std::binary_search(m_keys.begin(), m_keys.end(), key)
                              : offset(key) < m_bits.size() && m_bits[offset(key)];
    }

private:
    static constexpr quint64 leastBits = 1 << 20;
    static constexpr quint64 bitsOfKey = 64;

    void useBits(std::size_t size)
    {
        m_first = m_keys.front();
        m_bits.resize(size);
        for (const qint64 key : m_keys) {
            m_bits[offset(key)] = true;
        }
        m_keys = {};
    }
    /// Huge for a key below the first.
    std::size_t offset(qint64 key) const { return std::size_t(quint64(key) - quint64(m_first)); }

    std::vector<qint64> m_keys; // in rising order; empty where there are bits
    std::vector<bool> m_bits;
    qint64 m_first = 0;
};

using Keys = std::shared_ptr<const KeySet>;

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
    return set == registry().sets.end() ? std::make_shared<const KeySet>() : set->second;
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
    sqlite3_result_int(context, (*keys)->contains(key) ? 1 : 0);
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
    Keys set = std::make_shared<const KeySet>(std::move(keys));
    const QMutexLocker lock(&registry().mutex);
    registry().sets[m_number] = std::move(set);
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
