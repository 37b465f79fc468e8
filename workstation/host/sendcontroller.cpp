#include "sendcontroller.h"

#include "dicomdestination.h"
#include "jobtext.h"
#include "patientmanagermainwindow.h"
#include "sendnotifier.h"
#include "sendservice.h"
#include "transfertext.h"

namespace {

SentJob sentJob(const SendJob &job)
{
    SentJob sent;
    sent.id = job.id;
    sent.destination = JobText::destinationOf(job);
    sent.subject = JobText::sourceOf(job);
    sent.isAway = !job.trouble.isNone();
    sent.state = JobText::stateOf(job.state);
    sent.notice = JobText::noticeOf(job);
    sent.total = job.total + job.unlisted;
    sent.accepted = job.accepted;
    sent.warned = job.warned;
    sent.failed = job.failed;
    sent.skipped = job.skippedFolders + job.skippedFiles;
    return sent;
}

/// As it is called in the settings now.
QString nameOf(const DicomNode &node)
{
    for (const DicomDestination &destination : DestinationSettings::read()) {
        if (DicomNode{destination.aeTitle, destination.ip, destination.port} == node) {
            return destination.name;
        }
    }
    return {};
}

} // namespace

SendController::SendController(PatientManagerMainWindow *library, SendService *service, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_service(service)
{
    connect(library, &PatientManagerMainWindow::notifySendSelectData, this, &SendController::send);
    connect(service, &SendService::changed, this, &SendController::tellJobs);
    connect(service, &SendService::accepted, this, &SendController::tellAccepted);
    SendNotifier *notifier = SendNotifier::instance();
    notifier->setFailureReader(
        this, [this](qint64 job, int first, int count) { return failures(job, first, count); });
    connect(notifier, &SendNotifier::retryRequested, service, &SendService::retryFailed);
    connect(notifier, &SendNotifier::cancelRequested, service, &SendService::cancel);
}

void SendController::send(const QStringList &files, const QString &aeTitle, const QString &host, int port)
{
    SendNotifier *notifier = SendNotifier::instance();
    SendJob job;
    job.node = {aeTitle, host, port};
    job.source = notifier->isRequesting() ? SendSource::Dialog : SendSource::Forwarding;
    job.label = notifier->label();
    if (job.label.destination.isEmpty()) {
        job.label.destination = nameOf(job.node);
    }
    job.id = m_service->enqueue(files, job.node, job.source, job.label);
    if (job.source == SendSource::Dialog) {
        job.unlisted = files.size();
        notifier->taken(sentJob(job));
    }
}

void SendController::tellJobs()
{
    SendNotifier *notifier = SendNotifier::instance();
    for (const SendJob &job : m_service->jobs()) {
        if (job.source == SendSource::Dialog) {
            notifier->tell(sentJob(job));
        }
    }
    const QVector<SentJob> told = notifier->jobs();
    for (const SentJob &job : told) {
        if (m_service->isForgotten(job.id)) {
            notifier->forget(job.id);
        }
    }
}

void SendController::tellAccepted(qint64 job, int count)
{
    const SendJob known = m_service->job(job);
    if (known.id == 0 || known.source != SendSource::Dialog || !m_service->isOfThisRun(job)) {
        return;
    }
    for (int object = 0; object < count; ++object) {
        emit m_library->notifyInstanceSent();
    }
}

QVector<SendFailure> SendController::failures(qint64 job, int first, int count) const
{
    QVector<SendFailure> failures;
    for (const SendObject &object : m_service->objects(job, first, count, true)) {
        failures.append({object.path, object.sopInstanceUid, TransferText::of(object.outcome)});
    }
    return failures;
}
