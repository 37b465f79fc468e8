#include "rawread.h"

#include <QElapsedTimer>
#include <QFile>

#include <sqlite3.h>

namespace {

qint64 readAll(sqlite3 *db, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    qint64 bytes = 0;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        qFatal("%s", sqlite3_errmsg(db));
    }
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            sqlite3_column_text(statement, column);
            bytes += sqlite3_column_bytes(statement, column);
        }
    }
    sqlite3_finalize(statement);
    return bytes;
}

} // namespace

double rawReadMs(const QString &path)
{
    sqlite3 *db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr)
        != SQLITE_OK) {
        qFatal("%s", sqlite3_errmsg(db));
    }
    QElapsedTimer time;
    time.start();
    for (const char *sql :
        {"SELECT * FROM patient", "SELECT * FROM generalstudy", "SELECT * FROM generalseries"}) {
        readAll(db, sql);
    }
    const double milliseconds = double(time.nsecsElapsed()) / 1e6;
    sqlite3_close(db);
    return milliseconds;
}
