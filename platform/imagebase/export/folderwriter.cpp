#include "folderwriter.h"

#include "filecompare.h"
#include "filecopy.h"
#include "filedescriptor.h"
#include "mediawriter.h"
#include "systemtext.h"
#include "writeproblem.h"
#include "zipwriter.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <vector>

namespace {

/// @return errno, 0 where all of the file can be read
int errorOfReading(const QByteArray &path)
{
    const FileDescriptor file(open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::vector<char> buffer(256 << 10);
    ssize_t count = file < 0 ? -1 : 1;
    while (count > 0) {
        count = read(file, buffer.data(), buffer.size());
    }
    return count < 0 ? errno : 0;
}

} // namespace

ExportWriter::Outcome notWritten(int systemError)
{
    return {ExportProblem::NotWritten, systemText(systemError), isDiskFull(systemError), false};
}

ExportWriter::Outcome notRead(int systemError)
{
    const bool missing = systemError == ENOENT || systemError == ENOTDIR;
    return {missing ? ExportProblem::SourceMissing : ExportProblem::SourceUnreadable,
        missing ? QString() : systemText(systemError), false, false};
}

void forgetCached(const QString &path)
{
    const FileDescriptor file(open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    if (file >= 0) {
        posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    }
}

std::unique_ptr<ExportWriter> ExportWriter::make(
    const ExportRequest &request, const ExportStage &stage, const std::atomic<bool> &cancelled)
{
    switch (request.format) {
    case ExportFormat::Zip:
        return std::make_unique<ZipWriter>(request, stage, cancelled);
    case ExportFormat::Media:
        return std::make_unique<MediaWriter>(stage, cancelled);
    case ExportFormat::KeyFolders:
    case ExportFormat::NamedFolders:
        break;
    }
    return std::make_unique<FolderWriter>(stage, cancelled);
}

FolderWriter::FolderWriter(const ExportStage &stage, const std::atomic<bool> &cancelled)
    : m_stage(stage)
    , m_cancelled(cancelled)
{ }

ExportWriter::Outcome FolderWriter::write(const ExportItem &item)
{
    const QByteArray source = QFile::encodeName(item.source);
    if (access(source.constData(), R_OK) != 0) {
        return notRead(errno);
    }
    int error = m_stage.makeFolderOf(item.name);
    if (error == 0) {
        error = copyIntoPlace(source, QFile::encodeName(m_stage.path(item.name)), m_cancelled);
    }
    if (error == 0) {
        return {};
    }
    // A copy that the kernel makes does not say on which side it failed.
    const int readError = isDiskFull(error) || m_cancelled ? 0 : errorOfReading(source);
    return readError != 0 ? notRead(readError) : notWritten(error);
}

ExportWriter::Outcome FolderWriter::check(const ExportItem &item)
{
    const QString copy = m_stage.path(item.name);
    forgetCached(copy);
    if (sameBytes(QFile::encodeName(copy), QFile::encodeName(item.source), m_cancelled) || m_cancelled) {
        return {};
    }
    return {ExportProblem::Differs, {}, false, false};
}
