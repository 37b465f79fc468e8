#include "fileissue.h"

#include "archivemember.h"
#include "readfile.h"
#include "systemtext.h"

#include <QFile>

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace {

using Verdict = std::pair<FileVerdict, FileReason>;

Verdict verdictOf(DicomReadResult::Outcome outcome)
{
    using Outcome = DicomReadResult::Outcome;
    switch (outcome) {
    case Outcome::MediaDirectory:
        return {FileVerdict::MediaDirectory, FileReason::None};
    case Outcome::NotDicom:
        return {FileVerdict::NotDicom, FileReason::NotDicom};
    case Outcome::Unreadable:
        return {FileVerdict::Unreadable, FileReason::Damaged};
    case Outcome::NoPatientOrStudy:
        return {FileVerdict::Refused, FileReason::NoPatientOrStudy};
    case Outcome::MissingUid:
        return {FileVerdict::Refused, FileReason::MissingUid};
    case Outcome::MalformedUid:
        return {FileVerdict::Refused, FileReason::MalformedUid};
    case Outcome::CannotOpen:
    case Outcome::Image:
        break;
    }
    return {FileVerdict::Skipped, FileReason::ReadFailed};
}

bool isForbidden(const QByteArray &path)
{
    return access(path.constData(), R_OK) != 0 && errno == EACCES;
}

} // namespace

ImportIssue fileIssue(const ReadFile &file, FileVerdict verdict, FileReason reason, const QString &detail)
{
    const QString archive = file.file.member ? file.file.member->archive : QString();
    return {QFile::decodeName(file.file.path), verdict, reason, detail, archive};
}

std::optional<ImportIssue> fileIssueOf(const ReadFile &file)
{
    if (file.file.reason != FileReason::None) {
        return fileIssue(file, FileVerdict::Skipped, file.file.reason, file.file.detail);
    }
    if (file.result.outcome != DicomReadResult::Outcome::Image) {
        auto [verdict, reason] = verdictOf(file.result.outcome);
        if (reason == FileReason::ReadFailed && isForbidden(file.file.path)) {
            reason = FileReason::NoPermission;
        }
        return fileIssue(file, verdict, reason, file.result.detail);
    }
    if (file.copyError != 0) {
        return fileIssue(file, FileVerdict::Refused, FileReason::CopyFailed, systemText(file.copyError));
    }
    return std::nullopt;
}
