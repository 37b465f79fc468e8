#include "serviceobjects.h"

#include "dicomreader.h"
#include "objectcorrection.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QSet>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qint64 requestBytes = qint64(16) << 20;
constexpr int requestFiles = 50;
constexpr quint32 sopInstanceTag = 0x00080018;

QString studyResource(const QString &studyUid)
{
    return QStringLiteral("studies/") + studyUid;
}

PatientValues valuesOf(const DicomHeader &header)
{
    PatientValues values;
    values[PatientField::Name] = header[Attribute::PatientName];
    values[PatientField::Id] = header[Attribute::PatientID];
    values[PatientField::BirthDate] = header[Attribute::PatientBirthDate];
    values[PatientField::Sex] = header[Attribute::PatientSex];
    values[PatientField::Comments] = header[Attribute::PatientComments];
    return values;
}

/// Which of the two copies of an object a service shows; Mixed where it is neither.
ServiceObjects::Holds holdsOf(
    const DicomJson &shown, const PatientValues &before, const PatientChanges &changes)
{
    bool isOld = true;
    bool isNew = true;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        const QString value = shown.text(PatientValues::tag(change.key()));
        isOld = isOld && PatientValues::isSame(change.key(), value, before[change.key()]);
        isNew = isNew && PatientValues::isSame(change.key(), value, change.value());
    }
    return isNew ? ServiceObjects::Holds::New
                 : (isOld ? ServiceObjects::Holds::Old : ServiceObjects::Holds::Mixed);
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
        return {}; // not in this service
    }
    if (!failure.isNone()) {
        return failure;
    }
    for (const QString &path : qAsConst(files)) {
        if (!identify(path, studyUid)) {
            detail = QFileInfo(path).fileName();
            return {WebProblem::BadAnswer, {}, 0};
        }
    }
    return {};
}

/// What comes must be what was asked for: it is stored back under the names it brings.
bool ServiceObjects::identify(const QString &path, const QString &studyUid)
{
    const DicomReadResult file = DicomReader().read(QFile::encodeName(path));
    if (file.outcome != DicomReadResult::Outcome::Image
        || file.header[Attribute::StudyInstanceUID] != studyUid) {
        return false;
    }
    m_objects.append({studyUid, file.header[Attribute::SeriesInstanceUID],
        file.header[Attribute::SOPInstanceUID], QFileInfo(path).fileName(), valuesOf(file.header)});
    return true;
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

WebFailure ServiceObjects::lookAtSeries(
    const QString &resource, const PatientChanges &changes, QHash<QString, Holds> &states)
{
    QVector<DicomJson> shown;
    const WebFailure failure = m_calls.read(resource + QStringLiteral("/metadata"), shown);
    if (!failure.isNone()) {
        return failure;
    }
    QHash<QString, const ServiceObject *> byUid;
    for (const ServiceObject &object : qAsConst(m_objects)) {
        byUid.insert(object.sopInstanceUid, &object);
    }
    for (const DicomJson &one : qAsConst(shown)) {
        if (const ServiceObject *object = byUid.value(one.text(sopInstanceTag))) {
            states.insert(object->sopInstanceUid, holdsOf(one, object->before, changes));
        }
    }
    return {};
}

WebFailure ServiceObjects::look(const PatientChanges &changes, Holds &holds)
{
    QHash<QString, Holds> states;
    QSet<QString> series;
    for (const ServiceObject &object : qAsConst(m_objects)) {
        series.insert(studyResource(object.studyUid) + QStringLiteral("/series/") + object.seriesUid);
    }
    for (const QString &resource : qAsConst(series)) {
        const WebFailure failure = lookAtSeries(resource, changes, states);
        if (!failure.isNone()) {
            return failure;
        }
        m_show({CorrectionProgress::Step::Checking, states.size(), m_objects.size()});
    }
    int olds = 0;
    int news = 0;
    for (const Holds state : qAsConst(states)) {
        olds += state == Holds::Old ? 1 : 0;
        news += state == Holds::New ? 1 : 0;
    }
    holds = Holds::Mixed;
    if (news == m_objects.size()) {
        holds = Holds::New;
    } else if (olds == m_objects.size()) {
        holds = Holds::Old;
    }
    return {};
}

int ServiceObjects::studies() const
{
    QSet<QString> uids;
    for (const ServiceObject &object : m_objects) {
        uids.insert(object.studyUid);
    }
    return uids.size();
}

int ServiceObjects::objectsOf(const QString &studyUid) const
{
    return int(std::count_if(m_objects.cbegin(), m_objects.cend(),
        [&](const ServiceObject &object) { return object.studyUid == studyUid; }));
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
        QJsonArray one{object.studyUid, object.seriesUid, object.sopInstanceUid, object.fileName};
        for (const PatientField field : PatientValues::fields) {
            one.append(object.before[field]);
        }
        all.append(one);
    }
    return all;
}

void ServiceObjects::read(const QJsonArray &objects)
{
    for (const QJsonValue &value : objects) {
        int at = 0;
        const auto next = [&] { return value[at++].toString(); };
        ServiceObject object;
        object.studyUid = next();
        object.seriesUid = next();
        object.sopInstanceUid = next();
        object.fileName = next();
        for (const PatientField field : PatientValues::fields) {
            object.before[field] = next();
        }
        m_objects.append(object);
    }
}
