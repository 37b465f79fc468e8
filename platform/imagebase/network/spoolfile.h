#pragma once

#include "imagebase_export.h"

#include <QByteArray>

/**
 * One object on its way into the spool: written under a passing name, made safe, and only then given the name
 * under which it counts. Removed by the destructor unless it was kept. One thread.
 */
class IMAGEBASE_EXPORT SpoolFile
{
public:
    static constexpr char partSuffix[] = ".part";
    static constexpr char completeSuffix[] = ".dcm";

    /// @param stem its path without a suffix, which nobody else uses. @param folder the open folder of it, or
    /// -1
    SpoolFile(QByteArray stem, int folder, bool synced);
    ~SpoolFile();
    SpoolFile(const SpoolFile &) = delete;
    SpoolFile &operator=(const SpoolFile &) = delete;

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
    QByteArray keptPath() const { return m_stem + completeSuffix; }

private:
    const QByteArray m_stem;
    const int m_folder;
    const bool m_synced;
    int m_file;
    int m_error = 0;
    qint64 m_size = 0;
    bool m_kept = false;
};
