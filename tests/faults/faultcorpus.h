#pragma once

#include <QString>

/// Writes small CT images into a folder, each in a file of its own: always the same for the same arguments.
/// @param variant goes into the content but not into the UIDs: other bytes under the same UIDs
void writeFaultCorpus(const QString &folder, int files, int variant);
