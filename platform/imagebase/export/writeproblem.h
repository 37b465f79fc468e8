#pragma once

#include "exportwriter.h"

/// The outcome of a file that the system refused to write.
ExportWriter::Outcome notWritten(int systemError);
/// The outcome of a file that the system refused to read.
ExportWriter::Outcome notRead(int systemError);
/// The bytes of a file come from the disk at the next reading, not from memory.
void forgetCached(const QString &path);
