#include "importreader.h"

#include "archivemember.h"
#include "knownfiles.h"

void ImportReader::run()
{
    KnownFiles known(m_pipeline.request.databasePath, m_pipeline.request.mode);
    while (std::optional<WalkedChunk> chunk = m_pipeline.walked.pop()) {
        ReadChunk result(chunk->files.size());
        for (std::size_t i = 0; i < result.size() && !m_pipeline.cancelled; ++i) {
            result[i].file = std::move(chunk->files[i]);
            read(result[i], known);
        }
        if (m_pipeline.cancelled || !m_pipeline.readChunks.put(chunk->number, result)) {
            ImportPipeline::discard(result, 0);
            return;
        }
    }
}

void ImportReader::read(ReadFile &file, KnownFiles &known)
{
    if (file.file.reason != FileReason::None) {
        return;
    }
    const ImportMode mode = m_pipeline.request.mode;
    m_pipeline.noteCurrent(file.file.path);
    if (file.file.member) {
        // It is in the store already, and has no other place.
        file.result = m_reader.read(file.file.member->path);
        file.temporaryPath =
            file.result.outcome == DicomReadResult::Outcome::Image ? file.file.member->path : QByteArray();
        return;
    }
    file.known = mode != ImportMode::Take && known.contains(file.file);
    if (file.known) {
        return;
    }
    file.result = m_reader.read(file.file.path);
    const bool isImage = file.result.outcome == DicomReadResult::Outcome::Image;
    file.taken = isImage && mode == ImportMode::Take;
    if (isImage && mode == ImportMode::Copy) {
        FileStore::Copy copy = m_pipeline.store.copyIn(file.file.path, m_pipeline.cancelled);
        file.temporaryPath = copy.temporaryPath;
        file.copyError = copy.systemError;
    }
}
