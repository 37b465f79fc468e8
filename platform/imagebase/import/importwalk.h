#pragma once

#include "importpipeline.h"

/// The walk of an import: lists what was asked for, unpacks archives, and sends it all to the readers in
/// chunks. Used once, on a thread of its own.
class ImportWalk
{
public:
    explicit ImportWalk(ImportPipeline &pipeline)
        : m_pipeline(pipeline)
    { }

    /// Returns at the end of the walk, or soon after the pipeline was stopped.
    void run();

private:
    bool put(WalkedFile file);
    bool flush();

    ImportPipeline &m_pipeline;
    WalkedChunk m_chunk;
    qint64 m_bytes = 0; ///< of the chunk, out of archives
};
