#include "postgresserver.h"

#include "testfiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;
constexpr int patienceMs = 60000;
constexpr int lookAgainMs = 30;
constexpr int port = 5432; // part of the socket's name
constexpr char database[] = "archive";
constexpr char owner[] = "archivist";

/// Runs as an ordinary user, and ends at once with the test.
class ClusterProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            ::_exit(1);
        }
        ::prctl(PR_SET_PDEATHSIG, SIGQUIT); // after the change of user, which forgets it
    }
};

} // namespace

PostgresServer::PostgresServer()
{
    if (::geteuid() == 0 && ::chown(QFile::encodeName(m_folder.path()).constData(), nobody, nobody) != 0) {
        qFatal("the folder of the cluster cannot be given away");
    }
    const QString data = m_folder.filePath(QStringLiteral("data"));
    run(QStringLiteral("initdb"),
        {QStringLiteral("-D"), data, QStringLiteral("-U"), QLatin1String(owner), QStringLiteral("-A"),
            QStringLiteral("trust"), QStringLiteral("-E"), QStringLiteral("UTF8"),
            QStringLiteral("--locale=C.UTF-8"), QStringLiteral("--no-sync")});
    m_process = std::make_unique<ClusterProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    const QString log = m_folder.filePath(QStringLiteral("log"));
    m_process->setStandardOutputFile(log);
    m_process->start(program(QStringLiteral("postgres")),
        {QStringLiteral("-D"), data, QStringLiteral("-k"), m_folder.path(), QStringLiteral("-p"),
            QString::number(port), QStringLiteral("-c"), QStringLiteral("listen_addresses=")});
    QElapsedTimer clock;
    clock.start();
    // Its socket is there before it answers.
    while (!bytesOf(log).contains("ready to accept connections") && !clock.hasExpired(patienceMs)) {
        m_process->waitForFinished(lookAgainMs);
    }
    run(QStringLiteral("createdb"),
        {QStringLiteral("-h"), m_folder.path(), QStringLiteral("-p"), QString::number(port),
            QStringLiteral("-U"), QLatin1String(owner), QLatin1String(database)});
}

PostgresServer::~PostgresServer()
{
    ::kill(pid_t(m_process->processId()), SIGQUIT);
    m_process->waitForFinished(patienceMs);
}

QJsonObject PostgresServer::archiveSettings() const
{
    return {{QStringLiteral("EnableIndex"), true}, {QStringLiteral("EnableStorage"), true},
        {QStringLiteral("Host"), m_folder.path()}, {QStringLiteral("Port"), port},
        {QStringLiteral("Database"), QLatin1String(database)},
        {QStringLiteral("Username"), QLatin1String(owner)}, {QStringLiteral("Password"), QString()}};
}

QString PostgresServer::program(const QString &name) const
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Reversed)) {
        const QString path = versions.filePath(version + QStringLiteral("/bin/") + name);
        if (QFile::exists(path)) {
            return path;
        }
    }
    qFatal("%s is not installed; packaging/packages.txt names its package", qPrintable(name));
}

void PostgresServer::run(const QString &name, const QStringList &arguments) const
{
    ClusterProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program(name), arguments);
    if (!process.waitForFinished(patienceMs) || process.exitCode() != 0) {
        qFatal("%s fails: %s", qPrintable(name), process.readAll().constData());
    }
}
