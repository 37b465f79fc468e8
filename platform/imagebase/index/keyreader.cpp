#include "keyreader.h"

#include "nativehandle.h"
#include "nativestatement.h"

#include <cstring>
#include <vector>

namespace {

using Keys = std::vector<qlonglong>;

/// Those of one statement, made by its first row.
Keys **keysOf(sqlite3_context *context, int bytes)
{
    return static_cast<Keys **>(sqlite3_aggregate_context(context, bytes));
}

void addKey(sqlite3_context *context, int, sqlite3_value **arguments)
{
    Keys **keys = keysOf(context, sizeof(Keys *));
    if (!keys) {
        sqlite3_result_error_nomem(context);
        return;
    }
    if (!*keys) {
        *keys = new Keys;
    }
    (*keys)->push_back(sqlite3_value_int64(arguments[0]));
}

void giveKeys(sqlite3_context *context)
{
    Keys **keys = keysOf(context, 0);
    if (!keys || !*keys) { // no row
        return;
    }
    const std::size_t bytes = (*keys)->size() * sizeof(qlonglong);
    sqlite3_result_blob64(context, (*keys)->data(), bytes, SQLITE_TRANSIENT);
    delete *keys;
}

/// keylist(k), on the first use of a connection: one that was closed and opened again has lost it.
void provideKeyList(const QSqlDatabase &db)
{
    sqlite3 *native = nativeHandle(db);
    if (native && NativeStatement(db, QStringLiteral("SELECT keylist(1)")).error().isValid()) {
        sqlite3_create_function_v2(
            native, "keylist", 1, SQLITE_UTF8, nullptr, nullptr, addKey, giveKeys, nullptr);
    }
}

} // namespace

QSqlError readKeys(const QSqlDatabase &db, const QString &rows, QVector<qlonglong> *keys)
{
    provideKeyList(db);
    NativeStatement list(db, QStringLiteral("SELECT keylist(k) FROM (%1)").arg(rows));
    if (list.step() != NativeStatement::Step::Row) {
        return list.error();
    }
    const std::string_view bytes = list.blob(0);
    keys->resize(int(bytes.size() / sizeof(qlonglong)));
    if (!bytes.empty()) {
        std::memcpy(keys->data(), bytes.data(), bytes.size());
    }
    return {};
}
