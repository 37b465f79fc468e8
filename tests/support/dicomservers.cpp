#include "dicomservers.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int startTimeoutMs = 30000;
constexpr int lookAgainMs = 30;
constexpr int echoTimeoutS = 2;
constexpr int restTimeoutMs = 60000;
constexpr char configName[] = "server.conf";
constexpr char dataName[] = "data";

/// Servers of distributions lie where ordinary users do not look.
QString pathOf(const QString &program)
{
    const QString found = QStandardPaths::findExecutable(program);
    return found.isEmpty()
        ? QStandardPaths::findExecutable(program, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")})
        : found;
}

QString needed(const QString &program)
{
    const QString path = pathOf(program);
    if (path.isEmpty()) {
        qFatal("%s is not installed; packaging/packages.txt names its package", qPrintable(program));
    }
    return path;
}

QProcessEnvironment environment()
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("TCP_NODELAY"), QStringLiteral("1"));
    return variables;
}

/// Ends with the test, however that ends, and leads a group of its own so that its children end with it.
class ServerProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    }
};

} // namespace

ToolRun runTool(const QString &program, const QStringList &arguments, int timeoutMs)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(needed(program), arguments);
    const bool ended = process.waitForFinished(timeoutMs);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    const bool good = ended && process.exitStatus() == QProcess::NormalExit;
    return {good ? process.exitCode() : -1, process.readAll()};
}

quint16 freePort()
{
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost)) {
        qFatal("no port of the loopback is free");
    }
    return server.serverPort();
}

DicomServer::DicomServer(QString program, QString aeTitle)
    : m_program(needed(program))
    , m_aeTitle(std::move(aeTitle))
    , m_port(freePort())
{
    QDir(m_folder.path()).mkdir(QLatin1String(dataName));
}

DicomServer::~DicomServer()
{
    stop();
}

std::unique_ptr<DicomServer> DicomServer::storescp(const QStringList &options)
{
    std::unique_ptr<DicomServer> server(
        new DicomServer(QStringLiteral("storescp"), QStringLiteral("STORESCP")));
    server->m_arguments =
        QStringList{QStringLiteral("-aet"), server->aeTitle(), QStringLiteral("-od"), server->folder()}
        + options + QStringList{QString::number(server->port())};
    server->start();
    return server;
}

std::unique_ptr<DicomServer> DicomServer::dcmqrscp(const QVector<Peer> &peers, const QStringList &options)
{
    std::unique_ptr<DicomServer> server(
        new DicomServer(QStringLiteral("dcmqrscp"), QStringLiteral("DCMQRSCP")));
    QByteArray config = "NetworkTCPPort = " + QByteArray::number(server->port())
        + "\nMaxPDUSize = 131072\nMaxAssociations = 16\nHostTable BEGIN\n";
    int number = 0;
    for (const Peer &peer : peers) {
        config += "peer" + QByteArray::number(++number) + " = (" + peer.aeTitle.toUtf8() + ", "
            + host().toUtf8() + ", " + QByteArray::number(peer.port) + ")\n";
    }
    config += "HostTable END\nVendorTable BEGIN\nVendorTable END\nAETable BEGIN\n"
        + server->aeTitle().toUtf8() + ' ' + server->folder().toUtf8()
        + " RW (10000, 4096mb) ANY\nAETable END\n";
    server->writeFile(QLatin1String(configName), config);
    server->m_arguments =
        options + QStringList{QStringLiteral("-c"), server->m_folder.filePath(QLatin1String(configName))};
    server->start();
    return server;
}

std::unique_ptr<DicomServer> DicomServer::orthanc(const QVector<Peer> &peers, const QJsonObject &settings)
{
    std::unique_ptr<DicomServer> server(
        new DicomServer(QStringLiteral("Orthanc"), QStringLiteral("ORTHANC")));
    server->m_httpPort = freePort();
    QJsonObject modalities;
    for (const Peer &peer : peers) {
        modalities[peer.aeTitle] = QJsonArray{peer.aeTitle, host(), peer.port};
    }
    QJsonObject config{{QStringLiteral("DicomAet"), server->aeTitle()},
        {QStringLiteral("DicomPort"), server->port()}, {QStringLiteral("HttpPort"), server->m_httpPort},
        {QStringLiteral("StorageDirectory"), server->folder()},
        {QStringLiteral("IndexDirectory"), server->folder()}, {QStringLiteral("Plugins"), QJsonArray()},
        {QStringLiteral("RemoteAccessAllowed"), false}, {QStringLiteral("AuthenticationEnabled"), false},
        {QStringLiteral("DicomModalities"), modalities}, {QStringLiteral("SynchronousCMove"), true},
        {QStringLiteral("DefaultEncoding"), QStringLiteral("Utf8")}, {QStringLiteral("SaveJobs"), false},
        {QStringLiteral("DicomAlwaysAllowFind"), true}, {QStringLiteral("DicomAlwaysAllowGet"), true},
        {QStringLiteral("UnknownSopClassAccepted"), true}};
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
        config[setting.key()] = setting.value();
    }
    server->writeFile(QLatin1String(configName), QJsonDocument(config).toJson());
    server->m_arguments = QStringList{server->m_folder.filePath(QLatin1String(configName))};
    server->start();
    return server;
}

QString DicomServer::folder() const
{
    return m_folder.filePath(QLatin1String(dataName));
}

QStringList DicomServer::files() const
{
    QStringList found;
    QDirIterator walk(folder(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (!walk.fileName().startsWith(QLatin1String("index"))) {
            found.append(path);
        }
    }
    return found;
}

QByteArray DicomServer::log() const
{
    QFile file(m_folder.filePath(QStringLiteral("log")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void DicomServer::writeFile(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(file.fileName()));
    }
}

bool DicomServer::answers() const
{
    const QString seconds = QString::number(echoTimeoutS);
    return runTool(QStringLiteral("echoscu"),
               {QStringLiteral("-q"), QStringLiteral("-to"), seconds, QStringLiteral("-ta"), seconds,
                   QStringLiteral("-td"), seconds, QStringLiteral("-aec"), m_aeTitle, host(),
                   QString::number(m_port)})
               .exitCode
        == 0;
}

void DicomServer::start()
{
    m_process = std::make_unique<ServerProcess>();
    m_process->setProcessEnvironment(environment());
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardOutputFile(m_folder.filePath(QStringLiteral("log")), QIODevice::Append);
    m_process->start(m_program, m_arguments);
    QElapsedTimer clock;
    clock.start();
    while (m_process->waitForStarted() && !answers()) {
        if (clock.hasExpired(startTimeoutMs) || m_process->waitForFinished(lookAgainMs)) {
            break;
        }
    }
    if (m_process->state() != QProcess::Running || clock.hasExpired(startTimeoutMs)) {
        const QByteArray words = log();
        stop();
        qFatal("%s does not come up: %s", qPrintable(m_program), words.constData());
    }
}

void DicomServer::stop()
{
    if (m_process && m_process->state() != QProcess::NotRunning) {
        signalAll(SIGKILL);
        m_process->waitForFinished();
    }
    m_process.reset();
}

void DicomServer::suspend() const
{
    signalAll(SIGSTOP);
}

void DicomServer::resume() const
{
    signalAll(SIGCONT);
}

void DicomServer::signalAll(int signal) const
{
    const auto group = pid_t(m_process->processId());
    if (group > 0) {
        ::kill(-group, signal);
    }
}

void DicomServer::fill(const QStringList &paths, const QStringList &options) const
{
    const ToolRun sent = runTool(QStringLiteral("storescu"),
        QStringList{QStringLiteral("+sd"), QStringLiteral("+r"), QStringLiteral("-aec"), m_aeTitle} + options
            + QStringList{host(), QString::number(m_port)} + paths);
    if (sent.exitCode != 0) {
        qFatal("storescu fails: %s", sent.output.constData());
    }
}

QJsonDocument DicomServer::rest(
    const QString &path, const QByteArray &method, const QByteArray &body, int *httpStatus) const
{
    QNetworkAccessManager network;
    QNetworkRequest request(
        QUrl(QStringLiteral("http://%1:%2%3").arg(host(), QString::number(m_httpPort), path)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setTransferTimeout(restTimeoutMs);
    const std::unique_ptr<QNetworkReply> reply(network.sendCustomRequest(request, method, body));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    if (httpStatus) {
        *httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }
    return QJsonDocument::fromJson(reply->readAll());
}
