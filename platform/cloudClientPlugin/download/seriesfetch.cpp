#include "seriesfetch.h"

#include "dicomjson.h"
#include "objectsretrieve.h"
#include "studysearch.h"
#include "webclient.h"

namespace {

constexpr int atATime = 4;

/// A service without lists of instances, which may have the series nevertheless.
bool cannotList(WebProblem problem)
{
    return problem == WebProblem::NotFound || problem == WebProblem::Refused
        || problem == WebProblem::BadAnswer || problem == WebProblem::Conflict;
}

} // namespace

SeriesFetch::SeriesFetch(
    WebClient &client, QString studyUid, QString seriesUid, QString folder, QObject *parent)
    : QObject(parent)
    , m_client(client)
    , m_studyUid(std::move(studyUid))
    , m_seriesUid(std::move(seriesUid))
    , m_folder(std::move(folder))
{ }

SeriesFetch::~SeriesFetch() = default;

QString SeriesFetch::resource() const
{
    return QStringLiteral("studies/%1/series/%2").arg(m_studyUid, m_seriesUid);
}

void SeriesFetch::fetchAll()
{
    retrieve(resource());
}

ObjectsRetrieve *SeriesFetch::retrieve(const QString &resource)
{
    auto *request = new ObjectsRetrieve(m_client, resource, m_folder, this);
    m_requests.append(request);
    connect(request, &ObjectsRetrieve::received, this, &SeriesFetch::received);
    connect(request, &ObjectsRetrieve::progress, this, [this, before = qint64(0)](qint64 bytes) mutable {
        emit progressed(bytes - before);
        before = bytes;
    });
    connect(request, &ObjectsRetrieve::finished, this,
        [this, request](const WebFailure &failure) { onFetched(request, failure); });
    return request;
}

void SeriesFetch::fetchMissing(const QSet<QString> &present)
{
    m_present = present;
    m_search = new StudySearch(
        m_client, resource() + QStringLiteral("/instances"), {}, this, StudySearch::everything);
    connect(m_search, &StudySearch::found, this, &SeriesFetch::list);
    connect(m_search, &StudySearch::finished, this, &SeriesFetch::listEnded);
}

void SeriesFetch::list(const QVector<DicomJson> &instances)
{
    for (const DicomJson &instance : instances) {
        const QString uid = instance.text(DicomTag::sopInstanceUid);
        if (uid.isEmpty() || m_listed.contains(uid)) {
            continue;
        }
        m_listed.insert(uid);
        if (!m_present.contains(uid)) {
            m_missing.append(uid);
        }
    }
}

void SeriesFetch::listEnded(const WebFailure &failure)
{
    const bool isCutShort = m_search->isCutShort();
    m_search->deleteLater();
    m_search = nullptr;
    if (isCutShort) { // all of it would be no better
        m_missing.clear();
        end(failure);
    } else if (failure.isNone() && !m_listed.isEmpty()) {
        pump();
    } else if (failure.isNone() || cannotList(failure.problem)) {
        m_missing.clear();
        m_listed.clear(); // what an answer in the middle has not told is not known
        fetchAll();
    } else {
        end(failure);
    }
}

void SeriesFetch::pump()
{
    while (!m_missing.isEmpty() && m_requests.size() < atATime) {
        retrieve(resource() + QStringLiteral("/instances/") + m_missing.takeFirst());
    }
    if (m_requests.isEmpty()) {
        end(m_failure);
    }
}

void SeriesFetch::onFetched(ObjectsRetrieve *request, const WebFailure &failure)
{
    m_requests.removeOne(request);
    request->deleteLater();
    if (m_failure.isNone()) {
        m_failure = failure;
    }
    // One object that the service does not give is no reason to leave the others.
    const bool goesOn = failure.isNone() || failure.problem == WebProblem::NotFound
        || (failure.problem == WebProblem::BadAnswer && !m_missing.isEmpty());
    if (!goesOn) {
        m_missing.clear();
    }
    pump();
}

void SeriesFetch::abort()
{
    m_missing.clear();
    if (m_search) {
        m_search->abort();
    }
    const QVector<ObjectsRetrieve *> requests = m_requests;
    for (ObjectsRetrieve *request : requests) {
        request->abort();
    }
}

void SeriesFetch::end(const WebFailure &failure)
{
    if (!m_isEnded) {
        m_isEnded = true;
        emit finished(failure);
    }
}
