#include "startsequence.h"

#include "createconnection.h"
#include "importcentre.h"
#include "importreport.h"
#include "importreporttext.h"
#include "indexwatcher.h"
#include "liverefresh.h"
#include "picturecontroller.h"
#include "shownpatients.h"
#include "tablestage.h"
#include "workstationwindow.h"

#include <QPixmap>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimer>
#include <QVariant>

#include <cstdio>

namespace {

bool indexIsEmpty()
{
    QSqlQuery query(QSqlDatabase::database());
    return query.exec(QStringLiteral("SELECT EXISTS (SELECT 1 FROM patient)")) && query.next()
        && !query.value(0).toBool();
}

} // namespace

StartSequence::StartSequence(CommandLine line, WorkstationWindow *window)
    : QObject(window)
    , m_line(std::move(line))
    , m_window(window)
{ }

void StartSequence::begin()
{
    if (!m_window->hasIndex()) {
        m_code = 1;
        std::fprintf(stderr, "%s\n", connectionFailureText(connectionFailure()).toUtf8().constData());
        finish();
        return;
    }
    const QStringList paths = wantedImports();
    if (paths.isEmpty()) {
        present();
        return;
    }
    connect(m_window->imports(), &ImportCentre::ended, this, &StartSequence::onImportEnded);
    connect(m_window->imports(), &ImportCentre::switchedOff, this, &StartSequence::present);
    if (m_line.quitWhenIdle) {
        m_window->imports()->importUnattended(paths);
    } else {
        m_window->imports()->import(paths);
    }
}

QStringList StartSequence::wantedImports() const
{
    if (m_line.imports.isEmpty() && !m_line.samples.isEmpty() && indexIsEmpty()) {
        return {m_line.samples};
    }
    return m_line.imports;
}

void StartSequence::onImportEnded(const ImportReport &report)
{
    disconnect(m_window->imports(), nullptr, this, nullptr);
    if (report.end != ImportEnd::Complete) {
        m_code = 1;
    }
    if (m_line.quitWhenIdle) {
        say(importReportText(report));
    }
    present();
}

/// Rows on screen: those of today, or all where an older index has none of today.
void StartSequence::present()
{
    ShownPatients *shown = m_window->shownPatients();
    m_window->liveRefresh()->refreshNow();
    if (shown->pick() == DatePick::ArrivedToday && shown->count() == 0 && !indexIsEmpty()) {
        shown->showInstead({}, DatePick::AllDates);
    }
    // The picture shows the counts, too, which another thread takes.
    connect(m_window->indexWatcher(), &IndexWatcher::counted, this, [this] {
        disconnect(m_window->indexWatcher(), nullptr, this, nullptr);
        QTimer::singleShot(0, this, &StartSequence::finish); // once the new texts have found their room
    });
    m_window->indexWatcher()->countNow();
}

void StartSequence::finish()
{
    if (m_line.screenshot.isEmpty()) {
        end();
        return;
    }
    m_window->stage()->selectFirst();
    const PictureController *pictures = m_window->pictures();
    if (pictures->isSettled()) {
        takeScreenshot();
    } else {
        connect(pictures, &PictureController::settled, this, &StartSequence::takeScreenshot);
    }
}

void StartSequence::takeScreenshot()
{
    disconnect(m_window->pictures(), nullptr, this, nullptr);
    if (m_window->grab().save(m_line.screenshot)) {
        say(tr("Screenshot: %1").arg(m_line.screenshot));
    } else {
        std::fprintf(stderr, "%s\n",
            tr("The screenshot could not be saved as %1").arg(m_line.screenshot).toUtf8().constData());
        m_code = 1;
    }
    end();
}

void StartSequence::end()
{
    emit idle();
    if (m_line.quitWhenIdle) {
        emit quitWanted(m_code);
    }
}

void StartSequence::say(const QString &text) const
{
    std::fprintf(stdout, "%s\n", text.toUtf8().constData());
    std::fflush(stdout);
}
