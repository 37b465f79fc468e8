#pragma once

#include <QtGlobal>

/// Memory of this process in KiB, as the kernel accounts it; -1 where it does not say.
namespace ProcessMemory {
qint64 residentKib();
qint64 peakResidentKib();
} // namespace ProcessMemory
