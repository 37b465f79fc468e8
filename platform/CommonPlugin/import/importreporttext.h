#pragma once

#include "commonplugin_export.h"
#include "connectionfailure.h"
#include "importreport.h"

#include <QString>

// Sentences for what the index and its imports have to say; whoever shows or prints it asks here. Translated.

/// The whole report, as the command line prints it: how it ended, each count on a line, each file that was
/// not indexed with its reason.
COMMONPLUGIN_EXPORT QString importReportText(const ImportReport &report);
/// How it ended and how many files it found, in one line.
COMMONPLUGIN_EXPORT QString importEndText(const ImportReport &report);
/// What a count counts, such as "Already in the index".
COMMONPLUGIN_EXPORT QString verdictText(FileVerdict verdict);
/// Why a file was not indexed.
COMMONPLUGIN_EXPORT QString reasonText(const ImportIssue &issue);
/// Why the index cannot be opened and what to do about it.
COMMONPLUGIN_EXPORT QString connectionFailureText(const ConnectionFailure &failure);
