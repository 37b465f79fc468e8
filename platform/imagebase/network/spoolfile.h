#pragma once

#include "imagebase_export.h"

#include <QByteArray>

/**
 * One object on its way into the spool: written under a passing name, then given the name under which it
 * counts, and synced. Removed by the destructor unless it was kept. One thread.
 *
 * The name is given before the sync, so that one sync makes both last, bytes and name: the disk is waited for
 * once an object. What a power cut in between leaves under that name may have holes: so the name holds size
 * and checksum.
 */
class IMAGEBASE_EXPORT SpoolFile
{
public:
    static constexpr char partSuffix[] = ".part";
    static constexpr char completeSuffix[] = ".dcm";

    /// @param stem its path without a suffix, which nobody else uses. @param folder the open folder of it
    /// where that must be synced too for a name to last, else -1. @param reserve bytes that the disk is to
    /// keep
    SpoolFile(QByteArray stem, int folder, bool synced, qint64 reserve);
    ~SpoolFile();
    SpoolFile(const SpoolFile &) = delete;
    SpoolFile &operator=(const SpoolFile &) = delete;

    /// Whether the disk of an open file or folder has this many bytes left.
    static bool hasRoom(int descriptor, qint64 bytes);

    /// Appends; after a failure it takes what comes and writes nothing, so that a sender can be heard out.
    void write(const void *bytes, std::size_t size);
    qint64 size() const { return m_size; }
    /// errno of the first failure, 0 where there was none.
    int error() const { return m_error; }

    /// Where it can be read while it is written.
    QByteArray path() const { return m_stem + partSuffix; }
    /// Makes it complete: what this returned 0 for is there after the program has died, and after a power cut
    /// where the spool is synced. @return errno
    int keep();
    /// Where it is once it is kept.
    const QByteArray &keptPath() const { return m_keptPath; }
    /// Whether a kept file has the bytes that its name speaks of; reads all of it. One of a spool that is not
    /// synced says nothing, and is believed.
    static bool isWhole(const QByteArray &path);

private:
    const QByteArray m_stem;
    const int m_folder;
    const bool m_synced;
    const qint64 m_reserve;
    int m_file;
    int m_error = 0;
    qint64 m_size = 0;
    qint64 m_nextLook = 0; ///< at the room that is left, when it has become this long
    quint32 m_checksum = 0;
    QByteArray m_keptPath;
    bool m_kept = false;
};
