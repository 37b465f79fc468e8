#pragma once

#include "filewalker.h"
#include "spoolqueue.h"

class SpoolNotes;

/// Fills what a writer needs besides the header. @return false where the object is gone
bool stampSpooled(WalkedFile &file);

/// Reads what earlier programs left in a spool, as long as nobody waits for a lock. For the indexer's thread.
class SpoolReader
{
public:
    SpoolReader(SpoolQueue &queue, const SpoolNotes &notes)
        : m_queue(queue)
        , m_notes(notes)
    { }

    /// Reads those that nobody has read, for a while; what it does not come to goes back into the queue, what
    /// is no whole object aside. @return what is to be written
    SpoolItems read(SpoolItems items);

private:
    bool isWhole(const SpoolItem &item) const;

    SpoolQueue &m_queue;
    const SpoolNotes &m_notes;
    DicomReader m_reader;
};
