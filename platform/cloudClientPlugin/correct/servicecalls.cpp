#include "servicecalls.h"

#include "boundedanswer.h"
#include "objectsretrieve.h"
#include "studysearch.h"

#include <QEventLoop>
#include <QNetworkReply>
#include <QTimer>

#include <memory>

namespace {

/// The metadata of many thousand objects fit.
constexpr qint64 mostAnswerBytes = qint64(256) << 20;

constexpr int lookMs = 50;
constexpr char plainJson[] = "application/json";

/// An event loop that looks at the wish to stop.
class Waiting
{
public:
    Waiting(const std::atomic<bool> *stop, const std::function<void()> &abort)
    {
        QObject::connect(&m_look, &QTimer::timeout, &m_loop, [stop, abort] {
            if (stop && *stop) {
                abort();
            }
        });
        m_look.start(lookMs);
    }
    void run()
    {
        if (!m_ended) {
            m_loop.exec(QEventLoop::ExcludeUserInputEvents);
        }
    }
    void end()
    {
        m_ended = true;
        m_loop.quit();
    }

private:
    QEventLoop m_loop;
    QTimer m_look;
    bool m_ended = false;
};

} // namespace

ServiceCalls::ServiceCalls(const WebService &service, const std::atomic<bool> *stop)
    : m_client(service)
    , m_stop(stop)
{ }

/// Runs until the request has finished; end gets what it finished with.
template <typename Request, typename End>
void ServiceCalls::await(Request &request, const End &end)
{
    Waiting waiting(m_stop, [&request] { request.abort(); });
    QObject::connect(&request, &Request::finished, &request, [&](const auto &result) {
        end(result);
        waiting.end();
    });
    waiting.run();
}

WebFailure ServiceCalls::retrieve(
    const QString &resource, const QString &folder, QStringList &files, const Count &count)
{
    ObjectsRetrieve request(m_client, resource, folder);
    QObject::connect(&request, &ObjectsRetrieve::received, &request, [&](const QString &path) {
        files.append(path);
        count(files.size());
    });
    WebFailure failure;
    await(request, [&](const WebFailure &end) { failure = end; });
    return failure;
}

StoreAnswer ServiceCalls::store(const QVector<StoredFile> &files)
{
    StoreRequest request(m_client, files);
    StoreAnswer answer;
    await(request, [&](const StoreAnswer &end) { answer = end; });
    return answer;
}

WebFailure ServiceCalls::search(const QString &resource, const QUrlQuery &query, QVector<DicomJson> &found)
{
    StudySearch request(m_client, resource, query);
    QObject::connect(
        &request, &StudySearch::found, &request, [&](const QVector<DicomJson> &some) { found += some; });
    WebFailure failure;
    await(request, [&](const WebFailure &end) { failure = end; });
    return failure;
}

WebFailure ServiceCalls::awaited(QNetworkReply *reply, QByteArray &answer)
{
    const std::unique_ptr<QNetworkReply> owned(reply);
    auto *body = new BoundedAnswer(*reply, mostAnswerBytes); // the reply's
    Waiting waiting(m_stop, [reply] { reply->abort(); });
    QObject::connect(reply, &QNetworkReply::finished, reply, [&waiting] { waiting.end(); });
    if (!reply->isFinished()) {
        waiting.run();
    }
    const WebFailure failure = WebClient::failureOf(*reply);
    answer = body->read();
    return body->isTooLong() ? WebFailure{WebProblem::BadAnswer, {}, 0} : failure;
}

WebFailure ServiceCalls::read(const QString &resource, QVector<DicomJson> &found, const QUrlQuery &query)
{
    const WebFailure refusal = m_client.refusal();
    if (!refusal.isNone()) {
        return refusal;
    }
    QByteArray answer;
    const WebFailure failure = awaited(m_client.get(resource, query), answer);
    bool isGood = answer.isEmpty(); // a service that has nothing may say nothing
    found = isGood ? QVector<DicomJson>() : DicomJson::read(answer, &isGood);
    return failure.isNone() && !isGood ? WebFailure{WebProblem::BadAnswer, {}, 0} : failure;
}

WebFailure ServiceCalls::ask(const QString &resource, QJsonDocument &answer)
{
    const WebFailure refusal = m_client.refusal();
    if (!refusal.isNone()) {
        return refusal;
    }
    QByteArray text;
    const WebFailure failure = awaited(m_client.get(resource, {}, plainJson), text);
    answer = QJsonDocument::fromJson(text);
    return failure;
}

WebFailure ServiceCalls::ask(const QString &resource, const QByteArray &body, QJsonDocument &answer)
{
    QByteArray text;
    const WebFailure failure = awaited(m_client.post(resource, plainJson, body), text);
    answer = QJsonDocument::fromJson(text);
    return failure;
}

WebFailure ServiceCalls::remove(const QString &resource)
{
    QByteArray text;
    return awaited(m_client.remove(resource), text);
}
