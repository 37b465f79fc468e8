#pragma once

#include "commonplugin_export.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

class Importer;
class ImportProgressPage;
class ImportReport;
class ImportReportPage;
class QStackedWidget;
class QTimer;

/**
 * The window of one import: how far it is, then what it came to.
 *
 * Asks the importer ten times a second and never waits for it. Closed while the import runs, it only hides
 * and comes back with the report; closed after that, it deletes itself. GUI thread; whoever runs the import
 * calls watch(), begin() and showReport().
 */
class COMMONPLUGIN_EXPORT ImportProgressWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ImportProgressWidget(QWidget *parent = nullptr);
    ~ImportProgressWidget() override;

    /// Shows an import that waits for its turn.
    void watch(const std::shared_ptr<Importer> &importer);
    /// Its turn has come.
    void begin();
    /// It has ended, in whatever way.
    void showReport(const ImportReport &report);
    /// True from watch() to showReport().
    bool isRunning() const { return m_importer != nullptr; }

    /// What "Try again" does where nobody has connected to retryRequested().
    void setRetry(const std::function<void(const QStringList &)> &retry);

public slots:
    /// Stops the import; the report follows as soon as it has stopped.
    void cancel();

signals:
    /// "Try again": these files and no others.
    void retryRequested(const QStringList &paths);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void poll();
    void showPage(QWidget *page);
    void tryAgain(const QStringList &paths);

    std::shared_ptr<Importer> m_importer;
    std::function<void(const QStringList &)> m_retry;
    QStackedWidget *m_pages;
    ImportProgressPage *m_progressPage;
    ImportReportPage *m_reportPage;
    QTimer *m_timer;
    bool m_closedWhileRunning = false;
};
