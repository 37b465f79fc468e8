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
    const MetaInformation meta = readMetaInformation(d->window);
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
