#pragma once

#include "downloadtally.h"

#include <QString>

/// The sentences about downloads. They depend on their parameters and the program's language and locale
/// alone.
namespace DownloadText {

/// What a download does, and why it does not go on.
QString ofState(const DownloadTally &tally);
/// "120 of 400"
QString ofCounts(const DownloadTally &tally);
/// "12.3 MB/s"; empty where nothing comes.
QString ofSpeed(const DownloadTally &tally);
/// "0:30"; empty where that cannot be said.
QString ofTimeLeft(const DownloadTally &tally);

} // namespace DownloadText
