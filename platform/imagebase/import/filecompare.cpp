#include "filecompare.h"

#include "metainformation.h"

#include <QFile>

namespace {

MetaInformation metaOf(const QByteArray &path)
{
    FileWindow file;
    return file.open(path) ? readMetaInformation(file) : MetaInformation();
}

/// Compares from an offset in each on.
bool sameFrom(const QByteArray &onePath, qint64 oneStart, const QByteArray &otherPath, qint64 otherStart,
    const std::atomic<bool> &cancelled)
{
    constexpr qint64 step = 256 << 10;
    QFile one(QFile::decodeName(onePath));
    QFile other(QFile::decodeName(otherPath));
    if (!one.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        || !other.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        || one.size() - oneStart != other.size() - otherStart || !one.seek(oneStart)
        || !other.seek(otherStart)) {
        return false;
    }
    while (!one.atEnd() && !cancelled) {
        const QByteArray bytes = one.read(step);
        if (bytes.isEmpty() || bytes != other.read(step)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool sameBytes(const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled)
{
    return sameFrom(onePath, 0, otherPath, 0, cancelled);
}

bool sameDataSets(const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled)
{
    const MetaInformation one = metaOf(onePath);
    const MetaInformation other = metaOf(otherPath);
    return one.end > 0 && other.end > 0 && !one.transferSyntax.isEmpty()
        && one.transferSyntax == other.transferSyntax && one.sopClass == other.sopClass
        && sameFrom(onePath, one.end, otherPath, other.end, cancelled);
}
