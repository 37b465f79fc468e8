#include "oddservice.h"

#include <QTcpSocket>

OddService::OddService(const QByteArray &answer, After after)
    : OddService([answer](const QByteArray & /*request*/) { return answer; }, after)
{ }

OddService::OddService(std::function<QByteArray(const QByteArray &request)> answerTo, After after)
    : m_answer(std::move(answerTo))
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
            const QByteArray given = m_answer(request);
            if (given.isEmpty() || !request.contains("\r\n\r\n")) {
                return;
            }
            line->write(given);
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
