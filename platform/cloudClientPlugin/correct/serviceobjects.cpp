#include "serviceobjects.h"

#include "diskroom.h"
#include "objectcorrection.h"
#include "studysearch.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qint64 requestBytes = qint64(16) << 20;
constexpr int requestFiles = 50;

QString studyResource(const QString &studyUid)
{
    return QStringLiteral("studies/") + studyUid;
}

} // namespace

ServiceObjects::ServiceObjects(QString folder, ServiceCalls &calls, Show show)
    : m_folder(std::move(folder))
    , m_calls(calls)
    , m_show(std::move(show))
{
    QDir().mkpath(oldFolder());
    QDir().mkpath(newFolder());
}

QString ServiceObjects::oldFolder() const
{
    return m_folder + QStringLiteral("/old");
}

QString ServiceObjects::newFolder() const
{
    return m_folder + QStringLiteral("/new");
}

WebFailure ServiceObjects::fetch(const QString &studyUid, QString &detail)
{
    const int before = m_objects.size();
    QStringList files;
    const WebFailure failure = m_calls.retrieve(studyResource(studyUid), oldFolder(), files, [&](int count) {
        m_show({CorrectionProgress::Step::Fetching, before + count, 0});
    });
    if (failure.problem == WebProblem::NotFound) {
        return whyMissing(studyUid, detail);
    }
    if (!failure.isNone()) {
        return failure;
    }
    for (const QString &path : qAsConst(files)) {
        const WebProblem problem = identify(path, studyUid);
        if (problem != WebProblem::None) {
            detail = QFileInfo(path).fileName();
            return {problem, {}, 0};
        }
    }
    return {};
}

/// No failure where it is not in this service. An archive that has a study twice may give none of them out.
WebFailure ServiceObjects::whyMissing(const QString &studyUid, QString &detail)
{
    int listed = 0;
    const WebFailure failure = countStudies(studyUid, listed);
    if (failure.isNone() && listed > 0) {
        detail = studyUid;
        return {WebProblem::Conflict, {}, 0};
    }
    return failure.problem == WebProblem::Stopped || failure.isPassing() ? failure : WebFailure();
}

WebFailure ServiceObjects::countStudies(const QString &studyUid, int &listed)
{
    StudyQuestion question;
    question.studyUid = studyUid;
    QVector<DicomJson> found;
    const WebFailure failure = m_calls.read(QStringLiteral("studies"), found, question.query());
    listed = int(std::count_if(found.cbegin(), found.cend(),
        [&](const DicomJson &study) { return study.text(DicomTag::studyUid) == studyUid; }));
    return failure;
}

/// What comes must be what was asked for, and once: it is stored back under the names it brings.
WebProblem ServiceObjects::identify(const QString &path, const QString &studyUid)
{
    const ServiceObject object = ServiceObject::ofFile(path);
    if (object.studyUid != studyUid) {
        return WebProblem::BadAnswer;
    }
    if (m_uids.contains(object.sopInstanceUid)) {
        return WebProblem::Conflict;
    }
    m_uids.insert(object.sopInstanceUid);
    m_objects.append(object);
    return WebProblem::None;
}

QString ServiceObjects::write(const PatientChanges &changes, const std::atomic<bool> &stop)
{
    int done = 0;
    for (const ServiceObject &object : qAsConst(m_objects)) {
        if (stop) {
            return {};
        }
        const ObjectCorrection written = correctObject(oldFolder() + QLatin1Char('/') + object.fileName,
            newFolder() + QLatin1Char('/') + object.fileName, changes);
        if (written.problem != ObjectCorrection::Problem::None) {
            return object.sopInstanceUid + QStringLiteral(": ") + written.detail;
        }
        m_show({CorrectionProgress::Step::Writing, ++done, m_objects.size()});
    }
    return {};
}

bool ServiceObjects::hasRoomForCopies() const
{
    qint64 bytes = 0;
    for (const QFileInfo &original : QDir(oldFolder()).entryInfoList(QDir::Files)) {
        bytes += original.size();
    }
    return hasDiskRoom(m_folder, bytes);
}

WebFailure ServiceObjects::storeFirst()
{
    return m_objects.isEmpty()
        ? WebFailure()
        : storeSome({{newFolder() + QLatin1Char('/') + m_objects[0].fileName, m_objects[0].sopInstanceUid}});
}

WebFailure ServiceObjects::store(const QString &folder)
{
    const CorrectionProgress::Step step =
        folder == newFolder() ? CorrectionProgress::Step::Storing : CorrectionProgress::Step::Restoring;
    QVector<StoredFile> some;
    qint64 bytes = 0;
    for (int at = 0; at < m_objects.size(); ++at) {
        some.append({folder + QLatin1Char('/') + m_objects[at].fileName, m_objects[at].sopInstanceUid});
        bytes += QFileInfo(some.last().path).size();
        if (bytes < requestBytes && some.size() < requestFiles && at + 1 < m_objects.size()) {
            continue;
        }
        const WebFailure failure = storeSome(some);
        if (!failure.isNone()) {
            return failure;
        }
        m_show({step, at + 1, m_objects.size()});
        some.clear();
        bytes = 0;
    }
    return {};
}

WebFailure ServiceObjects::storeSome(const QVector<StoredFile> &files)
{
    const StoreAnswer answer = m_calls.store(files);
    for (int at = 0; at < files.size(); ++at) {
        if (!answer.verdicts.value(at).isStored()) {
            return answer.failure.isNone()
                ? WebFailure{WebProblem::Refused, files[at].sopInstanceUid, answer.verdicts.value(at).reason}
                : answer.failure;
        }
    }
    return {};
}

WebFailure ServiceObjects::look(const PatientChanges &changes, Holds &holds)
{
    ShownObjects shown(m_calls, m_objects, changes);
    const WebFailure failure = shown.look([this](int seen) {
        m_show({CorrectionProgress::Step::Checking, seen, m_objects.size()});
    });
    if (failure.isNone()) {
        holds = shown.holds();
    }
    return failure;
}

int ServiceObjects::studies() const
{
    QSet<QString> uids;
    for (const ServiceObject &object : m_objects) {
        uids.insert(object.studyUid);
    }
    return uids.size();
}

QSet<QString> ServiceObjects::uidsOf(const QString &studyUid) const
{
    QSet<QString> uids;
    for (const ServiceObject &object : m_objects) {
        if (object.studyUid == studyUid) {
            uids.insert(object.sopInstanceUid);
        }
    }
    return uids;
}

bool ServiceObjects::sync() const
{
    const int folder = ::open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool good = folder >= 0 && ::syncfs(folder) == 0;
    if (folder >= 0) {
        ::close(folder);
    }
    return good;
}

QJsonArray ServiceObjects::toJson() const
{
    QJsonArray all;
    for (const ServiceObject &object : m_objects) {
        all.append(object.toJson());
    }
    return all;
}

void ServiceObjects::read(const QJsonArray &objects)
{
    for (const QJsonValue &value : objects) {
        m_objects.append(ServiceObject::ofJson(value.toArray()));
    }
}
