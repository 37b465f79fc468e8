#include "storefile.h"

#include "dicomuids.h"
#include "metainformation.h"

#include <QFile>

#include <cerrno>

namespace {

using Outcome = DicomReadResult::Outcome;

/// Whether the data set is written as the meta information says, as far as its first element shows.
bool isAsDeclared(FileWindow &file, const MetaInformation &meta)
{
    constexpr qint64 headLength = 8;
    const bool isEven = (file.size() - meta.end) % 2 == 0;
    if (meta.transferSyntax == DicomUid::deflated) {
        return meta.end < file.size();
    }
    const uchar *head = isEven ? file.at(meta.end, headLength) : nullptr;
    if (!head || meta.transferSyntax.isEmpty() || meta.transferSyntax == DicomUid::bigEndian) {
        return false;
    }
    const bool hasVr = head[4] >= 'A' && head[4] <= 'Z' && head[5] >= 'A' && head[5] <= 'Z';
    return hasVr != (meta.transferSyntax == DicomUid::implicitLittleEndian);
}

/// Reads the two UIDs that stand at the beginning of a data set, which is much faster than its whole header.
/// @return false where they do not stand there plainly
bool readIdentity(FileWindow &file, const MetaInformation &meta, StoreFile &found)
{
    constexpr quint32 classTag = 0x00080016;
    constexpr quint32 instanceTag = 0x00080018;
    const bool isImplicit = meta.transferSyntax == DicomUid::implicitLittleEndian;
    ElementCursor cursor(
        file, meta.end, isImplicit ? ElementCursor::Encoding::Implicit : ElementCursor::Encoding::Explicit);
    ElementPlace element;
    while (cursor.peek(element) && element.tag < instanceTag) {
        if (element.tag == classTag) {
            found.kind.sopClass = uidAt(file, element);
        }
        if (!cursor.skip(element)) {
            return false;
        }
    }
    if (element.tag == instanceTag) {
        found.sopInstance = uidAt(file, element);
    }
    return !found.sopInstance.isEmpty() && !found.kind.sopClass.isEmpty()
        && found.kind.sopClass != DicomUid::mediaDirectory;
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

    void readHeader(const MetaInformation &meta, StoreFile &file);
};

/// Of whatever can be read at all; what the data set says of itself is what a peer will go by.
void StoreFileReader::Private::readHeader(const MetaInformation &meta, StoreFile &file)
{
    const DicomReadResult read = reader.read(file.path);
    file.kind.sopClass = meta.sopClass;
    file.sopInstance = meta.sopInstance;
    if (read.outcome == Outcome::Image) {
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
    }
}

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
    const MetaInformation meta = readMetaInformation(d->window);
    file.size = d->window.size();
    file.kind.transferSyntax = meta.transferSyntax;
    const bool isPlain = meta.end > 0 && isAsDeclared(d->window, meta);
    const bool isSought = !isPlain || meta.transferSyntax == DicomUid::deflated;
    if (isSought || !readIdentity(d->window, meta, file)) {
        d->readHeader(meta, file);
    }
    if (isPlain && file.problem == StoreProblem::None) {
        file.dataSet = meta.end;
    }
    d->window.close();
    return file;
}
