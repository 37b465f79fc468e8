#pragma once

#include <QByteArrayList>
#include <QTcpServer>

/**
 * An HTTPS service that answers every request with the same bytes, with a certificate of the test's choice.
 * Needs the caller's event loop.
 */
class TlsService : public QTcpServer
{
public:
    /// @param pem a file with certificate and key. @param answer with its status line
    TlsService(QString pem, QByteArray answer);

    QString address() const;
    /// Of the requests so far, in their order.
    QByteArrayList bodies() const { return m_bodies; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    const QString m_pem;
    const QByteArray m_answer;
    QByteArrayList m_bodies;
};
