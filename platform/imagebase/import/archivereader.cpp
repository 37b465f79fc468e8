#include "archivereader.h"

#include "archivemember.h"
#include "filecopy.h"
#include "filedescriptor.h"
#include "importreport.h"
#include "systemtext.h"

#include <QFile>
#include <QStorageInfo>

#include <archive.h>
#include <archive_entry.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <vector>

namespace {

constexpr std::size_t step = 256U << 10U;
/// Images shrink to a third, empty ones a thousandfold: a small archive may grow much, a large one not.
constexpr qint64 alwaysAllowed = 256LL << 20;
constexpr qint64 mostGrowth = 100;
constexpr qint64 leftFree = 64LL << 20; ///< of the disk, for the index and everybody else
constexpr qint64 lookEvery = 32LL << 20;
constexpr int longestName = 300;
constexpr char magic[] = "PK";
constexpr char suffix[] = ".zip";
constexpr int suffixSize = sizeof suffix - 1;

using Entry = archive_entry;
using Reader = std::unique_ptr<archive, int (*)(archive *)>;

/// What a member is called, for people.
QString nameOf(Entry *entry)
{
    const char *utf8 = archive_entry_pathname_utf8(entry);
    const char *raw = archive_entry_pathname(entry);
    QString name = utf8 ? QString::fromUtf8(utf8) : QString::fromLocal8Bit(raw ? raw : "?");
    name.truncate(longestName);
    for (QChar &c : name) {
        if (!c.isPrint()) {
            c = QLatin1Char('?');
        }
    }
    return name;
}

QString errorOf(archive *reader)
{
    const char *text = archive_error_string(reader);
    return text ? QString::fromLocal8Bit(text) : QString();
}

bool isNamedArchive(const QString &name)
{
    return name.endsWith(QLatin1String(suffix), Qt::CaseInsensitive);
}

bool startsAsArchive(const QByteArray &path)
{
    const FileDescriptor file(open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, sizeof magic - 1> start{};
    return file >= 0 && read(file, start.data(), start.size()) == ssize_t(start.size())
        && std::memcmp(start.data(), magic, start.size()) == 0;
}

} // namespace

ArchiveReader::ArchiveReader(FileStore &store, const std::atomic<bool> &cancelled, FileWalker::Sink sink)
    : m_store(store)
    , m_cancelled(cancelled)
    , m_sink(std::move(sink))
{ }

bool ArchiveReader::isArchive(const QByteArray &path)
{
    return isNamedArchive(QString::fromUtf8(path.right(suffixSize))) && startsAsArchive(path);
}

bool ArchiveReader::read(const WalkedFile &file)
{
    m_archive = QFile::decodeName(file.path);
    m_mayGrow = alwaysAllowed + mostGrowth * file.stamp.size;
    m_untilLook = 0;
    return readMembers(file.path, m_archive, false);
}

bool ArchiveReader::readMembers(const QByteArray &path, const QString &label, bool isNested)
{
    const Reader reader(archive_read_new(), archive_read_free);
    archive_read_support_format_zip(reader.get());
    if (archive_read_open_filename(reader.get(), path.constData(), step) != ARCHIVE_OK) {
        return refuse(label, FileReason::ArchiveDamaged, errorOf(reader.get()));
    }
    bool any = false;
    for (;;) {
        Entry *entry = nullptr;
        const int result = archive_read_next_header(reader.get(), &entry);
        if (result == ARCHIVE_EOF) {
            return any || refuse(label, FileReason::NotDicom);
        }
        if (result < ARCHIVE_WARN) {
            return refuse(label, FileReason::ArchiveDamaged, errorOf(reader.get()));
        }
        any = true;
        if (m_cancelled || !readMember(reader.get(), entry, label, isNested)) {
            return false;
        }
        if (m_mayGrow <= 0) {
            return true; // told with the member that went too far
        }
    }
}

bool ArchiveReader::readMember(archive *reader, Entry *entry, const QString &label, bool isNested)
{
    if (archive_entry_filetype(entry) != AE_IFREG) {
        return true;
    }
    const QString name = nameOf(entry);
    const QString own = archiveMemberLabel(label, name);
    if (name.section(QLatin1Char('/'), -1).startsWith(QLatin1Char('.'))) {
        return refuse(own, FileReason::Hidden);
    }
    if (archive_entry_is_data_encrypted(entry)) {
        return refuse(own, FileReason::ArchiveEncrypted);
    }
    if (isNamedArchive(name) && isNested) {
        return refuse(own, FileReason::ArchiveNested);
    }
    WalkedFile member;
    member.path = QFile::encodeName(own);
    if (!unpack(reader, entry, &member)) {
        return !m_cancelled && m_sink(std::move(member));
    }
    if (isNamedArchive(name) && startsAsArchive(member.member->path)) {
        return readMembers(member.member->path, own, true);
    }
    return m_sink(std::move(member));
}

/// @return false with the reason in member
bool ArchiveReader::unpack(archive *reader, Entry *entry, WalkedFile *member)
{
    const FileStore::Temporary temporary = m_store.makeTemporary();
    const FileDescriptor to(temporary.descriptor);
    member->member = std::make_shared<ArchiveMember>(m_archive, to < 0 ? QByteArray() : temporary.path);
    const int error = to < 0 ? temporary.systemError : copyData(reader, to, member);
    if (error != 0) {
        member->reason = FileReason::CopyFailed;
        member->detail = systemText(error);
        member->systemError = error;
    }
    struct stat status = {};
    if (to >= 0 && fstat(to, &status) == 0) {
        member->stamp.size = status.st_size;
    }
    member->stamp.time = qint64(archive_entry_mtime(entry));
    return member->reason == FileReason::None;
}

/// @return errno of what could not be written; what could not be unpacked stands in member
int ArchiveReader::copyData(archive *reader, int to, WalkedFile *member)
{
    std::vector<char> buffer(step);
    for (;;) {
        const la_ssize_t count = archive_read_data(reader, buffer.data(), buffer.size());
        if (count == 0 || m_cancelled) {
            return m_cancelled ? ECANCELED : 0;
        }
        if (count < 0) {
            member->reason = FileReason::ArchiveDamaged;
            member->detail = errorOf(reader);
            return 0;
        }
        m_mayGrow -= count;
        m_untilLook -= count;
        if (m_mayGrow <= 0) {
            member->reason = FileReason::ArchiveTooLarge;
            return 0;
        }
        if (m_untilLook <= 0) {
            m_untilLook = lookEvery;
            if (m_store.bytesFree() < leftFree) {
                return ENOSPC;
            }
        }
        if (const int error = writeAll(to, buffer.data(), std::size_t(count))) {
            return error;
        }
    }
}

bool ArchiveReader::refuse(const QString &label, FileReason reason, const QString &detail)
{
    WalkedFile file;
    file.path = QFile::encodeName(label);
    file.reason = reason;
    file.detail = detail;
    file.member = std::make_shared<ArchiveMember>(m_archive, QByteArray());
    return m_sink(std::move(file));
}
