#include "tlsservice.h"

#include <QFile>
#include <QRegularExpression>
#include <QSslKey>
#include <QSslSocket>

namespace {

constexpr auto caseless = QRegularExpression::CaseInsensitiveOption;

} // namespace

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
    connect(line, &QSslSocket::readyRead, line, [this, line, asked = QByteArray()]() mutable {
        asked += line->readAll();
        static const QRegularExpression length(QStringLiteral("\r\ncontent-length: *(\\d+)"), caseless);
        const int head = asked.indexOf("\r\n\r\n") + 4;
        const int body = length.match(QString::fromLatin1(asked.left(head))).captured(1).toInt();
        if (head >= 4 && asked.size() >= head + body) {
            m_bodies.append(asked.mid(head, body));
            asked.clear();
            line->write(m_answer);
        }
    });
    connect(line, &QSslSocket::disconnected, line, &QObject::deleteLater);
    line->startServerEncryption();
}
