#pragma once

#include <QObject>

#include <atomic>
#include <thread>

/**
 * Reads through the whole index once, in the background, so that damage deep inside is told at the start and
 * not met as a table that stays empty. GUI thread; the destructor stops the reading and waits for it.
 */
class IndexHealth : public QObject
{
    Q_OBJECT

public:
    explicit IndexHealth(QObject *parent = nullptr);
    ~IndexHealth() override;

    /// Begins to read the index file; once.
    void check(const QString &databasePath);

signals:
    /// The index is damaged; detail is the database's own words.
    void damaged(const QString &detail);

private:
    std::atomic<bool> m_stop{false};
    std::thread m_reader;
};
