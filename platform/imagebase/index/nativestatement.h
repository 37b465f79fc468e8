#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <QVariant>

#include <string_view>

class TextPool;
struct sqlite3;
struct sqlite3_stmt;

/**
 * A prepared statement on the database's own interface, for the few that run once a file.
 *
 * Texts are bound without a copy: they must stay as they are until reset(). Parameters count from 0 and keep
 * their values until bound anew. Lives on the thread of its connection, and not longer than it.
 */
class NativeStatement
{
public:
    NativeStatement(const QSqlDatabase &db, const QString &sql);
    ~NativeStatement();
    NativeStatement(const NativeStatement &) = delete;
    NativeStatement &operator=(const NativeStatement &) = delete;

    void bind(int parameter, qint64 value);
    void bind(int parameter, double value);
    /// A null text is NULL.
    void bind(int parameter, const QString &text);
    void bindNull(int parameter);

    enum class Step { Row, Done, Failed };
    /// Goes to the next row; after Failed, error() says why.
    Step step();
    void reset();

    qint64 integer(int column) const;
    QString text(int column) const;
    /// The bytes of a text, empty for NULL; they stay until the next step().
    std::string_view utf8(int column) const;
    /// The same of a blob.
    std::string_view blob(int column) const;
    /// By what is stored: a text, a 64-bit integer, a double; invalid where nothing is.
    QVariant value(int column, TextPool *pool) const;
    const QSqlError &error() const { return m_error; }

private:
    void noteError();

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_statement = nullptr;
    QSqlError m_error;
};
