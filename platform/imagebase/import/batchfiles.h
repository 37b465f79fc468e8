#pragma once

#include "filestore.h"

#include <QStringList>
#include <QVector>

struct ReadFile;

/**
 * The files of one transaction: those that it brought into the store, which leave it where the transaction is
 * undone, and those that lose their first name once it is committed. For the writer's thread.
 */
class BatchFiles
{
public:
    /// @param store and cancelled outlive it
    BatchFiles(FileStore &store, const std::atomic<bool> &cancelled);

    /// Gives a copy, or a file that is taken, its place in the store. @return errno, 0 for success
    int bringIn(ReadFile &file, const QString &path);
    /// The index has these bytes already: the file is not wanted.
    void drop(ReadFile &file);
    /// Whether the transaction has brought a file to this place.
    bool hasBrought(const QString &path) const { return m_placed.contains(path); }
    bool hasBroughtAny() const { return !m_placed.isEmpty(); }

    /// Makes sure that the new names survive a power cut.
    void syncNames() const;
    /// The transaction is committed.
    void keep();
    /// The transaction is to be undone. Under its lock: another writer may take the same place as soon as
    /// that is free. What was to be taken still has its first name.
    void undo();

private:
    FileStore &m_store;
    const std::atomic<bool> &m_cancelled;
    QStringList m_placed;
    QVector<QByteArray> m_taken; ///< files that leave their place once the transaction is committed
};
