#include "zipwriter.h"

#include "filedescriptor.h"
#include "writeproblem.h"

#include <QFile>
#include <QFileInfo>

#include <archive_entry.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>
#include <zlib.h>

namespace {

constexpr int step = 1 << 20;
constexpr int sampleSize = 64 << 10;
constexpr double worthwhile = 0.9; ///< of the size, or the time is better saved
constexpr int permissions = 0644;

} // namespace

ZipWriter::ZipWriter(
    const ExportRequest &request, const ExportStage &stage, const std::atomic<bool> &cancelled)
    : m_stage(stage)
    , m_cancelled(cancelled)
    , m_name(QFileInfo(request.target).fileName())
    , m_compress(request.compress)
    , m_writer(archive_write_new())
    , m_buffer(step, Qt::Uninitialized)
{
    archive_write_set_format_zip(m_writer);
    archive_write_set_bytes_per_block(m_writer, step);
    archive_write_set_bytes_in_last_block(m_writer, 1);
    archive_write_set_options(m_writer, "zip:compression-level=1,zip:hdrcharset=UTF-8");
    archive_write_open_filename(m_writer, QFile::encodeName(m_stage.path(m_name)).constData());
}

ZipWriter::~ZipWriter()
{
    archive_write_free(m_writer);
    archive_read_free(m_reader);
}

ExportWriter::Outcome ZipWriter::failed() const
{
    Outcome outcome = notWritten(archive_errno(m_writer));
    if (const char *text = archive_error_string(m_writer)) {
        outcome.detail = QString::fromLocal8Bit(text);
    }
    outcome.isSpoilt = true;
    return outcome;
}

ExportWriter::Outcome ZipWriter::write(const ExportItem &item)
{
    const FileDescriptor source(
        open(QFile::encodeName(item.source).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (source < 0 || fstat(source, &status) != 0) {
        return notRead(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return notRead(EINVAL);
    }
    return writeMember(source, item, status.st_size, status.st_mtime);
}

ExportWriter::Outcome ZipWriter::writeMember(int source, const ExportItem &item, qint64 size, qint64 time)
{
    if (m_compress && isSmallerDeflated(source)) {
        archive_write_zip_set_compression_deflate(m_writer);
    } else {
        archive_write_zip_set_compression_store(m_writer);
    }
    const std::unique_ptr<archive_entry, void (*)(archive_entry *)> entry(
        archive_entry_new(), archive_entry_free);
    archive_entry_set_pathname_utf8(entry.get(), item.name.toUtf8().constData());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), permissions);
    archive_entry_set_size(entry.get(), size);
    archive_entry_set_mtime(entry.get(), time, 0);
    if (archive_write_header(m_writer, entry.get()) < ARCHIVE_WARN) {
        return failed();
    }
    return copyBytes(source, size);
}

ExportWriter::Outcome ZipWriter::copyBytes(int source, qint64 size)
{
    qint64 left = size;
    while (left > 0 && !m_cancelled) {
        const ssize_t count = read(source, m_buffer.data(), std::size_t(qMin<qint64>(left, step)));
        if (count <= 0) {
            Outcome outcome =
                count < 0 ? notRead(errno) : Outcome{ExportProblem::SourceChanged, {}, false, false};
            outcome.isSpoilt = true;
            return outcome;
        }
        if (archive_write_data(m_writer, m_buffer.constData(), std::size_t(count)) != count) {
            return failed();
        }
        left -= count;
    }
    return {};
}

/// By the start of the file behind its header: pixels that are compressed already gain nothing.
bool ZipWriter::isSmallerDeflated(int source) const
{
    std::vector<Bytef> sample(sampleSize);
    const ssize_t count = pread(source, sample.data(), sampleSize, 0);
    if (count <= 0) {
        return false;
    }
    std::vector<Bytef> deflated(compressBound(uLong(count)));
    auto size = uLongf(deflated.size());
    return compress2(deflated.data(), &size, sample.data(), uLong(count), Z_BEST_SPEED) == Z_OK
        && double(size) < worthwhile * double(count);
}

std::optional<ExportWriter::Outcome> ZipWriter::finish()
{
    if (archive_write_close(m_writer) < ARCHIVE_WARN) {
        return failed();
    }
    return std::nullopt;
}

bool ZipWriter::openForCheck()
{
    if (m_reader) {
        return true;
    }
    const QString path = m_stage.path(m_name);
    forgetCached(path);
    m_reader = archive_read_new();
    archive_read_support_format_zip_seekable(m_reader);
    return archive_read_open_filename(m_reader, QFile::encodeName(path).constData(), step) == ARCHIVE_OK;
}

/// The members come in the order in which they were written; their check sums are libarchive's to hold.
ExportWriter::Outcome ZipWriter::check(const ExportItem &item)
{
    const FileDescriptor source(open(QFile::encodeName(item.source).constData(), O_RDONLY | O_CLOEXEC));
    archive_entry *entry = nullptr;
    const bool same = openForCheck() && archive_read_next_header(m_reader, &entry) == ARCHIVE_OK
        && item.name == QString::fromUtf8(archive_entry_pathname_utf8(entry)) && sameAs(source);
    if (same || m_cancelled) {
        return {};
    }
    return differs();
}

std::optional<ExportWriter::Outcome> ZipWriter::checkEnd()
{
    archive_entry *entry = nullptr;
    if (openForCheck() && archive_read_next_header(m_reader, &entry) == ARCHIVE_EOF) {
        return std::nullopt;
    }
    return differs();
}

ExportWriter::Outcome ZipWriter::differs() const
{
    const char *text = archive_error_string(m_reader);
    return {ExportProblem::Differs, text ? QString::fromLocal8Bit(text) : QString(), false, false};
}

bool ZipWriter::sameAs(int source)
{
    std::vector<char> other(step);
    for (;;) {
        const la_ssize_t count = archive_read_data(m_reader, m_buffer.data(), std::size_t(step));
        if (count < 0 || m_cancelled) {
            return false;
        }
        if (count == 0) {
            return read(source, other.data(), 1) == 0;
        }
        if (read(source, other.data(), std::size_t(count)) != count
            || std::memcmp(other.data(), m_buffer.constData(), std::size_t(count)) != 0) {
            return false;
        }
    }
}
