#pragma once

#include "cloudclientplugin_export.h"
#include "webfailure.h"
#include "webservice.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrlQuery>

/**
 * The connections to one DICOMweb service: kept alive, HTTP/2 where the service offers it, certificates
 * verified. Redirections to another server are not followed, as credentials would follow them; no cookies are
 * kept. Lives on one thread with an event loop; replies belong to the caller.
 */
class CLOUDCLIENTPLUGIN_EXPORT WebClient : public QObject
{
    Q_OBJECT

public:
    static constexpr int patienceMs = 30000; ///< of silence before a request is given up

    explicit WebClient(WebService service, QObject *parent = nullptr);

    const WebService &service() const { return m_service; }
    void setPatience(int milliseconds) { m_patienceMs = milliseconds; }

    /// None where a request may be sent at all.
    WebFailure refusal() const;
    /// @param resource below the service's address. @param accept media types that we can read
    QNetworkReply *get(
        const QString &resource, const QUrlQuery &query = {}, const QByteArray &accept = dicomJson);
    /// @param body is read while it is sent, and must outlive the reply
    QNetworkReply *post(const QString &resource, const QByteArray &contentType, QIODevice *body);

    /// Removes a resource, where a service offers that.
    QNetworkReply *remove(const QString &resource);

    /// What a reply that has finished means; None where it succeeded.
    static WebFailure failureOf(QNetworkReply &reply);

    static const QByteArray dicomJson;

private:
    QNetworkRequest request(const QString &resource, const QUrlQuery &query, const QByteArray &accept) const;
    QNetworkReply *watched(QNetworkReply *reply) const;

    const WebService m_service;
    QNetworkAccessManager m_network;
    int m_patienceMs = patienceMs;
};
