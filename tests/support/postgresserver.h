#pragma once

#include <QJsonObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class QProcess;

/**
 * A private PostgreSQL cluster in a temporary folder with one empty database, reached through a socket in
 * that folder and by no network. Accepts connections when its maker returns, and ends with this object or
 * with the test; what depends on it must end first. It refuses the system's administrator, so it runs as
 * nobody where a test is that.
 */
class PostgresServer
{
public:
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    /// What an archive's configuration says under "PostgreSQL" to keep its index and its files here.
    QJsonObject archiveSettings() const;

private:
    QString program(const QString &name) const;
    void run(const QString &name, const QStringList &arguments) const;

    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
};
