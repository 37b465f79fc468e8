#pragma once

#include <QTcpServer>
#include <QVector>

class QTcpSocket;

/**
 * Stands between a client and a server of the loopback, and stops or cuts what comes back at a byte. Needs
 * the caller's event loop.
 */
class LineProxy : public QTcpServer
{
public:
    explicit LineProxy(quint16 target);

    /// Lets this many more bytes of answers through, and then nothing until release().
    void holdAfter(qint64 bytes) { m_left = bytes; }
    bool isHolding() const { return m_left == 0; }
    void release();
    /// Hangs up on everybody.
    void cut();

    /// Bytes of answers that went through.
    qint64 answered() const { return m_answered; }
    /// All that was asked, one line after the other; forget() begins anew.
    const QByteArray &asked() const { return m_asked; }
    void forget();

private:
    struct Line
    {
        QTcpSocket *client;
        QTcpSocket *server;
    };

    void accept();
    void pass(const Line &line);
    void close(QTcpSocket *socket);

    const quint16 m_target;
    QVector<Line> m_lines;
    qint64 m_left = -1; ///< -1 for no end
    qint64 m_answered = 0;
    QByteArray m_asked;
};
