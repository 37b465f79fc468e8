#include "webclient.h"

#include "httpline.h"
#include "httpstatus.h"

#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QTimer>

#include <algorithm>

namespace {

constexpr qint64 mostWords = 64 << 10; ///< of an answer that is not what was asked for
constexpr char timedOutProperty[] = "timedOut";
constexpr char certificateProperty[] = "certificateRefused";

/// Keeps nothing: a session is what the caller's header says.
class NoCookies : public QNetworkCookieJar
{
public:
    using QNetworkCookieJar::QNetworkCookieJar;
    QList<QNetworkCookie> cookiesForUrl(const QUrl & /*url*/) const override { return {}; }
    bool setCookiesFromUrl(const QList<QNetworkCookie> & /*cookies*/, const QUrl & /*url*/) override
    {
        return false;
    }
};

WebProblem problemOfLine(QNetworkReply &reply)
{
    if (reply.property(timedOutProperty).toBool()) {
        return WebProblem::TimedOut;
    }
    switch (reply.error()) {
    case QNetworkReply::NoError:
        return WebProblem::None;
    case QNetworkReply::OperationCanceledError:
        return WebProblem::Stopped;
    case QNetworkReply::SslHandshakeFailedError:
        return reply.property(certificateProperty).toBool() ? WebProblem::CertificateRefused
                                                            : WebProblem::NoTls;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return WebProblem::TimedOut;
    case QNetworkReply::RemoteHostClosedError:
        return WebProblem::LineCut;
    case QNetworkReply::TooManyRedirectsError:
    case QNetworkReply::InsecureRedirectError:
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return WebProblem::NotDicomWeb;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::UnknownContentError:
        return WebProblem::BadAnswer;
    default:
        return WebProblem::NoRoute;
    }
}

} // namespace

const QByteArray WebClient::dicomJson("application/dicom+json");

WebClient::WebClient(WebService service, QObject *parent)
    : QObject(parent)
    , m_service(std::move(service))
{
    m_network.setCookieJar(new NoCookies);
    m_network.setProxy(m_service.proxy);
    m_network.setRedirectPolicy(QNetworkRequest::SameOriginRedirectPolicy);
}

WebClient::~WebClient() = default;

WebFailure WebClient::refusal() const
{
    const QString scheme = m_service.address.scheme();
    if (!m_service.address.isValid() || m_service.address.host().isEmpty()
        || (scheme != QLatin1String("https") && scheme != QLatin1String("http"))) {
        return {WebProblem::NotDicomWeb, m_service.address.toDisplayString(QUrl::RemoveUserInfo), 0};
    }
    return {m_service.exposesCredentials() ? WebProblem::PlainRefused : WebProblem::None, {}, 0};
}

QNetworkRequest WebClient::request(
    const QString &resource, const QUrlQuery &query, const QByteArray &accept) const
{
    QUrl url = m_service.at(resource);
    url.setUserInfo(QString());
    url.setQuery(query);
    QNetworkRequest request(url);
    request.setRawHeader("Accept", accept);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, true);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    if (!m_service.authorization.isEmpty()) {
        request.setRawHeader("Authorization", m_service.authorization);
    }
    if (!m_service.authorities.isEmpty()) {
        request.setSslConfiguration(m_service.tls());
    }
    return request;
}

/// Gives a reply up after silence in both directions, not after a time: large bodies take theirs.
QNetworkReply *WebClient::watched(QNetworkReply *reply) const
{
    auto *silence = new QTimer(reply);
    silence->setSingleShot(true);
    const auto heard = [silence, wait = m_patienceMs] { silence->start(wait); };
    connect(silence, &QTimer::timeout, reply, [reply] {
        reply->setProperty(timedOutProperty, true);
        reply->abort();
    });
    connect(
        reply, &QNetworkReply::sslErrors, reply, [reply] { reply->setProperty(certificateProperty, true); });
    connect(reply, &QNetworkReply::uploadProgress, silence, heard);
    connect(reply, &QNetworkReply::downloadProgress, silence, heard);
    connect(reply, &QNetworkReply::encrypted, silence, heard);
    connect(reply, &QNetworkReply::finished, silence, &QTimer::stop);
    heard();
    return reply;
}

QNetworkReply *WebClient::get(const QString &resource, const QUrlQuery &query, const QByteArray &accept)
{
    return watched(m_network.get(request(resource, query, accept)));
}

HttpLine &WebClient::idleLine()
{
    const auto idle =
        std::find_if(m_lines.cbegin(), m_lines.cend(), [](const auto &line) { return line->isIdle(); });
    if (idle != m_lines.cend()) {
        return **idle;
    }
    m_lines.push_back(std::make_unique<HttpLine>(m_service, m_patienceMs));
    return *m_lines.back();
}

QNetworkReply *WebClient::post(const QString &resource, const QByteArray &contentType, const QByteArray &body)
{
    QNetworkRequest asked = request(resource, {}, dicomJson);
    asked.setHeader(QNetworkRequest::ContentTypeHeader, contentType);
    return watched(m_network.post(asked, body));
}

HttpLine *WebClient::sendOverLine(HttpRequest request)
{
    if (!m_service.authorization.isEmpty()) {
        request.headers.append({"Authorization", m_service.authorization});
    }
    HttpLine &line = idleLine();
    line.send(request);
    return &line;
}

HttpLine *WebClient::upload(
    const QString &resource, const QByteArray &contentType, QIODevice *body, qint64 mostAnswer)
{
    return sendOverLine({"POST", m_service.at(resource),
        {{"Accept", dicomJson}, {"Content-Type", contentType}}, body, mostAnswer});
}

HttpLine *WebClient::download(
    const QString &resource, const QByteArray &accept, const HttpAnswerReader::Take &take)
{
    return sendOverLine({"GET", m_service.at(resource), {{"Accept", accept}}, nullptr, mostWords, take});
}

QNetworkReply *WebClient::remove(const QString &resource)
{
    return watched(m_network.deleteResource(request(resource, {}, dicomJson)));
}

WebFailure WebClient::failureOf(QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QString reason = reply.attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    WebFailure refusal = HttpStatus::failureOf(status, reason);
    if (status >= HttpStatus::firstError && !reply.property(timedOutProperty).toBool()) {
        return refusal;
    }
    const WebProblem problem = problemOfLine(reply);
    return problem != WebProblem::None ? WebFailure{problem, reply.errorString(), status} : refusal;
}
