#include "sendlister.h"

#include "sendpaths.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int longestPiece = 500;
constexpr int longestPieceMs = 250;

void look(StoreFileReader &reader, const QString &path, SendPaths::Listed &listed)
{
    const StoreFile file = reader.read(QFile::encodeName(path));
    if (file.problem == StoreProblem::NotDicom) {
        ++(QFileInfo(path).isDir() ? listed.skippedFolders : listed.skippedFiles);
        return;
    }
    SendObject object;
    object.path = path;
    object.sopClassUid = QString::fromLatin1(file.kind.sopClass);
    object.sopInstanceUid = QString::fromLatin1(file.sopInstance);
    object.transferSyntaxUid = QString::fromLatin1(file.kind.transferSyntax);
    object.outcome.problem = file.problem;
    object.outcome.detail = file.detail;
    object.state = file.problem == StoreProblem::None ? SendObjectState::Waiting : SendObjectState::Failed;
    listed.objects.append(object);
}

} // namespace

SendLister::SendLister(QString storePath, std::function<void()> listed, const std::atomic<bool> &stop)
    : m_storePath(std::move(storePath))
    , m_listed(std::move(listed))
    , m_stop(stop)
{ }

QString SendLister::run()
{
    SendStore store(m_storePath);
    if (!store.isOpen()) {
        return store.problem();
    }
    SendPaths paths(store);
    for (qint64 job = paths.job(); job != 0 && !m_stop; job = paths.job()) {
        if (!list(paths, job)) {
            break; // the next look begins where this one ended
        }
    }
    return store.problem();
}

/// @return false where the store refused, or there is no time left
bool SendLister::list(SendPaths &paths, qint64 job)
{
    QStringList all;
    if (!paths.read(job, all)) {
        return false;
    }
    for (int first = 0; first < all.size() && !m_stop;) {
        SendPaths::Listed listed;
        const QDeadlineTimer piece(longestPieceMs);
        while (first < all.size() && listed.paths < longestPiece && !piece.hasExpired() && !m_stop) {
            look(m_reader, all[first++], listed);
            ++listed.paths;
        }
        if (!paths.add(job, listed)) {
            return false;
        }
        m_listed();
    }
    return !m_stop && paths.end(job);
}
