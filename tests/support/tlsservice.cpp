#include "tlsservice.h"

#include <QFile>
#include <QSslKey>
#include <QSslSocket>

TlsService::TlsService(QString pem, QByteArray answer)
    : m_pem(std::move(pem))
    , m_answer(std::move(answer))
{
    if (!listen(QHostAddress::LocalHost)) {
        qFatal("no port: %s", qPrintable(errorString()));
    }
}

QString TlsService::address() const
{
    return QStringLiteral("https://127.0.0.1:%1/web").arg(serverPort());
}

void TlsService::incomingConnection(qintptr descriptor)
{
    auto *line = new QSslSocket(this);
    QFile file(m_pem);
    if (!line->setSocketDescriptor(descriptor) || !file.open(QIODevice::ReadOnly)) {
        qFatal("no TLS with %s", qPrintable(m_pem));
    }
    line->setLocalCertificate(m_pem);
    line->setPrivateKey(QSslKey(file.readAll(), QSsl::Rsa));
    connect(line, &QSslSocket::readyRead, line, [this, line] {
        if (line->readAll().contains("\r\n\r\n")) {
            line->write(m_answer);
            line->disconnectFromHost();
        }
    });
    connect(line, &QSslSocket::disconnected, line, &QObject::deleteLater);
    line->startServerEncryption();
}
