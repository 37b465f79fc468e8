#include "jobtext.h"

#include "sentences.h"
#include "transfertext.h"

#include <QCoreApplication>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(JobText)
};

QString skippedText(const SendJob &job)
{
    QStringList parts;
    if (job.skippedFiles > 0) {
        parts += Text::tr("%Ln file(s) skipped: not DICOM", nullptr, int(job.skippedFiles));
    }
    if (job.warned > 0) {
        parts += Text::tr("%n taken with a warning", nullptr, int(job.warned));
    }
    return Sentences::remarks(parts);
}

} // namespace

namespace JobText {

QString timeOf(const QDateTime &time)
{
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

SendState stateOf(SendJobState state)
{
    switch (state) {
    case SendJobState::Waiting:
        return SendState::Waiting;
    case SendJobState::Sending:
        return SendState::Sending;
    case SendJobState::Paused:
        return SendState::Paused;
    case SendJobState::Cancelled:
        return SendState::Cancelled;
    case SendJobState::Ended:
        break;
    }
    return SendState::Ended;
}

QString destinationOf(const SendJob &job)
{
    return TransferText::ofDestination(job.label.destination, job.node.aeTitle);
}

QString sourceOf(const SendJob &job)
{
    if (!job.label.patients.isEmpty()) {
        return TransferText::ofPatients(job.label.patients, job.label.patientCount);
    }
    return job.source == SendSource::Dialog ? Text::tr("Chosen images") : Text::tr("Forwarded import");
}

QString endOf(const SendJob &job)
{
    const QString counts = TransferText::ofCounts(job.accepted, job.total, job.failed);
    return job.state == SendJobState::Cancelled
        ? Text::tr("Cancelled: %1 to %2, %3", "whose images, where to, how many")
              .arg(sourceOf(job), destinationOf(job), counts)
        : Text::tr("%1 to %2: %3", "whose images, where to, how many")
              .arg(sourceOf(job), destinationOf(job), counts);
}

QString noticeOf(const SendJob &job)
{
    if (!job.isOver() && !job.trouble.isNone()) {
        const QString trouble = TransferText::of(job.trouble);
        return job.nextTry.isValid()
            ? Text::tr("%1. Next attempt at %2.")
                  .arg(trouble, job.nextTry.toLocalTime().toString(QStringLiteral("HH:mm:ss")))
            : trouble;
    }
    if (!job.isOver() && job.unlisted > 0) {
        return Text::tr("%n file(s) still to be looked at", nullptr, int(job.unlisted));
    }
    return skippedText(job);
}

QString stateOf(const SendObject &object)
{
    switch (object.state) {
    case SendObjectState::Waiting:
        return Text::tr("Waiting");
    case SendObjectState::Sending:
        return Text::tr("Being sent");
    case SendObjectState::Accepted:
        return object.outcome.isWarning() ? Text::tr("Taken with a warning") : Text::tr("Taken");
    case SendObjectState::Failed:
        return Text::tr("Failed");
    }
    return {};
}

QString reasonOf(const SendObject &object)
{
    const bool isPlain = object.outcome.isAccepted() && !object.outcome.isWarning();
    return isPlain ? QString() : TransferText::of(object.outcome);
}

} // namespace JobText
