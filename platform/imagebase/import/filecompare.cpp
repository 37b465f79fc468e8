#include "filecompare.h"

#include <QFile>

bool sameBytes(const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled)
{
    constexpr qint64 step = 256 << 10;
    QFile one(QFile::decodeName(onePath));
    QFile other(QFile::decodeName(otherPath));
    if (!one.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        || !other.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || one.size() != other.size()) {
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
