#include "anonymizetext.h"

#include "importreporttext.h"

#include <QDateTime>

#include <algorithm>

QString AnonymizeText::problem(DeidentifyProblem problem)
{
    switch (problem) {
    case DeidentifyProblem::None:
        break;
    case DeidentifyProblem::CannotRead:
        return tr("The file cannot be read.");
    case DeidentifyProblem::NotDicom:
        return tr("The file is not DICOM.");
    case DeidentifyProblem::NotAnObject:
        return tr("The file holds no object of a patient's study.");
    case DeidentifyProblem::Damaged:
        return tr("The file is damaged: nobody can tell all that it holds.");
    case DeidentifyProblem::TooSlow:
        return tr("Reading it took too long. It may lie on a slow share: copy it to this computer first.");
    case DeidentifyProblem::TooLarge:
        return tr("The file's header is larger than that of any real object.");
    case DeidentifyProblem::CannotWrite:
        return tr("The copy cannot be written.");
    case DeidentifyProblem::DiskFull:
        return tr("The disk is full.");
    case DeidentifyProblem::NoDictionary:
        return tr("The dictionary of DICOM attributes is not installed.");
    case DeidentifyProblem::Cancelled:
        return tr("It was stopped.");
    }
    return {};
}

QString AnonymizeText::keyProblem(const SiteKey::Result &key, const QString &path)
{
    switch (key.problem) {
    case SiteKey::Problem::None:
        break;
    case SiteKey::Problem::NotPrivate:
        return tr(
            "The key of this site, %1, may be read by others. Make it readable for its owner alone: with "
            "it, anybody can tell who is behind a pseudonym.")
            .arg(path);
    case SiteKey::Problem::NotAKey:
        return tr("The file %1 is not a key of this program.").arg(path);
    case SiteKey::Problem::CannotRead:
        return tr("The key of this site, %1, cannot be read: %2").arg(path, key.detail);
    case SiteKey::Problem::CannotMake:
        return tr("A key for this site cannot be written to %1: %2").arg(path, key.detail);
    }
    return {};
}

QString AnonymizeText::noImages()
{
    return tr("The ticked studies have no images.");
}

QString AnonymizeText::noFolder(const QString &path)
{
    return tr("The folder %1 cannot be made.").arg(path);
}

QString AnonymizeText::burnedIn(BurnedIn burnedIn)
{
    switch (burnedIn) {
    case BurnedIn::No:
        break;
    case BurnedIn::Declared:
        return tr("It says that names or faces can be seen in it.");
    case BurnedIn::Possible:
        return tr("It is of a kind that often shows names, and does not say that it shows none.");
    case BurnedIn::HiddenOverlay:
        return tr("Drawings or texts are hidden in bits of its picture.");
    case BurnedIn::Unread:
        return tr("Its picture is packed in a way that may hold texts that are not seen.");
    }
    return {};
}

QString AnonymizeText::burnedIn(const DeidentifyReport &report)
{
    return report.doubtful.isEmpty() ? QString()
                                     : tr("Names or faces may be seen in the picture itself of %n image(s).",
                                         nullptr, report.doubtful.size());
}

QStringList AnonymizeText::summary(const DeidentifyReport &report)
{
    if (report.isCancelled) {
        return {tr("Stopped. Nothing has been kept.")};
    }
    if (report.ended != DeidentifyProblem::None) {
        return {problem(report.ended) + QLatin1Char(' ') + report.endDetail, tr("Nothing has been kept.")};
    }
    QStringList lines{report.files.isEmpty()
            ? tr("No anonymous copy has been made.")
            : tr("%n anonymous copy(ies) made.", nullptr, report.files.size())};
    if (!report.failures.isEmpty()) {
        lines.append(tr("%n file(s) could not be copied.", nullptr, report.failures.size()));
    }
    if (report.leftOut > 0) {
        lines.append(
            tr("%n copy(ies) left out because names may be seen in the picture.", nullptr, report.leftOut));
    }
    if (report.sharedNumbers > 0) {
        lines.append(tr("%n ID(s) belonged to several patients, who were told apart by name and birth date. "
                        "Their pseudonyms are others than in a run without that.",
            nullptr, report.sharedNumbers));
    }
    if (report.documents > 0) {
        lines.append(tr("%n document(s) were replaced by an empty one.", nullptr, report.documents));
    }
    const QString warning = burnedIn(report);
    return warning.isEmpty() ? lines : lines << warning;
}

QStringList AnonymizeText::imported(const ImportReport &report)
{
    QStringList lines{importEndText(report)};
    const QVector<ImportIssue> &issues = report.issues();
    const auto others = std::count_if(issues.begin(), issues.end(),
        [](const ImportIssue &issue) { return issue.reason == FileReason::OtherContentKept; });
    if (others > 0) {
        lines.append(tr("%n copy(ies) of an earlier run, made otherwise, were in the index and stay there "
                        "instead. Delete them first to have the new ones.",
            nullptr, int(others)));
    }
    return lines;
}

QString AnonymizeText::notTaken(qint64 copies)
{
    return tr("%n copy(ies) that the index had not taken have been removed.", nullptr, int(copies));
}

QString AnonymizeText::ownUse()
{
    return tr("The report names the original files. It is for your own use: do not hand it on with the "
              "copies.");
}

QStringList AnonymizeText::options(const DeidentifyOptions &options)
{
    const auto line = [](const QString &what, bool stays, const QString &how) {
        return QStringLiteral("%1: %2").arg(what, stays ? how : tr("removed"));
    };
    return {line(tr("Dates and times"), options.shiftDates, tr("moved by days that belong to the patient")),
        line(tr("Descriptions"), options.cleanDescriptors, tr("cleaned")),
        line(tr("Sex, age, size and weight"), options.keepCharacteristics, tr("kept")),
        line(tr("Attributes of device makers"), !options.removePrivate, tr("kept")),
        tr("Patients are called %1, their IDs are %2").arg(options.namePattern, options.idPattern)};
}

QString AnonymizeText::whole(
    const DeidentifyReport &report, const DeidentifyRequest &request, const QStringList &extra)
{
    QStringList lines{
        tr("Anonymous copies, %1").arg(QDateTime::currentDateTime().toString(Qt::ISODate)), ownUse(), {}};
    lines += options(request.options);
    lines.append(tr("Files: %1").arg(request.files.size()));
    lines += summary(report) + extra;
    if (!report.folder.isEmpty()) {
        lines.append(tr("Folder: %1").arg(report.folder));
    }
    for (const DeidentifyFailure &failure : report.failures) {
        lines.append(
            QStringLiteral("%1\t%2\t%3").arg(failure.path, problem(failure.problem), failure.detail));
    }
    for (const DoubtfulPicture &picture : report.doubtful) {
        lines.append(QStringLiteral("%1\t%2").arg(picture.path, burnedIn(picture.burnedIn)));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
