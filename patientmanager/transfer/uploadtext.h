#pragma once

#include "uploadtally.h"

#include <QString>

/// What the upload window says of its uploads.
namespace UploadText {

/// How an upload stands: "Uploading", "Waiting for you to sign in".
QString ofState(const UploadTally &tally);
/// "4.2 MB/s"; empty where nothing moves.
QString ofRate(const UploadTally &tally);
/// "0:30"; empty while nobody can tell.
QString ofTimeLeft(const UploadTally &tally);
/// What part of the files has been stored, from 0 to 100.
int percentOf(const UploadTally &tally);
/// The same in words: "120 of 400 files, 48 MiB of 200 MiB".
QString ofProgress(const UploadTally &tally);
/// Why a file was not stored.
QString of(const UploadFault &fault);

} // namespace UploadText
