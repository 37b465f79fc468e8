#pragma once

#include "cloudclientplugin_export.h"
#include "httpanswerreader.h"
#include "webfailure.h"
#include "webservice.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrlQuery>

#include <memory>
#include <vector>

class HttpLine;
struct HttpRequest;

/**
 * The connections to one DICOMweb service: kept alive, HTTP/2 where the service offers it, certificates
 * verified; large bodies have connections of their own. Redirections to another server are not followed, as
 * credentials would follow them; no cookies are kept. Lives on one thread with an event loop; replies belong
 * to the caller.
 */
class CLOUDCLIENTPLUGIN_EXPORT WebClient : public QObject
{
    Q_OBJECT

public:
    static constexpr int patienceMs = 30000; ///< of silence before a request is given up

    explicit WebClient(WebService service, QObject *parent = nullptr);
    ~WebClient() override;

    const WebService &service() const { return m_service; }
    void setPatience(int milliseconds) { m_patienceMs = milliseconds; }

    /// None where a request may be sent at all.
    WebFailure refusal() const;
    /// @param resource below the service's address. @param accept media types that we can read
    QNetworkReply *get(
        const QString &resource, const QUrlQuery &query = {}, const QByteArray &accept = dicomJson);
    QNetworkReply *post(const QString &resource, const QByteArray &contentType, const QByteArray &body);
    /// @name Large bodies, over connections of their own, of HTTP/1.1
    /// @return a line of ours, busy until it tells the answer
    /// @{
    /// @param body is read while it is sent, and must live until the line has finished
    /// @param mostAnswer bytes that are taken of what comes back
    HttpLine *upload(
        const QString &resource, const QByteArray &contentType, QIODevice *body, qint64 mostAnswer);
    /// @param take gets the body of a good answer while it comes
    HttpLine *download(const QString &resource, const QByteArray &accept, const HttpAnswerReader::Take &take);
    /// @}

    /// Removes a resource, where a service offers that.
    QNetworkReply *remove(const QString &resource);

    /// What a reply that has finished means; None where it succeeded.
    static WebFailure failureOf(QNetworkReply &reply);

    static const QByteArray dicomJson;

private:
    QNetworkRequest request(const QString &resource, const QUrlQuery &query, const QByteArray &accept) const;
    QNetworkReply *watched(QNetworkReply *reply) const;
    HttpLine &idleLine();
    HttpLine *sendOverLine(HttpRequest request);

    const WebService m_service;
    QNetworkAccessManager m_network;
    int m_patienceMs = patienceMs;
    std::vector<std::unique_ptr<HttpLine>> m_lines;
};
