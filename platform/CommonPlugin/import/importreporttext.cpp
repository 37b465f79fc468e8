#include "importreporttext.h"

#include "transfertext.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImportReportText)
};

QString number(qint64 value)
{
    return QLocale().toString(value);
}

QString plainReason(FileReason reason)
{
    switch (reason) {
    case FileReason::None:
    case FileReason::ArchiveEncrypted: // said with the number of files
        return {};
    case FileReason::Hidden:
        return Text::tr("Hidden");
    case FileReason::LinkLoop:
        return Text::tr("A link that leads back to a folder already visited");
    case FileReason::BrokenLink:
        return Text::tr("A link to nothing");
    case FileReason::NotARegularFile:
        return Text::tr("Not a regular file");
    case FileReason::NoPermission:
        return Text::tr("No permission to read it");
    case FileReason::NoSuchFile:
        return Text::tr("Does not exist");
    case FileReason::NameNotText:
        return Text::tr("Its name is no text in the system's encoding");
    case FileReason::InsideStore:
        return Text::tr("Belongs to the store itself");
    case FileReason::NotDicom:
        return Text::tr("Not DICOM");
    case FileReason::Damaged:
        return Text::tr("Damaged");
    case FileReason::NoPatientOrStudy:
        return Text::tr("Belongs to no patient and study");
    case FileReason::MissingUid:
        return Text::tr("Lacks an identifier");
    case FileReason::MalformedUid:
        return Text::tr("Has an identifier that is not valid");
    case FileReason::OtherContentKept:
        return Text::tr("Another file under the same identifier is in the index and was kept");
    case FileReason::ReadFailed:
        return Text::tr("Could not be read");
    case FileReason::CopyFailed:
        return Text::tr("Could not be copied into the store");
    case FileReason::ArchiveDamaged:
        return Text::tr("Damaged in its archive, or the archive itself is damaged");
    case FileReason::ArchiveNested:
        return Text::tr("An archive too deep within archives");
    case FileReason::ArchiveTooLarge:
        return Text::tr("The archive grows beyond all measure and was left here");
    case FileReason::DatabaseFailed:
        return Text::tr("The index refused it");
    }
    return {};
}

QString countLine(const QString &caption, qint64 count)
{
    return QStringLiteral("  %1: %2\n").arg(caption, number(count));
}

QString howItEnded(const ImportReport &report)
{
    switch (report.end) {
    case ImportEnd::Complete:
        return Text::tr("The import is complete.");
    case ImportEnd::Cancelled:
        return Text::tr("The import was cancelled; what had been imported stays.");
    case ImportEnd::IndexFailed:
        return TransferText::withDetail(
            Text::tr("The import stopped because the index failed"), report.endDetail);
    case ImportEnd::DiskFull:
        return TransferText::withDetail(
            Text::tr("The import stopped because the disk is full"), report.endDetail);
    }
    return {};
}

} // namespace

QString verdictText(FileVerdict verdict)
{
    switch (verdict) {
    case FileVerdict::New:
        return Text::tr("New");
    case FileVerdict::AlreadyThere:
        return Text::tr("Already there");
    case FileVerdict::Replaced:
        return Text::tr("Replaced");
    case FileVerdict::MediaDirectory:
        return Text::tr("Media directories");
    case FileVerdict::NotDicom:
        return Text::tr("Not DICOM");
    case FileVerdict::Unreadable:
        return Text::tr("Unreadable");
    case FileVerdict::Refused:
        return Text::tr("Refused");
    case FileVerdict::Skipped:
        return Text::tr("Skipped");
    case FileVerdict::Count:
        break;
    }
    return {};
}

QString reasonText(const ImportIssue &issue)
{
    if (issue.verdict == FileVerdict::NotDicom || issue.reason == FileReason::NotDicom) {
        if (issue.path.endsWith(QLatin1String(".zip"), Qt::CaseInsensitive)) {
            return Text::tr("Not a readable ZIP archive");
        }
    }
    if (issue.reason == FileReason::ArchiveEncrypted) {
        return Text::tr("Needs a password, %Ln file(s) skipped", nullptr, issue.files);
    }
    return issue.reason == FileReason::None
        ? issue.detail
        : TransferText::withDetail(plainReason(issue.reason), issue.detail);
}

QString importEndText(const ImportReport &report)
{
    const QString seconds = QLocale().toString(double(report.elapsedMs) / 1000, 'f', 1);
    QString text =
        Text::tr("%1 %2 files found in %3 s.").arg(howItEnded(report), number(report.found()), seconds);
    if (report.notReached > 0) {
        text += Text::tr(" %1 more were not reached.").arg(number(report.notReached));
    }
    return text;
}

QString importReportText(const ImportReport &report)
{
    QString text = importEndText(report) + QLatin1Char('\n');
    text += countLine(Text::tr("Found"), report.found());
    for (int i = 0; i < int(FileVerdict::Count); ++i) {
        const auto verdict = static_cast<FileVerdict>(i);
        text += countLine(verdictText(verdict), report.of(verdict));
    }
    if (!report.issues().isEmpty()) {
        text += Text::tr("Not indexed:") + QLatin1Char('\n');
    }
    for (const ImportIssue &issue : report.issues()) {
        text += QStringLiteral("  ") + issue.path + QStringLiteral(": ") + verdictText(issue.verdict);
        const QString reason = reasonText(issue);
        text += (reason.isEmpty() ? QString() : QStringLiteral(" - ") + reason) + QLatin1Char('\n');
    }
    return text;
}

QString connectionFailureText(const ConnectionFailure &failure)
{
    const auto about = [&failure](const QString &sentence) {
        return TransferText::withDetail(sentence.arg(failure.path), failure.detail);
    };
    using Reason = ConnectionFailure::Reason;
    switch (failure.reason) {
    case Reason::None:
        return {};
    case Reason::FolderMissing:
        return about(Text::tr("The folder of the index %1 does not exist and cannot be made"));
    case Reason::CannotOpen:
        return about(Text::tr("The index %1 cannot be opened"));
    case Reason::ReadOnly:
        return about(Text::tr("The index %1 or its folder cannot be written"));
    case Reason::Locked:
        return about(Text::tr("The index %1 is in use by another program. Close that program and try again"));
    case Reason::NotADatabase:
        return about(Text::tr("The file %1 is not an index; it was left as it is"));
    case Reason::Damaged:
        return about(Text::tr("The index %1 is damaged; it was left as it is. Restore it from a backup, or "
                              "move it away and import again"));
    case Reason::Foreign:
        return about(Text::tr("The database %1 belongs to another program; it was left as it is"));
    case Reason::Newer:
        return about(Text::tr("The index %1 was made by a newer version of this program; it was left as it "
                              "is"));
    case Reason::DiskFull:
        return about(Text::tr("There is no space left for the index %1"));
    case Reason::UpgradeFailed:
        return about(Text::tr("The index %1 could not be upgraded; it was left as it is"));
    }
    return {};
}
