#pragma once

#include "dicomreader.h"
#include "filewalker.h"

#include <vector>

/// A walked file after its reader: what the writer needs to give it a verdict.
struct ReadFile
{
    WalkedFile file;
    bool known = false; ///< the index has exactly this file already; nothing was read
    DicomReadResult result;
    QByteArray temporaryPath; ///< copy mode: the copy that waits for its place
    int copyError = 0; ///< errno of a failed copy
    bool taken = false; ///< the file itself goes into the store
};

using ReadChunk = std::vector<ReadFile>;
