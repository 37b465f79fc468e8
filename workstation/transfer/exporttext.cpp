#include "exporttext.h"

#include "sentences.h"
#include "transfertext.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ExportText)
};

QString problemText(ExportProblem problem)
{
    switch (problem) {
    case ExportProblem::SourceMissing:
        return Text::tr("the file is not there");
    case ExportProblem::SourceUnreadable:
        return Text::tr("the file cannot be read");
    case ExportProblem::SourceChanged:
        return Text::tr("the file changed while it was read");
    case ExportProblem::NotWritten:
        return Text::tr("the copy cannot be written");
    case ExportProblem::Differs:
        return Text::tr("the copy is not what was written");
    case ExportProblem::NotInDirectory:
        return Text::tr("copied, but the DICOMDIR cannot list it");
    case ExportProblem::NameTaken:
        return Text::tr("something of its name is there already");
    }
    return {};
}

/// The first few of them.
QString namesOf(const QStringList &folders)
{
    constexpr int named = 3;
    QStringList names = folders.mid(0, named);
    if (folders.size() > named) {
        names += QStringLiteral("…");
    }
    return names.join(Text::tr(", ", "between names"));
}

QString completeText(const ExportReport &report)
{
    QString text =
        Text::tr("Exported %1 to %2.")
            .arg(exportSizeText(report.files, report.bytes), QDir::toNativeSeparators(report.made()));
    if (report.folders.size() > 1) {
        text = Sentences::followed(text,
            Text::tr("%Ln folder(s) were made there: %1.", nullptr, report.folders.size())
                .arg(namesOf(report.folders)));
    }
    const bool isGood = report.failures.isEmpty();
    if (!isGood) {
        text = Sentences::followed(
            text, Text::tr("Not everything went well: %Ln file(s).", nullptr, report.failures.size()));
    }
    if (report.isReadBack) {
        text = Sentences::followed(text,
            isGood ? Text::tr("All of it was read back and is what was written.")
                   : Text::tr("What was exported was read back and is what was written."));
    }
    return text;
}

QString fullText(const ExportReport &report)
{
    if (report.needed == 0) {
        return Text::tr("The disk is full. Nothing was left there.");
    }
    const QLocale locale;
    return Text::tr("There is not enough room: %1 are needed, %2 are free.")
        .arg(locale.formattedDataSize(report.needed), locale.formattedDataSize(report.available));
}

} // namespace

QString exportSizeText(qint64 files, qint64 bytes)
{
    return Text::tr("%Ln file(s), %1", nullptr, int(files)).arg(QLocale().formattedDataSize(bytes));
}

QString exportFormatText(ExportFormat format)
{
    switch (format) {
    case ExportFormat::KeyFolders:
        return Text::tr("Folders with n&umbers, as Export makes them");
    case ExportFormat::NamedFolders:
        return Text::tr("Folders with the &names of patients, studies and series");
    case ExportFormat::Zip:
        return Text::tr("One &ZIP archive");
    case ExportFormat::Media:
        return Text::tr("DICOM &media with a DICOMDIR, for a disc or a stick");
    }
    return {};
}

QString exportPhaseText(ExportProgress::Phase phase)
{
    switch (phase) {
    case ExportProgress::Phase::Listing:
        return Text::tr("Looking up the files…");
    case ExportProgress::Phase::Writing:
        return Text::tr("Copying…");
    case ExportProgress::Phase::Checking:
        return Text::tr("Reading back and comparing…");
    case ExportProgress::Phase::Placing:
    case ExportProgress::Phase::Done:
        break;
    }
    return Text::tr("Finishing…");
}

QString exportEndText(const ExportReport &report)
{
    switch (report.end) {
    case ExportEnd::Complete:
        return completeText(report);
    case ExportEnd::Cancelled:
        return Text::tr("The export was cancelled. Nothing was left there.");
    case ExportEnd::IndexFailed:
        return TransferText::withDetail(Text::tr("The index cannot be read"), report.endDetail);
    case ExportEnd::Empty:
        return Text::tr("What is selected has no files.");
    case ExportEnd::TargetFailed:
        return TransferText::withDetail(
            Text::tr("Nothing can be written to %1").arg(QDir::toNativeSeparators(report.place)),
            report.endDetail);
    case ExportEnd::TargetTaken:
        return Text::tr("The folder %1 has a DICOMDIR or a folder DICOM already. Choose another folder.")
            .arg(QDir::toNativeSeparators(report.place));
    case ExportEnd::DiskFull:
        return fullText(report);
    case ExportEnd::NotReadBack:
        return Text::tr("What was read back is not what was written. Nothing was left there; the disk or "
                        "the stick may be damaged.");
    }
    return {};
}

QString exportFailureText(const ExportFailure &failure)
{
    return Text::tr("%1: %2", "a file: what is the matter with it")
        .arg(QDir::toNativeSeparators(failure.item.source),
            TransferText::withDetail(problemText(failure.problem), failure.detail));
}
