#include "correctionjournal.h"

#include "cloudsession.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QUuid>

#include <algorithm>

namespace {

constexpr char fileName[] = "correction.json";
constexpr char stateKey[] = "state";
constexpr char serviceKey[] = "service";
constexpr char databaseKey[] = "index";
constexpr char studyKey[] = "study";
constexpr char studyPkKey[] = "studyKey";
constexpr char scopeKey[] = "scope";
constexpr char changesKey[] = "changes";
constexpr char studiesKey[] = "studies";
constexpr char objectsKey[] = "objects";

QString journalsOf(const QString &databasePath)
{
    return QFileInfo(databasePath).absolutePath() + QStringLiteral("/.corrections");
}

bool isSame(const QUrl &service, const QUrl &other)
{
    return CloudSession::plainAddress(service) == CloudSession::plainAddress(other);
}

bool isFor(const CorrectionJournal::Content &content, const QUrl &service)
{
    return content.service.isEmpty() || content.state == CorrectionJournal::State::Indexed
        || isSame(content.service, service);
}

QJsonObject toJson(const PatientChanges &changes)
{
    QJsonObject json;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        json[PatientValues::column(change.key())] = change.value();
    }
    return json;
}

PatientChanges changesOf(const QJsonObject &json)
{
    PatientChanges changes;
    for (const PatientField field : PatientValues::fields) {
        const QString key = PatientValues::column(field);
        if (json.contains(key)) {
            changes.insert(field, json[key].toString());
        }
    }
    return changes;
}

} // namespace

CorrectionJournal::CorrectionJournal(const QString &databasePath)
{
    const QString folder =
        journalsOf(databasePath) + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::Id128);
    if (QDir().mkpath(folder)) {
        constexpr QFileDevice::Permissions owners =
            QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
        QFile::setPermissions(journalsOf(databasePath), owners);
        lock(folder);
    }
}

CorrectionJournal::~CorrectionJournal() = default;

bool CorrectionJournal::lock(const QString &folder)
{
    m_folder = folder;
    m_lock = std::make_unique<QLockFile>(folder + QStringLiteral("/lock"));
    m_lock->setStaleLockTime(0); // a process that is gone is noticed all the same
    return m_lock->tryLock();
}

std::vector<std::unique_ptr<CorrectionJournal>> CorrectionJournal::leftBehind(
    const QString &databasePath, const QUrl &service)
{
    std::vector<std::unique_ptr<CorrectionJournal>> found;
    const QDir folder(journalsOf(databasePath));
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        std::unique_ptr<CorrectionJournal> journal(new CorrectionJournal);
        if (!journal->lock(folder.filePath(name))) {
            continue;
        }
        const bool isWritten = journal->read();
        if (!isWritten && !QFile::exists(journal->m_folder + QLatin1Char('/') + QLatin1String(fileName))) {
            journal->remove(); // killed before it had anything to undo
        } else if (isWritten && isFor(journal->m_content, service) && journal->isAbout(databasePath)) {
            found.push_back(std::move(journal));
        }
    }
    return found;
}

bool CorrectionJournal::isAbout(const QString &databasePath) const
{
    return QFileInfo(m_content.request.databasePath) == QFileInfo(databasePath);
}

bool CorrectionJournal::isPending(
    const QString &databasePath, const QUrl &service, const QStringList &studies, const QString &own)
{
    const QDir folder(journalsOf(databasePath));
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        CorrectionJournal journal;
        journal.m_folder = folder.filePath(name);
        const Content &content = journal.m_content;
        if (journal.m_folder == own || !journal.read() || content.state == State::Prepared) {
            continue;
        }
        const bool isHalfStored = content.state == State::Storing && isSame(content.service, service);
        if ((isHalfStored || journal.isAbout(databasePath))
            && std::any_of(studies.cbegin(), studies.cend(),
                [&](const QString &study) { return content.studies.contains(study); })) {
            return true;
        }
    }
    return false;
}

bool CorrectionJournal::read()
{
    QFile file(m_folder + QLatin1Char('/') + QLatin1String(fileName));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    m_content.state = State(json[QLatin1String(stateKey)].toInt());
    m_content.service = QUrl(json[QLatin1String(serviceKey)].toString());
    m_content.objects = json[QLatin1String(objectsKey)].toArray();
    CorrectionRequest &request = m_content.request;
    request.databasePath = json[QLatin1String(databaseKey)].toString();
    m_content.studies = json[QLatin1String(studiesKey)].toVariant().toStringList();
    request.index.studyUid = json[QLatin1String(studyKey)].toString();
    request.index.studyPk = json[QLatin1String(studyPkKey)].toVariant().toLongLong();
    request.index.scope = IndexCorrection::Scope(json[QLatin1String(scopeKey)].toInt());
    request.index.changes = changesOf(json[QLatin1String(changesKey)].toObject());
    return !request.index.changes.isEmpty();
}

bool CorrectionJournal::write(const Content &content)
{
    m_content = content;
    const CorrectionRequest &request = content.request;
    const QJsonObject json{{QLatin1String(stateKey), int(content.state)},
        {QLatin1String(serviceKey), content.service.toString(QUrl::RemoveUserInfo)},
        {QLatin1String(databaseKey), request.databasePath}, {QLatin1String(studyKey), request.index.studyUid},
        {QLatin1String(studyPkKey), request.index.studyPk},
        {QLatin1String(scopeKey), int(request.index.scope)},
        {QLatin1String(changesKey), toJson(request.index.changes)},
        {QLatin1String(studiesKey), QJsonArray::fromStringList(content.studies)},
        {QLatin1String(objectsKey), content.objects}};
    QSaveFile file(m_folder + QLatin1Char('/') + QLatin1String(fileName));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(json).toJson()) > 0 && file.commit();
}

bool CorrectionJournal::setState(State state)
{
    Content next = m_content;
    next.state = state;
    return write(next);
}

void CorrectionJournal::remove()
{
    m_lock.reset();
    if (m_folder.isEmpty()) {
        return; // could not be made; an empty path would be the program's working folder
    }
    QDir(m_folder).removeRecursively();
    QDir().rmdir(QFileInfo(m_folder).path()); // where it was the last
}
