#pragma once

#include "imagebase_export.h"

/// Stands for the writing anew of an index by this process while it lives. It holds the lock of writers for
/// as long as the index is large: imports wait for its end, edits give up early. Any thread.
class IMAGEBASE_EXPORT Compaction
{
public:
    Compaction();
    ~Compaction();
    Compaction(const Compaction &) = delete;
    Compaction &operator=(const Compaction &) = delete;

    static bool isAnyRunning();
};
