#pragma once

#include <QByteArray>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

#include <optional>

/// Which index a store belongs to, and how far the two have come together.
struct StoreState
{
    QString identity; ///< of the index; empty where it could not be read
    qint64 changes = 0; ///< transactions that have entered files of the store
    /// An older copy of the index has gone on with the store: it may hold images that no record names.
    bool isUncertain = false;
};

/**
 * The mark in a store's folder that says which index the store belongs to.
 *
 * It is made with the store's first file, and later by a sweep that finds a record for every file; a store
 * that has files and no mark, or the mark of another index, stays as it is. Begin and count within one
 * transaction, note when it is committed. For the thread of one writer.
 */
class StoreMark
{
public:
    explicit StoreMark(const QString &store);

    static StoreState ofIndex(const QSqlDatabase &db);
    std::optional<StoreState> read() const;
    /// In place and in one piece: a kill leaves the old mark or the new one.
    void write(const StoreState &state) const;

    /// Looks, before files come, whose the store is.
    void begin(const QSqlDatabase &db);
    /// @return the database's error, invalid where it is counted
    QSqlError count(const QSqlDatabase &db);
    /// Says in the mark what was counted, where the store is the index's own.
    void note() const;

private:
    bool isEmptyStore() const;

    const QString m_store;
    bool m_begun = false;
    bool m_isNew = false; ///< the store had no files when this writer came
    StoreState m_counted;
};
