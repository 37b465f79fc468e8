#include "decodingshare.h"

#include <QSemaphore>

namespace {

constexpr qint64 unitBytes = 64 * 1024;
constexpr int wholeUnits = int(DecodingShare::whole / unitBytes);

QSemaphore &room()
{
    static QSemaphore units(wholeUnits);
    return units;
}

} // namespace

DecodingShare::DecodingShare(qint64 bytes)
    : m_units(int(qBound<qint64>(1, bytes / unitBytes + 1, wholeUnits)))
{
    room().acquire(m_units);
}

DecodingShare::~DecodingShare()
{
    room().release(m_units);
}
