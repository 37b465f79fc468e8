#include "servicesocket.h"

#include <QSslSocket>
#include <QTimer>

namespace {

constexpr int pieceBytes = 256 << 10;
constexpr int piecesAtOnce = 8; ///< in one turn of the event loop

QNetworkProxy proxyOf(const WebService &service)
{
    QNetworkProxy proxy = service.proxy;
    if (proxy.type() == QNetworkProxy::DefaultProxy) {
        proxy = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(service.address)).value(0);
    }
    if (proxy.type() == QNetworkProxy::HttpCachingProxy) {
        proxy.setType(QNetworkProxy::HttpProxy);
    }
    return proxy;
}

WebProblem problemOfHandshake(const QTcpSocket &socket)
{
    const auto *tls = qobject_cast<const QSslSocket *>(&socket);
    return tls && !tls->sslHandshakeErrors().isEmpty() ? WebProblem::CertificateRefused : WebProblem::NoTls;
}

WebProblem problemOf(QAbstractSocket::SocketError error, const QTcpSocket &socket)
{
    switch (error) {
    case QAbstractSocket::SslHandshakeFailedError:
        return problemOfHandshake(socket);
    case QAbstractSocket::SocketTimeoutError:
    case QAbstractSocket::ProxyConnectionTimeoutError:
        return WebProblem::TimedOut;
    case QAbstractSocket::RemoteHostClosedError:
        return WebProblem::LineCut;
    default:
        return WebProblem::NoRoute;
    }
}

} // namespace

ServiceSocket::ServiceSocket(const WebService &service, QObject *parent)
    : QObject(parent)
    , m_service(service)
    , m_proxy(proxyOf(service))
    , m_piece(pieceBytes, Qt::Uninitialized)
{ }

ServiceSocket::~ServiceSocket()
{
    if (m_socket) {
        m_socket->disconnect(this);
    }
}

bool ServiceSocket::isToProxy() const
{
    // It may tunnel nothing but TLS.
    return m_proxy.type() == QNetworkProxy::HttpProxy && !m_service.isSecure();
}

QByteArray ServiceSocket::proxyAuthorization() const
{
    return isToProxy() && !m_proxy.user().isEmpty() ? WebService::basic(m_proxy.user(), m_proxy.password())
                                                    : QByteArray();
}

void ServiceSocket::open()
{
    close();
    const QUrl &address = m_service.address;
    const QString host = isToProxy() ? m_proxy.hostName() : address.host();
    const int port = isToProxy() ? m_proxy.port() : WebService::portOf(address);
    QSslSocket *tls = m_service.isSecure() ? new QSslSocket : nullptr;
    m_socket.reset(tls ? tls : new QTcpSocket);
    m_socket->setProxy(isToProxy() ? QNetworkProxy(QNetworkProxy::NoProxy) : m_proxy);
    connect(m_socket.get(), &QTcpSocket::bytesWritten, this, &ServiceSocket::wrote);
    connect(m_socket.get(), &QTcpSocket::readyRead, this, &ServiceSocket::readMore);
    connect(m_socket.get(), &QTcpSocket::errorOccurred, this, &ServiceSocket::onFailed);
    if (!tls) {
        connect(m_socket.get(), &QTcpSocket::connected, this, &ServiceSocket::onReady);
        // What the system takes at once is not copied before.
        m_socket->connectToHost(
            host, static_cast<quint16>(port), QIODevice::ReadWrite | QIODevice::Unbuffered);
        return;
    }
    QSslConfiguration configuration = m_service.tls();
    configuration.setAllowedNextProtocols({QSslConfiguration::NextProtocolHttp1_1});
    tls->setSslConfiguration(configuration);
    connect(tls, &QSslSocket::encrypted, this, &ServiceSocket::onReady);
    connect(tls, &QSslSocket::encryptedBytesWritten, this, &ServiceSocket::wrote);
    tls->connectToHostEncrypted(host, static_cast<quint16>(port));
}

void ServiceSocket::close()
{
    m_isReady = false;
    if (m_socket) {
        m_socket->disconnect(this);
        m_socket->abort();
        QTcpSocket *socket = m_socket.release(); // it may be what has called us
        socket->setParent(this);
        socket->deleteLater();
    }
}

void ServiceSocket::onReady()
{
    m_isReady = true;
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    emit ready();
}

qint64 ServiceSocket::pendingBytes() const
{
    const auto *tls = qobject_cast<const QSslSocket *>(m_socket.get());
    return m_socket->bytesToWrite() + (tls ? tls->encryptedBytesToWrite() : 0);
}

/// @return whether there may be more; whoever hears of a piece may close
bool ServiceSocket::readPieces()
{
    const QTcpSocket *socket = m_socket.get();
    for (int piece = 0; piece < piecesAtOnce; ++piece) {
        const qint64 length =
            m_socket && m_socket.get() == socket ? m_socket->read(m_piece.data(), m_piece.size()) : 0;
        if (length <= 0) {
            return false;
        }
        emit came(QByteArray::fromRawData(m_piece.constData(), static_cast<int>(length)));
    }
    return m_socket && m_socket.get() == socket;
}

/// Reading is what finds an unbuffered connection at its end: the socket does not tell it then.
void ServiceSocket::readMore()
{
    const QTcpSocket *socket = m_socket.get();
    if (readPieces()) { // others have their turn
        QTimer::singleShot(0, m_socket.get(), [this] { readMore(); });
    } else if (m_socket && m_socket.get() == socket && m_isReady
        && m_socket->state() == QAbstractSocket::UnconnectedState) {
        m_isReady = false;
        emit failed({WebProblem::LineCut, m_socket->errorString(), 0});
    }
}

void ServiceSocket::onFailed(QAbstractSocket::SocketError error)
{
    const QTcpSocket *socket = m_socket.get();
    m_isReady = false;
    const WebFailure failure{problemOf(error, *m_socket), m_socket->errorString(), 0};
    while (readPieces()) { }
    if (m_socket.get() == socket) {
        emit failed(failure);
    }
}
