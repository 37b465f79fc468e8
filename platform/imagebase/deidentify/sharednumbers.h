#pragma once

#include "deidentifier.h"

#include <vector>

/// The numbers that came with different names or birth dates, so that they are of several patients; what is
/// missing differs from nothing.
QSet<QByteArray> sharedNumbers(const std::vector<DeidentifiedFile> &files);
