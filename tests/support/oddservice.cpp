#include "oddservice.h"

#include <QTcpSocket>

OddService::OddService(QByteArray answer, After after)
    : m_answer(std::move(answer))
    , m_after(after)
{
    if (!listen(QHostAddress::LocalHost)) {
        qFatal("no port: %s", qPrintable(errorString()));
    }
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *line = nextPendingConnection();
        connect(line, &QTcpSocket::readyRead, line, [this, line] {
            const QByteArray request = line->readAll();
            m_asked += request;
            if (m_answer.isEmpty() || !request.contains("\r\n\r\n")) {
                return;
            }
            line->write(m_answer);
            if (m_after == After::HangUp) {
                line->disconnectFromHost();
            }
        });
        connect(line, &QTcpSocket::disconnected, line, &QObject::deleteLater);
    });
}

QString OddService::address() const
{
    return QStringLiteral("http://127.0.0.1:%1/web").arg(serverPort());
}

QByteArray httpAnswer(const QByteArray &status, const QByteArray &type, const QByteArray &body)
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: " + type
        + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
