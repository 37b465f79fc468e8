#include "boundedparse.h"

#include "filewindow.h"

#include <QThread>

#include <memory>

#include <sys/mman.h>
#include <unistd.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcistrmf.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

/// DCMTK takes three to five reads for each element, so this is some ten thousand of them.
constexpr int maximumReads = 40 * 1000;
/// Levels that the calling thread's own stack surely bears.
constexpr int harmlessItems = 200;
/// Stack for as many levels as those reads can open, with a margin for instrumented builds.
constexpr uint deepStack = 1024 * 1024 + maximumReads / 4 * 8 * 1024;

/// Reads from a file, but ends it after some number of reads: DCMTK sorts elements as they come, and
/// thousands that come backwards keep it busy for hours. It refuses to inflate, too: we do, to a limit that
/// DCMTK does not have.
class BoundedStream : public DcmInputFileStream
{
public:
    using DcmInputFileStream::DcmInputFileStream;

    OFBool eos() override { return m_left <= 0 || DcmInputFileStream::eos(); }
    offile_off_t avail() override { return m_left > 0 ? DcmInputFileStream::avail() : 0; }
    offile_off_t read(void *buffer, offile_off_t length) override
    {
        return m_left-- > 0 ? DcmInputFileStream::read(buffer, length) : 0;
    }
    OFCondition installCompressionFilter(E_StreamCompression /*filterType*/) override
    {
        return EC_UnsupportedEncoding;
    }

private:
    int m_left = maximumReads;
};

/// As much of a deep stack as nested items may take; the rest is for what is done with them.
constexpr quintptr parseStack = 56 * 1024 * 1024;

/// Reads from a file as long as it is let, and as nested items leave room on the stack.
class GuardedStream : public DcmInputFileStream
{
public:
    GuardedStream(const OFFilename &path, const std::function<bool()> &goOn)
        : DcmInputFileStream(path)
        , m_goOn(goOn)
    { }

    /// Whether it was stopped before the file's end.
    bool isStopped() const { return m_ended; }
    OFBool eos() override { return m_ended || DcmInputFileStream::eos(); }
    offile_off_t avail() override { return m_ended ? 0 : DcmInputFileStream::avail(); }
    offile_off_t read(void *buffer, offile_off_t length) override
    {
        const auto here = reinterpret_cast<quintptr>(__builtin_frame_address(0));
        m_ended = m_ended || m_begin - here > parseStack || !m_goOn();
        return m_ended ? 0 : DcmInputFileStream::read(buffer, length);
    }
    OFCondition installCompressionFilter(E_StreamCompression /*filterType*/) override
    {
        return EC_UnsupportedEncoding;
    }

private:
    const std::function<bool()> &m_goOn;
    const quintptr m_begin =
        reinterpret_cast<quintptr>(__builtin_frame_address(0)); ///< where the stack stood
    bool m_ended = false;
};

BoundedParse parse(DcmInputStream &stream, const DcmTagKey &end, DcmFileFormat &file)
{
    file.transferInit();
    const OFCondition result = stream.good()
        ? file.readUntilTag(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength, end)
        : stream.status();
    return {result.good(), stream.tell(), result.good() ? QString() : QString::fromLatin1(result.text())};
}

int countItems(const QByteArray &bytes)
{
    return bytes.count(QByteArray::fromRawData("\xfe\xff\x00\xe0", 4))
        + bytes.count(QByteArray::fromRawData("\xff\xfe\xe0\x00", 4));
}

} // namespace

MemoryFile::MemoryFile(const QByteArray &bytes)
    : m_file(::memfd_create("header", MFD_CLOEXEC))
{
    qint64 written = 0;
    while (m_file >= 0 && written < bytes.size()) {
        const ssize_t now = ::write(m_file, bytes.constData() + written, std::size_t(bytes.size() - written));
        if (now <= 0) {
            break; // what is there is read
        }
        written += now;
    }
}

MemoryFile::~MemoryFile()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

QByteArray MemoryFile::path() const
{
    return "/proc/self/fd/" + QByteArray::number(m_file);
}

QByteArray boundedPrefix(FileWindow &file, qint64 limit)
{
    const qint64 length = qMin(file.size(), limit);
    const uchar *begin = file.at(0, length);
    return begin ? QByteArray(reinterpret_cast<const char *>(begin), static_cast<int>(length)) : QByteArray();
}

void onStackFor(const QByteArray &bytes, const std::function<void()> &run)
{
    if (countItems(bytes) <= harmlessItems) {
        run();
        return;
    }
    onDeepStack(run);
}

BoundedParse parseBounded(const MemoryFile &bytes, const DcmTagKey &end, DcmFileFormat &file)
{
    BoundedStream stream(OFFilename(bytes.path().constData()));
    return parse(stream, end, file);
}

void onDeepStack(const std::function<void()> &run)
{
    const std::unique_ptr<QThread> thread(QThread::create(run));
    thread->setStackSize(deepStack);
    thread->start();
    thread->wait();
}

BoundedParse parseAll(
    const QByteArray &path, const DcmTagKey &end, DcmFileFormat &file, const std::function<bool()> &goOn)
{
    GuardedStream stream(OFFilename(path.constData()), goOn);
    BoundedParse parsed = parse(stream, end, file);
    parsed.complete = parsed.complete && !stream.isStopped();
    return parsed;
}
