#include "lineproxy.h"

#include <QTcpSocket>

LineProxy::LineProxy(quint16 target)
    : m_target(target)
{
    if (!listen(QHostAddress::LocalHost)) {
        qFatal("no port: %s", qPrintable(errorString()));
    }
    connect(this, &QTcpServer::newConnection, this, &LineProxy::accept);
}

void LineProxy::accept()
{
    const Line line{nextPendingConnection(), new QTcpSocket(this)};
    m_lines.append(line);
    line.server->setReadBufferSize(64 << 10);
    line.server->connectToHost(QHostAddress::LocalHost, m_target);
    connect(line.client, &QTcpSocket::readyRead, this, [this, line] {
        const QByteArray request = line.client->readAll();
        m_asked += request;
        line.server->write(request);
    });
    connect(line.server, &QTcpSocket::readyRead, this, [this, line] { pass(line); });
    connect(line.client, &QTcpSocket::disconnected, this, [this, line] { close(line.client); });
    connect(line.server, &QTcpSocket::disconnected, this, [this, line] {
        pass(line);
        if (m_left != 0) {
            line.client->disconnectFromHost();
        }
    });
}

void LineProxy::pass(const Line &line)
{
    const qint64 most = m_left < 0 ? line.server->bytesAvailable() : m_left;
    const QByteArray bytes = line.server->read(most);
    m_left = m_left < 0 ? -1 : m_left - bytes.size();
    m_answered += bytes.size();
    line.client->write(bytes);
}

void LineProxy::release()
{
    m_left = -1;
    for (const Line &line : qAsConst(m_lines)) {
        pass(line);
        if (line.server->state() == QAbstractSocket::UnconnectedState) {
            line.client->disconnectFromHost();
        }
    }
}

void LineProxy::close(QTcpSocket *socket)
{
    for (int at = m_lines.size() - 1; at >= 0; --at) {
        if (m_lines[at].client == socket) {
            const Line line = m_lines.takeAt(at);
            line.server->disconnect(this);
            line.server->abort();
            line.server->deleteLater();
            line.client->deleteLater();
        }
    }
}

void LineProxy::cut()
{
    m_left = -1;
    const QVector<Line> lines = m_lines;
    for (const Line &line : lines) {
        line.client->abort();
    }
}

void LineProxy::forget()
{
    m_asked.clear();
    m_answered = 0;
}
