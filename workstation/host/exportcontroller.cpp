#include "exportcontroller.h"

#include "createconnection.h"
#include "exportdialog.h"
#include "exportprogressdialog.h"
#include "exportqueue.h"
#include "exporttext.h"
#include "kivmessageboxform.h"
#include "plaintooltip.h"
#include "selectionstatus.h"
#include "selectionsubject.h"

#include <QAction>
#include <QDir>
#include <QLocale>
#include <QStatusBar>
#include <QToolButton>

namespace {

constexpr int lookMs = 250;
constexpr int shownCharacters = 60;

} // namespace

ExportController::ExportController(const SelectionStatus *selection, QStatusBar *bar, QWidget *window)
    : QObject(window)
    , m_selection(selection)
    , m_window(window)
    , m_queue(new ExportQueue(this))
    , m_action(new QAction(tr("Export &As…"), this))
    , m_button(new QToolButton(bar))
{
    m_action->setObjectName(QStringLiteral("actionExportAs"));
    m_action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+E")));
    m_action->setToolTip(tr("Export what is selected as folders, as a ZIP archive or with a DICOMDIR"));
    m_button->setObjectName(QStringLiteral("exportButton"));
    m_button->setAccessibleDescription(tr("Show the export"));
    m_button->setAccessibleName(m_button->accessibleDescription()); // until there is one to tell of
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->hide();
    bar->addPermanentWidget(m_button);
    m_last.target = QDir::homePath();
    m_look.setInterval(lookMs);
    m_action->setEnabled(connectionFailure().reason == ConnectionFailure::Reason::None);
    connect(m_action, &QAction::triggered, this, &ExportController::ask);
    connect(m_button, &QToolButton::clicked, this, [this] { showJob(m_told); });
    connect(m_queue, &ExportQueue::changed, this, &ExportController::followQueue);
    connect(m_queue, &ExportQueue::ended, this, &ExportController::onEnded);
    connect(&m_look, &QTimer::timeout, this, &ExportController::sayWhatRuns);
}

bool ExportController::isRunning() const
{
    return m_queue->openJobs() > 0;
}

void ExportController::cancelAll()
{
    m_queue->cancelAll();
}

void ExportController::ask()
{
    const RecordSelection records = m_selection->current();
    if (m_asking) {
        return;
    }
    if (records.isEmpty()) { // said as the other actions say it
        kivMessageBoxForm::warning(m_window, tr("Export As"),
            tr("Nothing is selected. Select patients, studies, series or images first."),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
        return;
    }
    ExportRequest request = m_last;
    request.databasePath = databasePath();
    request.level = records.level;
    request.keys = records.keys;
    m_asking = new ExportDialog(request, subjectOf(records), m_window);
    m_asking->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_asking, &ExportDialog::requested, this, [this](const ExportRequest &wanted) {
        m_last = wanted;
        m_last.keys.clear();
        if (wanted.format == ExportFormat::Zip) {
            m_last.target = QFileInfo(wanted.target).path(); // each archive has a name of its own
            m_last.format = ExportFormat::NamedFolders;
        }
        start(wanted);
    });
    m_asking->open();
}

void ExportController::start(const ExportRequest &request)
{
    showJob(m_queue->add(request));
}

void ExportController::showJob(int job)
{
    m_dialogs.removeAll(nullptr);
    for (const QPointer<ExportProgressDialog> &dialog : qAsConst(m_dialogs)) {
        if (dialog->job() == job) {
            dialog->show();
            dialog->raise();
            dialog->activateWindow();
            return;
        }
    }
    auto *dialog = new ExportProgressDialog(m_queue, job, m_window);
    m_dialogs.append(dialog);
    connect(dialog, &ExportProgressDialog::retryRequested, this, &ExportController::start);
    connect(dialog, &QDialog::finished, this, [this, dialog] {
        if (m_queue->job(dialog->job()).state == ExportQueue::State::Ended) {
            m_queue->remove(dialog->job());
            dialog->deleteLater();
            m_dialogs.removeAll(dialog);
            followQueue();
        }
    });
    dialog->show();
}

/// The button is about the job that runs, or else about one that has ended and was not looked at.
void ExportController::followQueue()
{
    const int running = m_queue->runningJob();
    if (running != 0) {
        m_told = running;
        m_look.start();
    } else {
        m_look.stop();
    }
    sayWhatRuns();
}

void ExportController::sayWhatRuns()
{
    const ExportQueue::Job job = m_queue->job(m_told);
    m_button->setVisible(job.id != 0);
    const QLocale locale;
    const ExportProgress progress = m_queue->progress(m_told);
    QString text = exportPhaseText(progress.phase);
    if (job.state == ExportQueue::State::Ended) {
        text = job.report.end == ExportEnd::Complete && job.report.failures.isEmpty()
            ? tr("Exported %1 to %2")
                  .arg(exportSizeText(job.report.files, job.report.bytes),
                      QDir::toNativeSeparators(job.report.made()))
            : tr("An export did not go well");
    } else if (progress.allFiles > 0) {
        text = tr("Export: %1 of %Ln file(s)", nullptr, int(progress.allFiles))
                   .arg(locale.toString(progress.files));
    }
    const int waiting = m_queue->openJobs() - 1;
    if (waiting > 0) {
        text += tr(", %n waiting", nullptr, waiting);
    }
    tell(text);
}

/// A path may be longer than the status bar, and have ampersands.
void ExportController::tell(const QString &text)
{
    const QFontMetrics metrics = m_button->fontMetrics();
    QString shown = metrics.elidedText(text, Qt::ElideMiddle, shownCharacters * metrics.averageCharWidth());
    m_button->setText(shown.replace(QLatin1Char('&'), QLatin1String("&&")));
    m_button->setToolTip(plainToolTip(text));
    m_button->setAccessibleName(text);
}

/// Somebody who has closed the window of a job sees what came of it when that was not what was asked for.
void ExportController::onEnded(int job)
{
    m_told = job;
    const ExportReport report = m_queue->job(job).report;
    const bool asAsked = report.end == ExportEnd::Complete && report.failures.isEmpty();
    if (!asAsked && report.end != ExportEnd::Cancelled) {
        showJob(job);
    }
}
