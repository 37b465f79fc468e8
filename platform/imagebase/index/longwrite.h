#pragma once

#include "imagebase_export.h"

/// Stands, while it lives, for work of this process that holds the lock of writers for as long as the index
/// or what it does is large: imports wait for its end, edits give up early. Any thread.
class IMAGEBASE_EXPORT LongWrite
{
public:
    enum class Work { Compaction, Deletion };

    explicit LongWrite(Work work);
    ~LongWrite();
    LongWrite(const LongWrite &) = delete;
    LongWrite &operator=(const LongWrite &) = delete;

    static bool isAnyRunning();
    static bool isRunning(Work work);

private:
    const Work m_work;
};
