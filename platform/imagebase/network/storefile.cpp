#include "storefile.h"

#include "dicomuids.h"
#include "elementcursor.h"
#include "headerscanner.h"

#include <QFile>

#include <cerrno>

namespace {

constexpr quint32 metaGroup = 0x0002;
constexpr quint32 mediaClassTag = 0x00020002;
constexpr quint32 mediaInstanceTag = 0x00020003;
constexpr quint32 syntaxTag = 0x00020010;
constexpr quint32 longestUid = 64;
constexpr qint64 markLength = 4;

using Outcome = DicomReadResult::Outcome;

struct MetaInformation
{
    QByteArray sopClass;
    QByteArray sopInstance;
    QByteArray transferSyntax;
    qint64 end = 0; ///< 0 where there is none
};

QByteArray uidAt(FileWindow &file, const ElementPlace &element)
{
    const uchar *bytes = element.length <= longestUid ? file.at(element.value, element.length) : nullptr;
    QByteArray uid(reinterpret_cast<const char *>(bytes), bytes ? static_cast<int>(element.length) : 0);
    while (uid.endsWith('\0') || uid.endsWith(' ')) {
        uid.chop(1);
    }
    return DicomReader::isUid(QString::fromLatin1(uid)) ? uid : QByteArray();
}

MetaInformation readMeta(FileWindow &file)
{
    MetaInformation meta;
    if (!HeaderScanner::hasMark(file)) {
        return meta;
    }
    ElementCursor cursor(file, HeaderScanner::markOffset + markLength, ElementCursor::Encoding::Meta);
    ElementPlace element;
    while (cursor.peek(element) && element.tag >> 16U == metaGroup) {
        if (element.tag == mediaClassTag) {
            meta.sopClass = uidAt(file, element);
        } else if (element.tag == mediaInstanceTag) {
            meta.sopInstance = uidAt(file, element);
        } else if (element.tag == syntaxTag) {
            meta.transferSyntax = uidAt(file, element);
        }
        if (!cursor.skip(element)) {
            return meta;
        }
        meta.end = cursor.position();
    }
    return meta;
}

/// Whether the data set is written as the meta information says, as far as its first element shows.
bool isAsDeclared(FileWindow &file, const MetaInformation &meta)
{
    constexpr qint64 headLength = 8;
    const bool isEven = (file.size() - meta.end) % 2 == 0;
    if (meta.transferSyntax == DicomUid::deflated) {
        return meta.end < file.size();
    }
    const uchar *head = isEven ? file.at(meta.end, headLength) : nullptr;
    if (!head || meta.transferSyntax == DicomUid::bigEndian) {
        return false;
    }
    const bool hasVr = head[4] >= 'A' && head[4] <= 'Z' && head[5] >= 'A' && head[5] <= 'Z';
    return hasVr != (meta.transferSyntax == DicomUid::implicitLittleEndian);
}

StoreProblem problemOf(const QByteArray &path)
{
    return QFile::exists(QFile::decodeName(path)) ? StoreProblem::FileUnreadable : StoreProblem::FileGone;
}

} // namespace

struct StoreFileReader::Private
{
    FileWindow window;
    DicomReader reader;
};

StoreFileReader::StoreFileReader()
    : d(new Private)
{ }

StoreFileReader::~StoreFileReader() = default;

StoreFile StoreFileReader::read(const QByteArray &path)
{
    StoreFile file;
    file.path = path;
    if (!d->window.open(path)) {
        const int error = errno;
        // A folder, a pipe or a device opens, but is no regular file.
        file.problem = error == EINVAL || error == EISDIR ? StoreProblem::NotDicom : problemOf(path);
        file.detail = qt_error_string(error);
        return file;
    }
    const MetaInformation meta = readMeta(d->window);
    const DicomReadResult read = d->reader.read(path);
    file.size = d->window.size();
    file.kind = {meta.sopClass, meta.transferSyntax};
    file.sopInstance = meta.sopInstance;
    if (read.outcome == Outcome::Image) {
        // What the data set says of itself is what a peer will go by.
        file.sopInstance = read.header[Attribute::SOPInstanceUID].toLatin1();
        const QByteArray sopClass = read.header[Attribute::SOPClassUID].toLatin1();
        file.kind.sopClass = sopClass.isEmpty() ? meta.sopClass : sopClass;
    }
    if (file.kind.transferSyntax.isEmpty()) {
        file.kind.transferSyntax = read.header[Attribute::TransferSyntaxUID].toLatin1();
    }
    if (file.kind.transferSyntax.isEmpty()) {
        file.kind.transferSyntax = DicomUid::implicitLittleEndian;
    }
    if (read.outcome == Outcome::MediaDirectory || file.kind.sopClass.isEmpty()
        || file.sopInstance.isEmpty()) {
        file.problem = StoreProblem::NotDicom;
    } else if (meta.end > 0 && isAsDeclared(d->window, meta)) {
        file.dataSet = meta.end;
    }
    d->window.close();
    return file;
}
