#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class DcmFileFormat;
class DcmTagKey;
class FileWindow;

/// A file without a name that holds some bytes. DCMTK holds lengths against the size of a file only: a buffer
/// in memory makes it reserve whatever a length says and take values that are cut.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    QByteArray path() const;

private:
    const int m_file;
};

/// How a parse within bounds ended.
struct BoundedParse
{
    bool complete = false; ///< up to the tag where it was to end, without an error
    qint64 position = 0; ///< how many bytes DCMTK has taken
    QString detail; ///< its words on what is wrong
};

/// As much of a file as DCMTK is ever given.
inline constexpr qint64 parseLimit = qint64(8) * 1024 * 1024;

/// The first bytes of a file; empty where they cannot be read.
QByteArray boundedPrefix(FileWindow &file, qint64 limit = parseLimit);

/// Runs on this thread, or on one with a stack deep enough for as many nested items as the bytes may hold,
/// since DCMTK recurses at each; returns when it is done.
void onStackFor(const QByteArray &bytes, const std::function<void()> &run);

/// Parses all elements before a tag, with a bound on the work: hostile bytes could keep DCMTK busy for hours.
/// Deflated data sets are refused, as DCMTK would inflate without a limit. Called within onStackFor().
BoundedParse parseBounded(const MemoryFile &bytes, const DcmTagKey &end, DcmFileFormat &file);

/// Runs on a thread of its own with a stack for thousands of nested items; returns when it is done.
void onDeepStack(const std::function<void()> &run);

/// Parses all elements before a tag from a file of any length; long values stay in the file, which must not
/// go while they are wanted. Called within onDeepStack(): what nests deeper than that stack bears counts as
/// broken. Deflated data sets are refused.
/// @param goOn asked between reads; false ends the parse
BoundedParse parseAll(
    const QByteArray &path, const DcmTagKey &end, DcmFileFormat &file, const std::function<bool()> &goOn);
