#pragma once

#include "imagebase_export.h"

#include <QStringList>
#include <QVector>

#include <array>

/// Into which count of the report a found file goes: exactly one.
enum class FileVerdict : quint8 {
    New,
    AlreadyThere,
    Replaced,
    MediaDirectory,
    NotDicom,
    Unreadable,
    Refused,
    Skipped,
    Count
};

/// Why a file was not indexed, or not as it stands.
enum class FileReason : quint8 {
    None,
    Hidden,
    LinkLoop,
    BrokenLink,
    NotARegularFile,
    NoPermission,
    NoSuchFile,
    NameNotText, ///< the file's name is no text in the system's encoding
    InsideStore, ///< a file of the store itself
    NotDicom,
    Damaged,
    NoPatientOrStudy,
    MissingUid,
    MalformedUid,
    OtherContentKept, ///< other bytes under a known UID; the indexed file was kept
    ReadFailed,
    CopyFailed,
    ArchiveEncrypted,
    ArchiveDamaged, ///< an archive, or a member whose bytes cannot be unpacked
    ArchiveNested, ///< an archive within an archive within an archive
    ArchiveTooLarge, ///< grows beyond all measure
    DatabaseFailed
};

/// What a member of an archive is called: "/folder/archive.zip › member".
QString archiveMemberLabel(const QString &archive, const QString &member);

/// A file that the report names. detail is the system's or the parser's own words, or the other file's path.
struct ImportIssue
{
    QString path;
    FileVerdict verdict = FileVerdict::Skipped;
    FileReason reason = FileReason::None;
    QString detail;
    QString archive = {}; ///< the file that it came out of, where path is the label of a member
    int files = 1; ///< how many it stands for: the encrypted members of an archive share a line
};

/// How an import ended.
enum class ImportEnd : quint8 { Complete, Cancelled, IndexFailed, DiskFull };

/// What an import found and did with it: a value that adds up. found() is the sum of all counts by
/// construction.
class IMAGEBASE_EXPORT ImportReport
{
public:
    void count(FileVerdict verdict);
    void count(const ImportIssue &issue);
    /// Adds the counts and issues of a part of the same import.
    void add(const ImportReport &other);

    qint64 of(FileVerdict verdict) const;
    qint64 found() const;
    const QVector<ImportIssue> &issues() const { return m_issues; }
    /// The files worth another try once their cause is mended: unreadable, refused, or skipped for want of
    /// permission.
    QStringList retryPaths() const;

    ImportEnd end = ImportEnd::Complete;
    QString endDetail; ///< the database's or the system's words where end is a failure
    qint64 elapsedMs = 0;
    qint64 notReached = 0; ///< files met by the walk that an import which ended early left without a verdict

private:
    void append(const ImportIssue &issue);

    std::array<qint64, static_cast<std::size_t>(FileVerdict::Count)> m_counts{};
    QVector<ImportIssue> m_issues;
};
