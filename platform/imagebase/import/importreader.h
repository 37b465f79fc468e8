#pragma once

#include "importpipeline.h"

class KnownFiles;

/// One reader of an import: finds out what the walk's files are, and copies those that are to be copied. Used
/// once, on a thread of its own.
class ImportReader
{
public:
    explicit ImportReader(ImportPipeline &pipeline)
        : m_pipeline(pipeline)
    { }

    /// Returns when the walk has no more files, or soon after the pipeline was stopped.
    void run();

private:
    void read(ReadFile &file, KnownFiles &known);

    ImportPipeline &m_pipeline;
    DicomReader m_reader;
};
