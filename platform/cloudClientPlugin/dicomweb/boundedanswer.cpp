#include "boundedanswer.h"

#include <QNetworkReply>

BoundedAnswer::BoundedAnswer(QNetworkReply &reply, qint64 most)
    : QObject(&reply)
    , m_reply(reply)
    , m_most(most)
{
    connect(&reply, &QNetworkReply::readyRead, this, &BoundedAnswer::read);
}

const QByteArray &BoundedAnswer::read()
{
    if (!m_isTooLong && m_reply.isOpen()) {
        m_isTooLong = m_bytes.size() + m_reply.bytesAvailable() > m_most;
        if (m_isTooLong) {
            m_bytes.clear();
            m_reply.abort(); // which tells the end
        } else {
            m_bytes += m_reply.readAll();
        }
    }
    return m_bytes;
}
