#pragma once

#include "cloudclientplugin_export.h"

#include <QByteArray>
#include <QObject>

class QNetworkReply;

/**
 * The body of an answer that is read whole, up to a bound: what goes beyond that ends the request, as
 * a service that is no such service, or is hostile, may send without end. Belongs to its reply.
 */
class CLOUDCLIENTPLUGIN_EXPORT BoundedAnswer : public QObject
{
    Q_OBJECT

public:
    /// To be made before anything of the reply is read.
    BoundedAnswer(QNetworkReply &reply, qint64 most);

    /// What has come by now.
    const QByteArray &read();
    bool isTooLong() const { return m_isTooLong; }

private:
    QNetworkReply &m_reply;
    const qint64 m_most;
    QByteArray m_bytes;
    bool m_isTooLong = false;
};
