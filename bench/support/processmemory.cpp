#include "processmemory.h"

#include <QByteArray>
#include <QFile>

namespace {

qint64 statusValue(const QByteArray &key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key)) {
            return line.mid(key.size()).simplified().split(' ').first().toLongLong();
        }
    }
    return -1;
}

} // namespace

qint64 ProcessMemory::residentKib()
{
    return statusValue("VmRSS:");
}

qint64 ProcessMemory::peakResidentKib()
{
    return statusValue("VmHWM:");
}
