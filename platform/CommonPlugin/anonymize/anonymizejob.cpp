#include "anonymizejob.h"

#include "anonymizetext.h"
#include "indexjob.h"

#include <QDir>
#include <QVector>

#include <algorithm>

namespace {

constexpr int lookPause = 200;
constexpr int copyMode = int(ImportMode::Copy);

QVector<AnonymizeJob *> &jobs()
{
    static QVector<AnonymizeJob *> all;
    return all;
}

} // namespace

AnonymizeJob::AnonymizeJob(DeidentifyRequest request, AnonymizeOutput output, QObject *parent)
    : QObject(parent)
    , m_output(output)
    , m_run(std::make_shared<DeidentifyRun>(std::move(request)))
    , m_made(std::make_shared<DeidentifyReport>())
    , m_import(std::make_unique<ImportRunner>())
{
    m_look.setInterval(lookPause);
    connect(&m_look, &QTimer::timeout, this, [this] { emit progressed(m_run->done()); });
    m_import->setProgressShown(false);
    connect(m_import.get(), &ImportRunner::finished, this, &AnonymizeJob::onImported);
    jobs().append(this);
}

AnonymizeJob::~AnonymizeJob()
{
    jobs().removeAll(this);
    m_run->cancel();
    delete m_work;
    m_import->disconnect(this);
    m_import.reset();
    if ((m_step == Step::Delivering || m_step == Step::Importing) && !m_made->folder.isEmpty()) {
        QDir(m_made->folder).removeRecursively();
    }
}

bool AnonymizeJob::isAnyRunning()
{
    return std::any_of(
        jobs().cbegin(), jobs().cend(), [](const AnonymizeJob *job) { return job->m_step != Step::Ended; });
}

void AnonymizeJob::cancelAll()
{
    for (AnonymizeJob *job : QVector<AnonymizeJob *>(jobs())) {
        job->cancel();
    }
}

void AnonymizeJob::run(Step step, const std::function<DeidentifyReport()> &work, void (AnonymizeJob::*then)())
{
    m_step = step;
    delete m_work;
    const std::shared_ptr<DeidentifyReport> made = m_made;
    m_work = new IndexJob(
        [made, work](const std::atomic<bool> &, const IndexJob::Progress &) {
            *made = work();
            return QVariant();
        },
        this);
    connect(m_work, &IndexJob::finished, this, then);
    m_work->start();
}

void AnonymizeJob::start()
{
    m_look.start();
    run(
        Step::Making, [job = m_run] { return job->run(); }, &AnonymizeJob::onMade);
}

void AnonymizeJob::cancel()
{
    m_isCancelled = true;
    m_run->cancel();
    m_import->cancel();
    if (m_step == Step::Asking) {
        deliver(false); // which then brings nothing
    } else if (m_step == Step::NotTaken) {
        removeCopies();
    }
}

void AnonymizeJob::onMade()
{
    m_look.stop();
    emit progressed(m_run->done());
    const bool isWhole = !m_made->isCancelled && m_made->ended == DeidentifyProblem::None;
    if (isWhole && !m_isCancelled && !m_made->doubtful.isEmpty()) {
        m_step = Step::Asking;
        emit doubtful(*m_made);
    } else {
        deliver(true);
    }
}

void AnonymizeJob::deliver(bool withBurnedIn)
{
    run(
        Step::Delivering, [job = m_run, withBurnedIn] { return job->deliver(withBurnedIn); },
        &AnonymizeJob::onDelivered);
}

void AnonymizeJob::onDelivered()
{
    m_report = *m_made;
    if (m_isCancelled && !m_report.folder.isEmpty()) { // it came just too late for the run
        m_report.isCancelled = true;
        m_report.files.clear();
        removeCopies();
    } else if (m_output == AnonymizeOutput::Index && !m_report.files.isEmpty()) {
        importAgain();
    } else {
        end();
    }
}

void AnonymizeJob::importAgain()
{
    m_step = Step::Importing;
    emit importing();
    m_import->start({m_report.folder}, copyMode);
}

void AnonymizeJob::onImported(const ImportReport &report)
{
    const qint64 fresh = report.of(FileVerdict::New) + report.of(FileVerdict::Replaced);
    const qint64 taken = fresh + report.of(FileVerdict::AlreadyThere);
    const bool isWhole = taken == m_report.files.size();
    m_extra = AnonymizeText::imported(report);
    if (fresh > 0) {
        emit imported();
    }
    if (isWhole || m_isCancelled) { // the store has copies of its own
        if (!isWhole) {
            m_extra.append(AnonymizeText::notTaken(m_report.files.size() - taken));
        }
        removeCopies();
    } else {
        m_step = Step::NotTaken;
        emit notTaken(m_report, report);
    }
}

void AnonymizeJob::keep()
{
    end();
}

void AnonymizeJob::removeCopies()
{
    const DeidentifyReport report = m_report;
    const auto remove = [report] {
        DeidentifyReport left = report;
        if (QDir(report.folder).removeRecursively()) {
            left.folder.clear();
        }
        return left;
    };
    run(Step::Removing, remove, &AnonymizeJob::end);
}

void AnonymizeJob::end()
{
    m_report = *m_made;
    m_step = Step::Ended;
    emit finished(m_report, m_extra);
}
