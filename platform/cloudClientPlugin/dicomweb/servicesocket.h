#pragma once

#include "webfailure.h"
#include "webservice.h"

#include <QObject>
#include <QTcpSocket>

#include <memory>

/**
 * A connection to a service, through its proxy, with TLS where its address says so: the certificate is
 * verified as everywhere. Small packets are sent at once, as the end of a body must not wait for the answer
 * to its beginning.
 */
class ServiceSocket : public QObject
{
    Q_OBJECT

public:
    explicit ServiceSocket(const WebService &service, QObject *parent = nullptr);
    ~ServiceSocket() override;

    /// Connects anew; ready() or failed() tells the end, which may come before this returns.
    void open();
    void close();
    bool isReady() const { return m_isReady; }

    /// Whether the other end is a proxy that is to pass on what it is asked.
    bool isToProxy() const;
    /// The value of the header Proxy-Authorization; empty for none.
    QByteArray proxyAuthorization() const;

    /// @return false where the connection has ended; nothing else may tell that
    bool write(const char *bytes, qint64 length) { return m_socket->write(bytes, length) == length; }
    /// What has been written and not yet sent.
    qint64 pendingBytes() const;
    /// Whether there is something to be told by came() that the event loop has not yet told.
    bool hasMore() const { return m_socket->bytesAvailable() > 0; }
    void readMore();

signals:
    void ready();
    void wrote();
    /// @param bytes are there until the receiver returns
    void came(const QByteArray &bytes);
    /// The connection has ended, or has not come up.
    void failed(const WebFailure &failure);

private:
    bool readPieces();
    void onReady();
    void onFailed(QAbstractSocket::SocketError error);

    const WebService m_service;
    const QNetworkProxy m_proxy; ///< as it is for this service
    std::unique_ptr<QTcpSocket> m_socket;
    QByteArray m_piece; ///< of what comes
    bool m_isReady = false;
};
