#pragma once

#include <QtGlobal>

struct RecordSelection;

namespace WaitingUploads {

/// How many images below these records still wait to be uploaded. GUI thread.
qint64 of(const RecordSelection &records);

} // namespace WaitingUploads
