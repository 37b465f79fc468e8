#include "sendlister.h"

#include "sendstore.h"
#include "storefile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int longestPiece = 500;
constexpr int longestPieceMs = 250;

void look(StoreFileReader &reader, const QString &path, SendStore::Listed &listed)
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

void SendLister::run()
{
    SendStore store(m_storePath);
    StoreFileReader reader;
    for (qint64 job = store.unlistedJob(); job != 0 && !m_stop; job = store.unlistedJob()) {
        const QStringList paths = store.unlistedPaths(job);
        for (int first = 0; first < paths.size() && !m_stop;) {
            SendStore::Listed listed;
            const QDeadlineTimer piece(longestPieceMs);
            while (first < paths.size() && listed.paths < longestPiece && !piece.hasExpired() && !m_stop) {
                look(reader, paths[first++], listed);
                ++listed.paths;
            }
            if (!store.addListed(job, listed)) {
                return; // the next look begins where this one ended
            }
            m_listed();
        }
        if (paths.isEmpty()) {
            return;
        }
    }
}
