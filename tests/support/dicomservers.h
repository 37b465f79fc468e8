#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

class QProcess;

/// What a program said and how it ended.
struct ToolRun
{
    int exitCode = -1; ///< -1 where it did not start, crashed or took too long
    QByteArray output; ///< standard output and error together
};

/// Runs a command line program to its end (TCP_NODELAY set). A missing program ends the test run with its
/// name.
ToolRun runTool(const QString &program, const QStringList &arguments, int timeoutMs = 120000);

/// A port of the loopback that nobody listens on at the moment.
quint16 freePort();

/**
 * A real DICOM server on a free port of the loopback with its data in a temporary folder: started and
 * answering C-ECHO when its maker returns, ended with its children by the destructor, and by the system where
 * the test dies. What cannot be started ends the test run with the server's own words. Make it on the main
 * thread.
 */
class DicomServer
{
public:
    /// Whom a server knows, so that it sends to him what he retrieves by C-MOVE.
    struct Peer
    {
        QString aeTitle;
        quint16 port;
    };
    /// Stores what it gets as files below folder(), with their meta headers.
    /// @param options of the program besides its port, title and folder
    static std::unique_ptr<DicomServer> storescp(const QStringList &options = {});
    /// An archive with C-FIND, C-MOVE and C-GET, empty at first.
    /// @param options of the program besides its configuration
    static std::unique_ptr<DicomServer> dcmqrscp(
        const QVector<Peer> &peers = {}, const QStringList &options = {});
    /// An archive with a REST interface too. @param settings added to its configuration, or in place of ours
    static std::unique_ptr<DicomServer> orthanc(
        const QVector<Peer> &peers = {}, const QJsonObject &settings = {});
    ~DicomServer();
    DicomServer(const DicomServer &) = delete;
    DicomServer &operator=(const DicomServer &) = delete;

    QString aeTitle() const { return m_aeTitle; }
    static QString host() { return QStringLiteral("127.0.0.1"); }
    quint16 port() const { return m_port; }
    quint16 httpPort() const { return m_httpPort; } ///< of orthanc's REST interface, otherwise 0
    /// Where the server keeps its data.
    QString folder() const;
    /// The files there, with their whole paths; an archive's own index files are left out.
    QStringList files() const;
    QByteArray log() const;

    /// Sends files and folders to the server with dcmtk's own program, which must succeed.
    void fill(const QStringList &paths, const QStringList &options = {}) const;
    /// What orthanc's REST interface answers; a null document and httpStatus where it refuses.
    QJsonDocument rest(const QString &path, const QByteArray &method = "GET", const QByteArray &body = {},
        int *httpStatus = nullptr) const;

    void stop(); ///< at once, like a power cut
    void start(); ///< again on the same port with the same data
    void suspend() const; ///< it answers nothing any more, its connections stay
    void resume() const;

private:
    DicomServer(QString program, QString aeTitle);
    bool answers() const;
    void writeFile(const QString &name, const QByteArray &content) const;
    void signalAll(int signal) const;

    const QString m_program;
    const QString m_aeTitle;
    const quint16 m_port;
    quint16 m_httpPort = 0;
    QStringList m_arguments;
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
};
