#include "dcmtkheaderreader.h"

#include "dcmtklog.h"
#include "dicomuids.h"
#include "filewindow.h"

#include <QThread>

#include <memory>

#include <sys/mman.h>
#include <unistd.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcistrmf.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

constexpr qint64 prefixLimit = qint64(8) * 1024 * 1024;
/// DCMTK asks for a file's elements up to here: behind all that the index wants, before the pixels.
const DcmTagKey afterWanted(0x0033, 0x0000);
/// Where its elements are out of order, all before the pixels are worth a look.
const DcmTagKey pixelData(0x7fe0, 0x0010);
/// DCMTK takes three to five reads for each element, so this is some ten thousand of them.
constexpr int maximumReads = 40 * 1000;
/// Levels that the calling thread's own stack surely bears.
constexpr int harmlessItems = 200;
/// Stack for as many levels as those reads can open, with a margin for instrumented builds.
constexpr uint deepStack = 1024 * 1024 + maximumReads / 4 * 8 * 1024;

/// A file without a name that holds some bytes. DCMTK holds lengths against the size of a file only: a buffer
/// in memory makes it reserve whatever a length says and take values that are cut.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &bytes)
        : m_file(::memfd_create("header", MFD_CLOEXEC))
    {
        qint64 written = 0;
        while (m_file >= 0 && written < bytes.size()) {
            const ssize_t now =
                ::write(m_file, bytes.constData() + written, std::size_t(bytes.size() - written));
            if (now <= 0) {
                break; // what is there is read
            }
            written += now;
        }
    }
    ~MemoryFile()
    {
        if (m_file >= 0) {
            ::close(m_file);
        }
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    QByteArray path() const { return "/proc/self/fd/" + QByteArray::number(m_file); }

private:
    const int m_file;
};

/// Reads from a file, but ends it after some number of reads: DCMTK sorts elements as they come, and
/// thousands that come backwards keep it busy for hours. It refuses to inflate, too: the scanner does, to a
/// limit that DCMTK does not have.
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

int countItems(const QByteArray &bytes)
{
    return bytes.count(QByteArray::fromRawData("\xfe\xff\x00\xe0", 4))
        + bytes.count(QByteArray::fromRawData("\xff\xfe\xe0\x00", 4));
}

void takeBytes(DcmElement &element, const WantedElement &wanted, HeaderValues &values)
{
    Uint8 *bytes = nullptr;
    if (element.getUint8Array(bytes).bad() || !bytes) {
        return;
    }
    const auto length = static_cast<int>(qMin<Uint32>(element.getLength(), HeaderValues::maximumBytes));
    if (!wanted.binary) {
        values.setText(wanted, reinterpret_cast<const char *>(bytes), length);
    } else if (length >= 2) {
        values.setNumber(wanted, static_cast<quint16>(bytes[0] | (bytes[1] << 8)));
    }
}

/// The element's text as bytes, NULs and all; null where it has none.
const char *textOf(DcmElement &element, int &length)
{
    char *text = nullptr;
    Uint32 size = 0;
    length = 0;
    if (!element.isaString() || element.getString(text, size).bad() || !text) {
        return nullptr;
    }
    length = static_cast<int>(qMin<Uint32>(size, HeaderValues::maximumBytes));
    return text;
}

void takeElement(DcmElement &element, const WantedElement &wanted, HeaderValues &values)
{
    int length = 0;
    Uint16 number = 0;
    OFString printed;
    switch (element.ident()) {
    case EVR_SQ:
        break;
    case EVR_OB:
    case EVR_UN:
    case EVR_UNKNOWN:
    case EVR_UNKNOWN2B:
    case EVR_ox:
        takeBytes(element, wanted, values);
        break;
    case EVR_US:
        if (element.getUint16(number).good()) {
            values.setNumber(wanted, number);
        }
        break;
    default:
        if (const char *text = textOf(element, length)) {
            values.setText(wanted, text, length);
        } else if (!element.isaString() && element.getOFString(printed, 0).good()) {
            values.setText(wanted, printed.data(), static_cast<int>(printed.size()));
        }
    }
}

/// The element where the data set has it whole: of one that is cut, the rest of its bytes would be chance.
DcmElement *find(DcmItem &item, const DcmTagKey &tag)
{
    DcmElement *element = nullptr;
    const bool found = item.findAndGetElement(tag, element).good();
    return found && element->transferState() == ERW_ready ? element : nullptr;
}

void takeCharacterSet(DcmItem &dataSet, HeaderValues &values)
{
    int length = 0;
    if (DcmElement *element = find(dataSet, DCM_SpecificCharacterSet)) {
        if (const char *text = textOf(*element, length)) {
            values.setCharacterSet(text, length);
        }
    }
}

void takeAll(DcmFileFormat &file, HeaderValues &values)
{
    DcmDataset &dataSet = *file.getDataset();
    takeCharacterSet(dataSet, values);
    for (const WantedElement &wanted : wantedElements()) {
        const DcmTagKey tag(static_cast<Uint16>(wanted.tag >> 16), static_cast<Uint16>(wanted.tag & 0xffff));
        DcmItem &item = wanted.attribute == Attribute::TransferSyntaxUID
            ? static_cast<DcmItem &>(*file.getMetaInfo())
            : dataSet;
        if (DcmElement *element = find(item, tag)) {
            takeElement(*element, wanted, values);
        }
    }
    OFString storageClass;
    file.getMetaInfo()->findAndGetOFString(DCM_MediaStorageSOPClassUID, storageClass);
    if (storageClass == DicomUid::mediaDirectory || dataSet.tagExists(DCM_DirectoryRecordSequence)) {
        values.setMediaDirectory();
    }
}

DcmtkVerdict parse(const MemoryFile &bytes, const DcmTagKey &end, HeaderValues &values)
{
    BoundedStream stream(OFFilename(bytes.path().constData()));
    DcmFileFormat file;
    file.transferInit();
    const OFCondition result = stream.good()
        ? file.readUntilTag(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength, end)
        : stream.status();
    takeAll(file, values);
    file.transferEnd();
    return {result.good(), file.getDataset()->card() > 0,
        result.good() ? QString() : QString::fromLatin1(result.text())};
}

DcmtkVerdict parseEitherWay(const MemoryFile &bytes, HeaderValues &values)
{
    DcmtkVerdict verdict = parse(bytes, afterWanted, values);
    if (values.isIdentified() || values.isMediaDirectory()) {
        return verdict;
    }
    values.begin();
    return parse(bytes, pixelData, values);
}

} // namespace

DcmtkVerdict DcmtkHeaderReader::read(FileWindow &file, HeaderValues &values)
{
    silenceDcmtk();
    const qint64 length = qMin(file.size(), prefixLimit);
    const uchar *begin = file.at(0, length);
    if (!begin) {
        return {};
    }
    const QByteArray bytes(reinterpret_cast<const char *>(begin), static_cast<int>(length));
    const MemoryFile copy(bytes);
    if (countItems(bytes) <= harmlessItems) {
        return parseEitherWay(copy, values);
    }
    DcmtkVerdict verdict;
    const std::unique_ptr<QThread> thread(QThread::create([&] { verdict = parseEitherWay(copy, values); }));
    thread->setStackSize(deepStack);
    thread->start();
    thread->wait();
    return verdict;
}
