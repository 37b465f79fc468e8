#include "nrunnable.h"

#include "importer.h"
#include "importprogresswidget.h"
#include "importrunner.h"
#include "importsettings.h"

#include <QCoreApplication>

namespace {

/// Runs "try again" in the widget itself, and tells of it as the loader would have.
void retryInWidget(ImportProgressWidget *progress, const std::shared_ptr<LoadNotifier> &notifier, int mode)
{
    progress->setRetry([progress, notifier, mode](const QStringList &paths) {
        auto *runner = progress->findChild<ImportRunner *>();
        if (!runner) {
            runner = new ImportRunner(progress);
            QObject::connect(runner, &ImportRunner::finished, notifier.get(),
                [told = notifier.get()](const ImportReport &report) {
                    emit told->finishReadFiles(report.end == ImportEnd::Complete);
                });
        }
        runner->start(paths, mode, progress);
    });
}

} // namespace

NRunnable::NRunnable()
    : m_notifier(new LoadNotifier, [](LoadNotifier *notifier) { notifier->deleteLater(); })
    , m_progress(new ImportProgressWidget)
{
    setAutoDelete(false);
    connect(m_notifier.get(), &LoadNotifier::begun, m_progress.data(), &ImportProgressWidget::begin);
}

NRunnable::~NRunnable()
{
    const bool ran = m_finished;
    if (!ran) {
        m_report.end = ImportEnd::Cancelled;
        finish();
    }
    // Directly where this is the GUI thread: its event loop may have ended. By way of the application, since
    // the notifier may go before the event. The event must not own the notifier: an application that ends
    // with the event still waiting would delete it under its lock on all events, and hang.
    if (QCoreApplication *application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(application, [progress = m_progress, ran] {
            if (progress && (!ran || progress->isHidden())) {
                progress->deleteLater();
            }
        });
    }
}

int NRunnable::loadDirectors(
    QList<QString> dirs, int type) // NOLINT(performance-unnecessary-value-param): fixed
{
    m_importer.reset();
    if (!ImportSettings::isMode(type)) {
        return 1;
    }
    if (dirs.isEmpty()) {
        return 2;
    }
    m_importer = std::make_shared<Importer>(ImportSettings::request(dirs, type));
    if (m_progress) {
        m_progress->watch(m_importer);
        retryInWidget(m_progress, m_notifier, type);
    }
    return 0;
}

LoadNotifier *NRunnable::notifier() const
{
    return m_notifier.get();
}

ImportProgressWidget *NRunnable::progressWidget() const
{
    return m_progress;
}

void NRunnable::cancel()
{
    if (m_importer) {
        m_importer->cancel();
    }
}

ImportReport NRunnable::report() const
{
    return m_report;
}

void NRunnable::run()
{
    runRunnable();
}

void NRunnable::runRunnable()
{
    if (m_finished) {
        return;
    }
    QMetaObject::invokeMethod(m_notifier.get(), &LoadNotifier::begun, Qt::QueuedConnection);
    if (m_importer) {
        m_report = m_importer->run();
    } else {
        m_report.end = ImportEnd::Cancelled;
    }
    finish();
}

/// Queued even on the GUI thread, so that every receiver sees the loader at rest.
void NRunnable::finish()
{
    m_finished = true;
    QMetaObject::invokeMethod(
        m_notifier.get(),
        [notifier = m_notifier.get(), progress = m_progress, report = m_report] {
            if (progress && progress->isRunning()) {
                progress->showReport(report);
            }
            emit notifier->finishReadFiles(report.end == ImportEnd::Complete);
        },
        Qt::QueuedConnection);
}
