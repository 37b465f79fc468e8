#include "anonymizejob.h"

#include "importreporttext.h"
#include "indexjob.h"

#include <QDir>

Q_DECLARE_METATYPE(DeidentifyReport)

namespace {

constexpr int lookPause = 200;
constexpr int copyMode = 1;

} // namespace

AnonymizeJob::AnonymizeJob(DeidentifyRequest request, AnonymizeOutput output, QObject *parent)
    : QObject(parent)
    , m_output(output)
    , m_run(std::make_shared<DeidentifyRun>(std::move(request)))
{
    m_look.setInterval(lookPause);
    connect(&m_look, &QTimer::timeout, this, [this] { emit progressed(m_run->done()); });
    m_import.setProgressShown(false);
    connect(&m_import, &ImportRunner::finished, this, &AnonymizeJob::onImported);
}

AnonymizeJob::~AnonymizeJob()
{
    m_run->cancel();
    delete m_work;
    m_import.disconnect(this);
    m_import.cancel();
}

int AnonymizeJob::count() const
{
    return m_run->request().files.size();
}

void AnonymizeJob::run(const std::function<DeidentifyReport(DeidentifyRun &)> &work,
    void (AnonymizeJob::*then)(const DeidentifyReport &))
{
    delete m_work;
    const std::shared_ptr<DeidentifyRun> job = m_run;
    m_work = new IndexJob([job, work](const std::atomic<bool> &,
                              const IndexJob::Progress &) { return QVariant::fromValue(work(*job)); },
        this);
    connect(m_work, &IndexJob::finished, this,
        [this, then](const QVariant &result) { (this->*then)(result.value<DeidentifyReport>()); });
    m_work->start();
}

void AnonymizeJob::start()
{
    m_look.start();
    run([](DeidentifyRun &job) { return job.run(); }, &AnonymizeJob::onMade);
}

void AnonymizeJob::cancel()
{
    m_run->cancel();
    m_import.cancel();
    if (!m_look.isActive() && !m_isDelivering) {
        deliver(false); // which then brings nothing
    }
}

void AnonymizeJob::onMade(const DeidentifyReport &report)
{
    m_look.stop();
    emit progressed(m_run->done());
    const bool isWhole = !report.isCancelled && report.ended == DeidentifyProblem::None;
    if (isWhole && !report.doubtful.isEmpty()) {
        emit doubtful(report);
    } else {
        deliver(true);
    }
}

void AnonymizeJob::deliver(bool withBurnedIn)
{
    m_isDelivering = true;
    run([withBurnedIn](DeidentifyRun &job) { return job.deliver(withBurnedIn); }, &AnonymizeJob::onDelivered);
}

void AnonymizeJob::onDelivered(const DeidentifyReport &report)
{
    m_report = report;
    if (m_output == AnonymizeOutput::Index && !report.files.isEmpty()) {
        emit importing();
        m_import.start({report.folder}, copyMode);
        return;
    }
    emit finished(report, {});
}

/// The store has copies of its own now.
void AnonymizeJob::onImported(const ImportReport &report)
{
    QDir(m_report.folder).removeRecursively();
    m_report.folder.clear();
    emit finished(m_report, {importEndText(report)});
}
