#include "importrunner.h"

#include "importprogresswidget.h"
#include "importsettings.h"

ImportRunner::ImportRunner(QObject *parent)
    : QObject(parent)
{ }

ImportRunner::~ImportRunner()
{
    cancel();
    m_thread.quit();
    m_thread.wait();
    delete m_worker;
    for (const QPointer<ImportProgressWidget> &widget : qAsConst(m_widgets)) {
        delete widget.data();
    }
}

void ImportRunner::start(const QStringList &paths, int mode)
{
    const bool shown = m_progressShown && ImportSettings::isMode(mode);
    start(paths, mode, shown ? makeProgress(mode) : nullptr);
}

void ImportRunner::start(const QStringList &paths, int mode, ImportProgressWidget *progress)
{
    if (!ImportSettings::isMode(mode)) {
        return;
    }
    const Job job{std::make_shared<Importer>(ImportSettings::request(paths, mode)), progress};
    if (progress) {
        progress->watch(job.importer);
        progress->show();
    }
    m_jobs.append(job);
    if (!m_busy) {
        runNext();
    }
}

ImportProgressWidget *ImportRunner::makeProgress(int mode)
{
    auto *progress = new ImportProgressWidget;
    progress->setRetry([this, progress, mode](const QStringList &paths) { start(paths, mode, progress); });
    m_widgets.removeAll(nullptr);
    m_widgets.append(progress);
    return progress;
}

void ImportRunner::cancel()
{
    for (const Job &job : qAsConst(m_jobs)) {
        job.importer->cancel();
    }
}

ImportProgress ImportRunner::progress() const
{
    return m_jobs.isEmpty() ? ImportProgress() : m_jobs.first().importer->progress();
}

void ImportRunner::runNext()
{
    if (!m_worker) {
        m_worker = new QObject;
        m_worker->moveToThread(&m_thread);
        m_thread.start();
    }
    m_busy = true;
    const Job &job = m_jobs.first();
    if (job.progress) {
        job.progress->begin();
    }
    QMetaObject::invokeMethod(m_worker, [this, importer = job.importer] {
        const ImportReport report = importer->run();
        QMetaObject::invokeMethod(
            this, [this, report] { finish(report); }, Qt::QueuedConnection);
    });
    emit started();
}

void ImportRunner::finish(const ImportReport &report)
{
    const Job job = m_jobs.takeFirst();
    if (job.progress) {
        job.progress->showReport(report);
    }
    const QPointer<ImportRunner> self(this); // a receiver may delete its runner, or start another import
    emit finished(report);
    if (self) {
        m_busy = false;
        if (!m_jobs.isEmpty()) {
            runNext();
        }
    }
}
