#include "nativestatement.h"

#include "nativehandle.h"
#include "textpool.h"

NativeStatement::NativeStatement(const QSqlDatabase &db, const QString &sql)
    : m_db(nativeHandle(db))
{
    const QByteArray text = sql.toUtf8();
    if (!m_db
        || sqlite3_prepare_v3(
               m_db, text.constData(), text.size() + 1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr)
            != SQLITE_OK) {
        noteError();
    }
}

NativeStatement::~NativeStatement()
{
    sqlite3_finalize(m_statement);
}

void NativeStatement::bind(int parameter, qint64 value)
{
    sqlite3_bind_int64(m_statement, parameter + 1, value);
}

void NativeStatement::bind(int parameter, double value)
{
    sqlite3_bind_double(m_statement, parameter + 1, value);
}

void NativeStatement::bind(int parameter, const QString &text)
{
    if (text.isNull()) {
        bindNull(parameter);
        return;
    }
    sqlite3_bind_text16(
        m_statement, parameter + 1, text.constData(), text.size() * int(sizeof(QChar)), SQLITE_STATIC);
}

void NativeStatement::bindNull(int parameter)
{
    sqlite3_bind_null(m_statement, parameter + 1);
}

NativeStatement::Step NativeStatement::step()
{
    // A statement that could not be prepared keeps the error of that.
    if (!m_statement) {
        return Step::Failed;
    }
    switch (sqlite3_step(m_statement)) {
    case SQLITE_ROW:
        return Step::Row;
    case SQLITE_DONE:
        return Step::Done;
    default:
        noteError();
        return Step::Failed;
    }
}

void NativeStatement::reset()
{
    sqlite3_reset(m_statement);
}

qint64 NativeStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

QString NativeStatement::text(int column) const
{
    const void *bytes = sqlite3_column_text16(m_statement, column);
    const int size = sqlite3_column_bytes16(m_statement, column) / int(sizeof(QChar));
    return bytes ? QString(static_cast<const QChar *>(bytes), size) : QString();
}

std::string_view NativeStatement::utf8(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    const auto size = std::size_t(sqlite3_column_bytes(m_statement, column));
    return bytes ? std::string_view(bytes, size) : std::string_view();
}

std::string_view NativeStatement::blob(int column) const
{
    const void *bytes = sqlite3_column_blob(m_statement, column);
    const auto size = std::size_t(sqlite3_column_bytes(m_statement, column));
    return bytes ? std::string_view(static_cast<const char *>(bytes), size) : std::string_view();
}

QVariant NativeStatement::value(int column, TextPool *pool) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_column_int64(m_statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(m_statement, column);
    default:
        break;
    }
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return pool->text(bytes, sqlite3_column_bytes(m_statement, column));
}

void NativeStatement::noteError()
{
    const QString words = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString();
    const int code = m_db ? sqlite3_extended_errcode(m_db) : SQLITE_ERROR;
    m_error = QSqlError(QString(), words, QSqlError::StatementError, QString::number(code));
}
