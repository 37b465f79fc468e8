#include "importprogresswidget.h"

#include "companionwindow.h"
#include "importer.h"
#include "importprogresspage.h"
#include "importreportpage.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMetaMethod>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr int pollMs = 100;
} // namespace

ImportProgressWidget::ImportProgressWidget(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_pages(new QStackedWidget(this))
    , m_progressPage(new ImportProgressPage(this))
    , m_reportPage(new ImportReportPage(this))
    , m_timer(new QTimer(this))
{
    setWindowTitle(tr("Import"));
    m_pages->addWidget(m_progressPage);
    m_pages->addWidget(m_reportPage);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    m_timer->setInterval(pollMs);
    connect(m_timer, &QTimer::timeout, this, &ImportProgressWidget::poll);
    connect(m_progressPage, &ImportProgressPage::cancelRequested, this, &ImportProgressWidget::cancel);
    connect(m_reportPage, &ImportReportPage::retryRequested, this, &ImportProgressWidget::tryAgain);
    connect(m_reportPage, &ImportReportPage::closeRequested, this, &QWidget::close);
    closeOnEscape(this);
    // A report that is still open when the program ends has no one else to delete it.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QObject::deleteLater);
}

ImportProgressWidget::~ImportProgressWidget() = default;

void ImportProgressWidget::watch(const std::shared_ptr<Importer> &importer)
{
    m_importer = importer;
    m_closedWhileRunning = false;
    setAttribute(Qt::WA_DeleteOnClose, false);
    m_progressPage->reset();
    showPage(m_progressPage);
}

/// Each page at its own size: the report is much larger.
void ImportProgressWidget::showPage(QWidget *page)
{
    for (QWidget *other : {static_cast<QWidget *>(m_progressPage), static_cast<QWidget *>(m_reportPage)}) {
        const auto policy = other == page ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        other->setSizePolicy(policy, policy);
    }
    m_pages->setCurrentWidget(page);
    adjustSize();
}

void ImportProgressWidget::begin()
{
    if (m_importer) {
        m_progressPage->begin();
        m_timer->start();
    }
}

void ImportProgressWidget::poll()
{
    m_progressPage->showProgress(m_importer->progress());
}

void ImportProgressWidget::cancel()
{
    if (m_importer) {
        m_importer->cancel();
        m_progressPage->showCancelling();
    }
}

void ImportProgressWidget::showReport(const ImportReport &report)
{
    m_timer->stop();
    m_importer.reset();
    m_reportPage->setReport(report);
    showPage(m_reportPage);
    setAttribute(Qt::WA_DeleteOnClose);
    if (m_closedWhileRunning) {
        show();
    }
}

void ImportProgressWidget::setRetry(const std::function<void(const QStringList &)> &retry)
{
    m_retry = retry;
}

void ImportProgressWidget::tryAgain(const QStringList &paths)
{
    if (isSignalConnected(QMetaMethod::fromSignal(&ImportProgressWidget::retryRequested))) {
        emit retryRequested(paths);
        close(); // the receiver shows the new import in a window of its own
    } else if (m_retry) {
        m_retry(paths);
    }
}

void ImportProgressWidget::closeEvent(QCloseEvent *event)
{
    if (isRunning()) {
        m_closedWhileRunning = true;
        event->ignore();
        hide();
    } else {
        QWidget::closeEvent(event);
    }
}
