#pragma once

#include <QString>

struct RecordSelection;

/// Some records, and whose they are: "2 series of Meier, Anna"; empty for none. Reads the names from the
/// default connection; without them where that is not possible. GUI thread.
QString subjectOf(const RecordSelection &records);
