#include "uploadsource.h"

#include <QFile>

#include <utility>

UploadSource::UploadSource(QString databasePath, int waitMs)
    : m_store(std::move(databasePath), waitMs)
{ }

UploadFault::Kind UploadSource::look(UploadFile *file)
{
    UploadFault::Kind fault = m_look.look(file);
    if (fault == UploadFault::Kind::FileUnreadable) {
        const QString path = m_store.pathOf(file->id);
        if (!path.isEmpty() && path != file->path) {
            file->path = path;
            fault = m_look.look(file);
        }
    }
    return fault;
}

bool UploadSource::confirm(QVector<QueuedFile> *files, QVector<QueuedFile> *gone)
{
    QVector<qint64> ids;
    for (const QueuedFile &file : qAsConst(*files)) {
        ids.append(file.file.id);
    }
    const auto waiting = m_store.stillWaiting(ids);
    if (!waiting) {
        return false;
    }
    QVector<QueuedFile> present;
    for (QueuedFile file : qAsConst(*files)) {
        const auto now = waiting->constFind(file.file.id);
        if (now == waiting->cend()) {
            gone->append(file);
            continue;
        }
        file.file.path = now->path;
        file.file.version = now->version;
        present.append(file);
    }
    *files = present;
    return true;
}

void UploadSource::lookAgain(UploadFile *file, UploadJudge::Judgement *judgement)
{
    judgement->deed = UploadJudge::Deed::AgainAlone;
    const QString path = m_store.pathOf(file->id);
    if (!path.isEmpty()) {
        file->path = path;
    }
    const QString uid = m_look.instanceOf(file->path);
    if (uid.isEmpty()) {
        judgement->deed = UploadJudge::Deed::Record;
        judgement->fault =
            QFile::exists(file->path) ? UploadFault::Kind::NotDicom : UploadFault::Kind::FileUnreadable;
    } else if (uid != file->sopInstance) {
        file->sopInstance = uid;
        judgement->deed = UploadJudge::Deed::Again;
    }
}
