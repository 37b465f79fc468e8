#include "importwalk.h"

#include "archivemember.h"
#include "archivereader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr std::size_t chunkSize = 32; ///< files that travel together
constexpr qint64 bytesOfChunk = 32LL << 20; ///< of files out of archives
constexpr qint64 bytesUnpackedAhead = 512LL << 20; ///< of the disk, before the walk waits for the writer

} // namespace

void ImportWalk::run()
{
    const FileWalker::Sink sink = [this](WalkedFile file) { return put(std::move(file)); };
    ArchiveReader archives(m_pipeline.store, m_pipeline.cancelled, sink);
    const bool takes = m_pipeline.request.mode == ImportMode::Take;
    FileWalker walker(QFile::encodeName(m_pipeline.store.folder()), [&](WalkedFile file) {
        const bool isArchive =
            file.reason == FileReason::None && !takes && ArchiveReader::isArchive(file.path);
        return isArchive ? archives.read(file) : put(std::move(file));
    });
    for (const QString &path : m_pipeline.request.paths) {
        const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        if (!walker.walk(QFile::encodeName(absolute))) {
            break;
        }
    }
    if (!m_chunk.files.empty()) {
        flush();
    }
    m_pipeline.walking = false;
    m_pipeline.readChunks.setEnd(m_chunk.number);
    m_pipeline.walked.close();
}

/// @return false to end the walk
bool ImportWalk::put(WalkedFile file)
{
    ++m_pipeline.found;
    if (file.member) {
        file.member->countIn(&m_pipeline.unpacked, file.stamp.size);
        m_bytes += file.stamp.size;
    }
    m_chunk.files.push_back(std::move(file));
    if (m_pipeline.cancelled || (m_chunk.files.size() < chunkSize && m_bytes < bytesOfChunk)) {
        return !m_pipeline.cancelled;
    }
    m_bytes = 0;
    // Only what has been handed on comes to its place while the walk waits.
    const bool taken = flush();
    m_pipeline.unpacked.waitBelow(bytesUnpackedAhead, m_pipeline.stopped);
    return taken;
}

bool ImportWalk::flush()
{
    const std::size_t number = m_chunk.number;
    const bool taken = m_pipeline.walked.push(std::move(m_chunk));
    m_chunk = {};
    m_chunk.number = number + 1;
    return taken;
}
