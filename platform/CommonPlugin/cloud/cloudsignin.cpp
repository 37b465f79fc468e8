#include "cloudsignin.h"

#include "boundedanswer.h"
#include "dicomjson.h"
#include "secretstore.h"
#include "webclient.h"

#include <QNetworkCookie>
#include <QNetworkReply>
#include <QTimer>

namespace {

constexpr qint64 longestAnswer = qint64(1) << 20; ///< no answer to this question is as long
constexpr int patienceMs = 15000;
constexpr int noContent = 204;

/// The service's own name for the session, where it gives one.
QByteArray sessionCookie(const QNetworkReply &reply)
{
    const auto cookies = reply.header(QNetworkRequest::SetCookieHeader).value<QList<QNetworkCookie>>();
    for (const QNetworkCookie &cookie : cookies) {
        const QByteArray name = cookie.name().toLower();
        if (!cookie.value().isEmpty() && (name.contains("sess") || name.contains("token"))) {
            return cookie.value();
        }
    }
    return {};
}

/// A page in place of an answer, or none at all, at this address: nothing of the kind is there.
WebFailure asSignIn(WebFailure failure)
{
    if (failure.problem == WebProblem::NotFound || failure.problem == WebProblem::BadAnswer
        || failure.problem == WebProblem::Refused) {
        failure.problem = WebProblem::NotDicomWeb;
    }
    return failure;
}

} // namespace

CloudSignIn::CloudSignIn(QObject *parent)
    : QObject(parent)
{ }

CloudSignIn::~CloudSignIn()
{
    if (m_reply) {
        m_reply->disconnect(this);
    }
}

void CloudSignIn::start(const CloudAccount &account, const QString &password)
{
    if (!m_isRunning) {
        m_isRunning = true;
        ask(account, password);
    }
}

void CloudSignIn::startRemembered()
{
    if (m_isRunning) {
        return;
    }
    m_isRunning = true;
    const CloudAccount account = CloudAccount::read();
    if (!CloudAccount::isCloudUser() || !account.remembers) { // also after signing out
        QTimer::singleShot(0, this, [this] { end({WebProblem::NoSecret, {}, 0}); });
        return;
    }
    SecretStore::read(account.secretName(), this, [this, account](const SecretAnswer &answer) {
        if (!m_isRunning) {
            return;
        }
        if (answer.isGood()) {
            ask(account, answer.secret);
        } else {
            end({WebProblem::NoSecret, SecretStore::text(answer), 0});
        }
    });
}

void CloudSignIn::ask(const CloudAccount &account, const QString &password)
{
    m_user = account.user;
    if (m_client) {
        m_client.release()->deleteLater(); // this may be called from a signal of its reply
    }
    m_client = std::make_unique<WebClient>(account.service(password));
    m_client->setPatience(patienceMs);
    const WebFailure refusal = m_client->refusal();
    if (!refusal.isNone()) {
        QTimer::singleShot(0, this, [this, refusal] { end(refusal); });
        return;
    }
    m_reply =
        m_client->get(QStringLiteral("studies"), QUrlQuery({{QStringLiteral("limit"), QStringLiteral("1")}}));
    m_answer = new BoundedAnswer(*m_reply, longestAnswer);
    connect(m_reply, &QNetworkReply::finished, this, &CloudSignIn::answered);
}

void CloudSignIn::answered()
{
    QNetworkReply *reply = m_reply;
    if (!reply) {
        return;
    }
    m_reply.clear();
    reply->deleteLater();
    const QByteArray answer = m_answer->read();
    WebFailure failure = m_answer->isTooLong() ? WebFailure{WebProblem::NotDicomWeb, {}, 0}
                                               : asSignIn(WebClient::failureOf(*reply));
    bool isUnderstood = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == noContent;
    if (failure.isNone() && !isUnderstood) {
        DicomJson::read(answer, &isUnderstood);
        failure.problem = isUnderstood ? WebProblem::None : WebProblem::NotDicomWeb;
    }
    if (!failure.isNone()) {
        end(failure);
        return;
    }
    CloudSession session;
    session.service = m_client->service();
    session.user = m_user;
    session.id = sessionCookie(*reply);
    if (session.id.isEmpty()) {
        session.id = CloudSession::opaqueId();
    }
    m_isRunning = false;
    emit signedIn(session);
}

void CloudSignIn::cancel()
{
    if (m_isRunning) {
        QTimer::singleShot(0, this, [this] { end({WebProblem::Stopped, {}, 0}); });
    }
}

void CloudSignIn::end(const WebFailure &failure)
{
    if (!m_isRunning) {
        return;
    }
    m_isRunning = false;
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
        m_reply.clear();
    }
    emit failed(failure);
}
