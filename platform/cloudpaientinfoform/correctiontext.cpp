#include "correctiontext.h"

#include "dicomdate.h"
#include "personname.h"
#include "webfailuretext.h"

#include <QStringList>

namespace {

QString joined(const QStringList &sentences)
{
    QStringList said = sentences;
    said.removeAll(QString());
    return said.join(QLatin1Char('\n'));
}

} // namespace

QString CorrectionText::field(PatientField field)
{
    switch (field) {
    case PatientField::Name:
        return tr("Name");
    case PatientField::Id:
        return tr("Patient ID");
    case PatientField::BirthDate:
        return tr("Birth date");
    case PatientField::Sex:
        return tr("Sex");
    case PatientField::Comments:
        break;
    }
    return tr("Comments");
}

QString CorrectionText::value(PatientField field, const QString &value)
{
    if (value.trimmed().isEmpty()) {
        return QStringLiteral("–");
    }
    if (field == PatientField::Name) {
        return personNameForDisplay(value);
    }
    if (field == PatientField::BirthDate) {
        return dateForDisplay(value);
    }
    if (field == PatientField::Sex) {
        return value == QLatin1String("M") ? tr("male")
            : value == QLatin1String("F")  ? tr("female")
            : value == QLatin1String("O")  ? tr("other")
                                           : value;
    }
    return value;
}

/// On one line, and no longer than that.
QString CorrectionText::shortValue(PatientField field, const QString &text)
{
    constexpr int most = 80;
    const QString line = value(field, text).simplified();
    return line.size() <= most ? line : line.left(most) + QStringLiteral("…");
}

QString CorrectionText::step(const CorrectionProgress &progress)
{
    switch (progress.step) {
    case CorrectionProgress::Step::Fetching:
        return tr("Fetching the images from the service… %1").arg(progress.done);
    case CorrectionProgress::Step::Writing:
        return tr("Writing corrected images… %1 of %2").arg(progress.done).arg(progress.all);
    case CorrectionProgress::Step::Storing:
        return tr("Storing… %1 of %2").arg(progress.done).arg(progress.all);
    case CorrectionProgress::Step::Checking:
        return tr("Reading back from the service… %1 of %2").arg(progress.done).arg(progress.all);
    case CorrectionProgress::Step::CorrectingCopies:
        return tr("Correcting the files on this computer… %1 of %2").arg(progress.done).arg(progress.all);
    case CorrectionProgress::Step::Restoring:
        break;
    }
    return tr("Storing the images back as they were… %1 of %2").arg(progress.done).arg(progress.all);
}

QString CorrectionText::indexProblem(const IndexCorrectionResult &result)
{
    switch (result.problem) {
    case IndexCorrectionResult::Problem::None:
        return {};
    case IndexCorrectionResult::Problem::NotFound:
        return tr("The study is not in the index any more.");
    case IndexCorrectionResult::Problem::StudyTwice:
        return tr("The index has a patient of these data already, with the same study.");
    case IndexCorrectionResult::Problem::Database:
        break;
    }
    return tr("The index cannot be used: %1").arg(result.error.text());
}

/// A field that was changed somewhere, with what it was there; empty for the others.
QString CorrectionText::change(const CorrectionReport &report, PatientField one, const StudyFacts &before)
{
    const bool inService = report.inService.contains(one);
    const bool inIndex = report.inIndex.contains(one);
    if (!inService && !inIndex) {
        return {};
    }
    const QString index = shortValue(one, before.index.values[one]);
    const QString service = shortValue(one, before.service[one]);
    const QString where = inService && inIndex ? tr("index and service")
        : inIndex                              ? tr("index only")
                                               : tr("service only; the index had it already");
    QString old = inIndex ? index : service;
    if (inService && inIndex && index != service) {
        old = tr("%1 in the index, %2 in the service").arg(index, service);
    }
    return tr("%1: %2 → %3 (%4)").arg(field(one), old, shortValue(one, report.changes[one]), where);
}

QString CorrectionText::changes(const CorrectionReport &report, const StudyFacts &before)
{
    QStringList lines;
    for (const PatientField field : report.changes.keys()) {
        lines += change(report, field, before);
    }
    const QString all = joined(lines);
    return all.isEmpty() ? tr("Both had these values already.") : all;
}

QString CorrectionText::filesOf(const IndexedPatient &patient)
{
    return joined({patient.copies > 0
            ? tr("%Ln file(s) of this study in the workstation's store are corrected, too.", nullptr,
                patient.copies)
            : QString(),
        patient.references > 0
            ? tr("%Ln file(s) of this study lie elsewhere and keep the old values: what is exported, sent or "
                 "uploaded from here has them.",
                nullptr, patient.references)
            : QString()});
}

QString CorrectionText::files(const LocalCorrection &files)
{
    return joined({files.corrected > 0
            ? tr("%Ln file(s) on this computer corrected.", nullptr, files.corrected)
            : QString(),
        files.elsewhere > 0
            ? tr("%Ln file(s) that lie elsewhere keep the old values.", nullptr, files.elsewhere)
            : QString(),
        files.failed.isEmpty() ? QString()
                               : tr("%Ln file(s) could not be written and keep the old values, such as %1",
                                   nullptr, files.failed.size())
                                     .arg(files.failed.constFirst())});
}

QString CorrectionText::failure(const CorrectionReport &report)
{
    const QString index = indexProblem(report.index);
    const QString service = WebFailureText::of(report.failure);
    return joined({service, index,
        report.detail.isEmpty() ? QString() : tr("The file or object: %1").arg(report.detail)});
}

QString CorrectionText::report(const CorrectionReport &report, const StudyFacts &before)
{
    using End = CorrectionReport::End;
    const QString asBefore = tr("The service and the index are as they were.");
    switch (report.end) {
    case End::Done:
        return joined({changes(report, before),
            report.objects > 0
                ? tr("%Ln image(s) of the service corrected and read back.", nullptr, report.objects)
                : QString(),
            files(report.files),
            report.isLeft ? tr("The files on this computer are not finished: those that remain are corrected "
                               "the next time that a study is opened here or the program starts.")
                          : QString(),
            report.index.isMerged
                ? tr("The index had a patient of these data already: the studies were put there.")
                : QString()});
    case End::Stopped:
        return tr("Stopped. Nothing was changed.");
    case End::Failed:
        return joined({tr("Nothing was changed."), failure(report)});
    case End::KeptOld:
        return joined({tr("The service took the corrected images but still shows the old ones: it does not "
                          "replace what it has. Its administrator can allow that."),
            asBefore});
    case End::SameStudyThere:
        return joined({tr("The service has this study under the new patient ID already."), asBefore});
    case End::Undone:
        return joined(
            {tr("It did not succeed, and what had been stored was taken back."), failure(report), asBefore});
    case End::UndoPending:
        return joined(
            {tr("It was interrupted half-way. The index is as it was; the service gets back what it had "
                "as soon as you are signed in and it can be reached."),
                failure(report)});
    case End::EarlierPending:
        return tr("Nothing was changed: an earlier correction of these studies has not come to its end yet. "
                  "What it began in the service needs you to be signed in there.");
    case End::Doubled:
        break;
    }
    return tr(
        "The service tells studies apart by the patient ID as well, and offers no way to remove the old one. "
        "One image is there under both IDs now: ask its administrator to remove the one under the new ID. "
        "The "
        "index is as it was.");
}

QString CorrectionText::earlier(const CorrectionReport &report)
{
    if (report.isLeft && report.end != CorrectionReport::End::UndoPending) {
        return joined({tr("An interrupted correction could not be finished yet: the rest of it is left for "
                          "the next time."),
            failure(report)});
    }
    switch (report.end) {
    case CorrectionReport::End::Done:
        return tr("An interrupted correction was finished.");
    case CorrectionReport::End::Undone:
        return tr("An interrupted correction was taken back: the service has what it had before.");
    case CorrectionReport::End::UndoPending:
        return tr("An interrupted correction is still to be taken back in the service.");
    case CorrectionReport::End::Doubled:
        return CorrectionText::report(report, {});
    default:
        return joined({report.objects > 0 ? tr("An interrupted correction could not be finished: the service "
                                               "has the corrected values, the index has not.")
                                          : tr("An interrupted correction could not be finished."),
            failure(report)});
    }
}

QString CorrectionText::earlier(const QVector<CorrectionReport> &reports)
{
    QStringList lines;
    for (const CorrectionReport &report : reports) {
        lines += earlier(report);
    }
    lines.removeDuplicates();
    return joined(lines);
}
