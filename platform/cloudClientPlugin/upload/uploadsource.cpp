#include "uploadsource.h"

#include <QFile>

#include <utility>

namespace {

constexpr int mostLooks = 256; ///< at files, before others have their turn

} // namespace

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

/// Just before files are sent the index is asked once more: records are deleted, and files replaced, while
/// they wait here.
void UploadSource::confirm(UploadJob &job, UploadBatch *batch)
{
    const QVector<QueuedFile> files = std::exchange(batch->files, {});
    QVector<qint64> ids;
    for (const QueuedFile &file : files) {
        ids.append(file.file.id);
    }
    const auto waiting = m_store.stillWaiting(ids);
    for (QueuedFile file : files) {
        if (!waiting) {
            job.giveBack(file);
            continue;
        }
        const auto now = waiting->constFind(file.file.id);
        if (now == waiting->cend()) {
            job.drop(file);
            continue;
        }
        file.file.path = now->path;
        file.file.version = now->version;
        batch->files.append(file);
    }
}

UploadBatch UploadSource::next(UploadJob &job, const UploadHealth &health, qint64 nowMs, const Failed &failed)
{
    const int most = health.mostObjects();
    UploadBatch batch{job.id(), {}, health.acknowledgements(), health.session()};
    qint64 bytes = 0;
    QueuedFile file;
    for (int looks = 0; looks < mostLooks && batch.files.size() < most && bytes < health.mostBytes();
         ++looks) {
        const bool mayBeSuspect = !health.isInTrouble() && batch.isEmpty();
        if (!job.takeNext(m_store, nowMs, mayBeSuspect, &file)) {
            break;
        }
        if (file.isAlone && !batch.isEmpty()) {
            job.giveBack(file);
            break;
        }
        const UploadFault::Kind fault = look(&file.file);
        if (fault != UploadFault::Kind::None) {
            failed(file, fault);
            continue;
        }
        batch.files.append(file);
        bytes += file.file.bytes;
        if (file.isAlone) {
            break;
        }
    }
    if (!batch.isEmpty()) {
        confirm(job, &batch);
    }
    return batch;
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
