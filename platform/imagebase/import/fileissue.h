#pragma once

#include "importreport.h"

#include <optional>

struct ReadFile;

ImportIssue fileIssue(
    const ReadFile &file, FileVerdict verdict, FileReason reason, const QString &detail = {});

/// Why a file is not to be entered, as far as that is known without the index; nothing for an image.
std::optional<ImportIssue> fileIssueOf(const ReadFile &file);
