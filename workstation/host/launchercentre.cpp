#include "launchercentre.h"

#include "createconnection.h"
#include "kivmessageboxform.h"
#include "launchcommand.h"
#include "launchedprogram.h"
#include "recordfiles.h"
#include "selectionstatus.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QWidget>

#include <algorithm>

LauncherCentre::LauncherCentre(const SelectionStatus *selection, QWidget *window)
    : QObject(window)
    , m_selection(selection)
    , m_window(window)
{ }

LauncherCentre::~LauncherCentre() = default;

bool LauncherCentre::isRunning(LauncherId id) const
{
    return std::any_of(m_running.begin(), m_running.end(),
        [id](const LaunchedProgram *program) { return program->launcher() == id; });
}

void LauncherCentre::start(LauncherId id)
{
    const Launcher launcher = LauncherSettings::read(id);
    const RecordSelection selected = m_selection->current();
    const RecordFiles files = selected.isEmpty()
        ? RecordFiles()
        : recordFiles(QSqlDatabase::database(), selected.level, selected.keys);
    if (!mayStart(id, launcher, files)) {
        return;
    }
    LaunchedProgram *program = makeProgram(id);
    const LaunchValues values{files.paths, program->writeFileList(files.paths), files.studyUid,
        files.seriesUid, files.patientId, QDir::toNativeSeparators(databasePath()),
        QCoreApplication::applicationFilePath()};
    program->start(LaunchCommand::program(launcher.program, values),
        LaunchCommand::arguments(launcher.arguments, values));
}

bool LauncherCentre::mayStart(LauncherId id, const Launcher &launcher, const RecordFiles &files)
{
    const QString caption = LauncherSettings::caption(id);
    if (!launcher.isConfigured()) {
        tell(caption,
            tr("No program is configured for \"%1\". Choose one under Tools > Settings > Applications.")
                .arg(caption));
        return false;
    }
    if (!LaunchCommand::needsSelection(launcher.arguments) || !files.paths.isEmpty()) {
        return true;
    }
    const QString selected = m_selection->current().text();
    tell(caption,
        selected.isEmpty() ? tr("Nothing is selected. Select patients, studies, series or images first.")
                           : tr("The index names no image files of what is selected (%1).").arg(selected));
    return false;
}

LaunchedProgram *LauncherCentre::makeProgram(LauncherId id)
{
    auto *program = new LaunchedProgram(id, this);
    const QString caption = LauncherSettings::caption(id);
    connect(program, &LaunchedProgram::started, this, [this, program] {
        m_running.append(program);
        emit runningChanged();
    });
    connect(program, &LaunchedProgram::ended, this, [this, program] {
        if (m_running.removeOne(program)) {
            emit runningChanged();
        }
    });
    // Queued: the message box runs events, while the program is about to be deleted.
    connect(
        program, &LaunchedProgram::failed, this,
        [this, caption](const QString &command, const QString &reason) {
            tell(caption, tr("The program for \"%1\" did not come up: %2\n%3").arg(caption, command, reason));
        },
        Qt::QueuedConnection);
    return program;
}

void LauncherCentre::tell(const QString &caption, const QString &text)
{
    kivMessageBoxForm::warning(
        m_window, caption, text, kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
}
