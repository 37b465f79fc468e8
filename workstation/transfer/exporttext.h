#pragma once

#include "exportreport.h"

#include <QString>

// Sentences for what an export has to say. Translated.

/// What kind of thing is made, as a choice.
QString exportFormatText(ExportFormat format);
/// What is being done now.
QString exportPhaseText(ExportProgress::Phase phase);
/// How it ended, and how much of it there is.
QString exportEndText(const ExportReport &report);
/// The file, and why it is not there or not as it should be.
QString exportFailureText(const ExportFailure &failure);
/// "3 files, 1.5 MiB"
QString exportSizeText(qint64 files, qint64 bytes);
