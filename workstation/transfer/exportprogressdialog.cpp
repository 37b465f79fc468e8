#include "exportprogressdialog.h"

#include "exporttext.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int lookMs = 200;
constexpr int barSteps = 1000;
constexpr int usualWidth = 560;
/// Beyond that nobody reads on.
constexpr int mostFailures = 10'000;

} // namespace

ExportProgressDialog::ExportProgressDialog(ExportQueue *queue, int job, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
    , m_queue(queue)
    , m_job(job)
{
    setObjectName(QStringLiteral("exportProgress"));
    setWindowTitle(tr("Export to %1").arg(QDir::toNativeSeparators(queue->job(job).request.target)));
    build();
    connect(queue, &ExportQueue::changed, this, &ExportProgressDialog::update);
    connect(&m_look, &QTimer::timeout, this, &ExportProgressDialog::update);
    m_look.start(lookMs);
    update();
}

void ExportProgressDialog::build()
{
    m_headline = new QLabel(this);
    m_headline->setObjectName(QStringLiteral("exportHeadline"));
    m_headline->setWordWrap(true);
    m_bar = new QProgressBar(this);
    m_bar->setAccessibleName(tr("Progress of the export"));
    m_figures = new QLabel(this);
    m_failures = new QPlainTextEdit(this);
    m_failures->setObjectName(QStringLiteral("exportFailures"));
    m_failures->setAccessibleName(tr("Files that did not go well"));
    m_failures->setReadOnly(true);
    m_failures->setTabChangesFocus(true);
    m_failures->hide();
    auto *buttons = new QDialogButtonBox(this);
    m_open = buttons->addButton(tr("&Open Folder"), QDialogButtonBox::ActionRole);
    m_retry = buttons->addButton(tr("&Try Again"), QDialogButtonBox::ActionRole);
    m_cancel = buttons->addButton(tr("&Cancel Export"), QDialogButtonBox::ActionRole);
    m_cancel->setObjectName(QStringLiteral("exportCancel"));
    m_retry->setObjectName(QStringLiteral("exportRetry"));
    QPushButton *close = buttons->addButton(QDialogButtonBox::Close);
    close->setDefault(true);
    connect(m_open, &QPushButton::clicked, this, &ExportProgressDialog::openPlace);
    connect(m_retry, &QPushButton::clicked, this, &ExportProgressDialog::retry);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_queue->cancel(m_job); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_headline);
    column->addWidget(m_bar);
    column->addWidget(m_figures);
    column->addWidget(m_failures, 1);
    column->addWidget(buttons);
    resize(usualWidth, sizeHint().height());
}

void ExportProgressDialog::update()
{
    const ExportQueue::Job job = m_queue->job(m_job);
    const bool ended = job.state == ExportQueue::State::Ended;
    m_open->setVisible(ended && job.report.files > 0);
    m_retry->setVisible(
        ended && (job.report.end != ExportEnd::Complete || !job.report.retryItems().isEmpty()));
    m_cancel->setVisible(!ended);
    m_bar->setVisible(!ended);
    m_figures->setVisible(!ended);
    if (ended) {
        m_look.stop();
        showEnd(job.report);
    } else if (job.state == ExportQueue::State::Waiting) {
        m_headline->setText(tr("Waiting for another export to end…"));
        m_bar->setRange(0, 0);
    } else {
        showProgress(m_queue->progress(m_job));
    }
}

void ExportProgressDialog::showProgress(const ExportProgress &progress)
{
    if (progress.phase != m_phase || !m_sincePhase.isValid()) {
        m_phase = progress.phase;
        m_sincePhase.start();
    }
    m_headline->setText(exportPhaseText(progress.phase));
    m_bar->setRange(0, progress.allFiles > 0 ? barSteps : 0);
    const bool byBytes = progress.allBytes > 0;
    const qint64 all = byBytes ? progress.allBytes : qMax<qint64>(1, progress.allFiles);
    m_bar->setValue(int(double(byBytes ? progress.bytes : progress.files) * barSteps / double(all)));
    const QLocale locale;
    const qint64 rate = progress.bytes * 1000 / qMax<qint64>(1, m_sincePhase.elapsed());
    m_figures->setText(tr("%1 of %Ln file(s), %2 of %3, %4/s", nullptr, int(progress.allFiles))
                           .arg(locale.toString(progress.files), locale.formattedDataSize(progress.bytes),
                               locale.formattedDataSize(progress.allBytes), locale.formattedDataSize(rate)));
}

void ExportProgressDialog::showEnd(const ExportReport &report)
{
    m_headline->setText(exportEndText(report));
    if (m_failures->isVisibleTo(this) || report.failures.isEmpty()) {
        return;
    }
    QStringList lines;
    for (const ExportFailure &failure : report.failures.mid(0, mostFailures)) {
        lines.append(exportFailureText(failure));
    }
    if (report.failures.size() > mostFailures) {
        lines.append(tr("and %n more", nullptr, report.failures.size() - mostFailures));
    }
    m_failures->setPlainText(lines.join(QLatin1Char('\n')));
    m_failures->show();
    adjustSize();
}

void ExportProgressDialog::openPlace() const
{
    const QFileInfo place(m_queue->job(m_job).report.made());
    QDesktopServices::openUrl(
        QUrl::fromLocalFile(place.isDir() ? place.absoluteFilePath() : place.absolutePath()));
}

/// Into folders only what failed goes again; an archive or a file set is made anew.
void ExportProgressDialog::retry()
{
    const ExportQueue::Job job = m_queue->job(m_job);
    ExportRequest request = job.request;
    const bool isFolder =
        request.format == ExportFormat::KeyFolders || request.format == ExportFormat::NamedFolders;
    if (isFolder && job.report.end == ExportEnd::Complete) {
        request.items = job.report.retryItems();
    }
    emit retryRequested(request);
    close();
}
