#include "launchercentre.h"

#include "createconnection.h"
#include "kivmessageboxform.h"
#include "launchcommand.h"
#include "launchedprogram.h"
#include "launchfiles.h"
#include "runningprograms.h"
#include "selectionstatus.h"

#include <QCoreApplication>
#include <QDir>
#include <QWidget>

LauncherCentre::LauncherCentre(RunningPrograms *programs, const SelectionStatus *selection, QWidget *window)
    : QObject(window)
    , m_programs(programs)
    , m_selection(selection)
    , m_window(window)
{
    connect(programs, &RunningPrograms::changed, this, &LauncherCentre::runningChanged);
    connect(programs, &RunningPrograms::failed, this,
        [this](LauncherId id, const QString &command, const QString &reason) {
            tell(id,
                tr("The program for \"%1\" did not come up: %2\n%3")
                    .arg(LauncherSettings::caption(id), command, reason));
        });
}

LauncherCentre::~LauncherCentre() = default;

const QVector<LaunchedProgram *> &LauncherCentre::running() const
{
    return m_programs->running();
}

bool LauncherCentre::isRunning(LauncherId id) const
{
    return m_programs->isRunning(id);
}

void LauncherCentre::start(LauncherId id)
{
    if (isPreparing(id)) {
        return;
    }
    const Launcher launcher = LauncherSettings::read(id);
    const RecordSelection selected = m_selection->current();
    if (!launcher.isConfigured()) {
        tell(id,
            tr("No program is configured for \"%1\". Choose one under Tools > Settings > Applications.")
                .arg(LauncherSettings::caption(id)));
    } else if (!LaunchCommand::needsSelection(launcher.arguments)) {
        launch(id, launcher, {});
    } else if (selected.isEmpty()) {
        tell(id, tr("Nothing is selected. Select patients, studies, series or images first."));
    } else {
        prepare(id, launcher, selected);
    }
}

void LauncherCentre::prepare(LauncherId id, const Launcher &launcher, const RecordSelection &selected)
{
    auto *reader = new LaunchFiles(this);
    m_preparing.insert(id, reader);
    emit runningChanged();
    connect(reader, &LaunchFiles::finished, this, [this, id, launcher, reader, name = selected.text()] {
        const RecordFiles files = reader->files();
        m_preparing.remove(id);
        reader->deleteLater();
        emit runningChanged();
        if (files.paths.isEmpty()) {
            tell(id, tr("The index names no image files of what is selected (%1).").arg(name));
        } else {
            launch(id, launcher, files);
        }
    });
    reader->start(databasePath(), selected);
}

void LauncherCentre::launch(LauncherId id, const Launcher &launcher, const RecordFiles &files)
{
    LaunchValues values{files.paths, QString(), files.studyUid, files.seriesUid, files.patientId,
        QDir::toNativeSeparators(databasePath()), QCoreApplication::applicationFilePath()};
    const QString option = LaunchCommand::strayOption(launcher.arguments, values);
    if (!option.isEmpty()) {
        tell(id,
            tr("The program is not started: the value \"%1\" of the selected records would be taken for an "
               "option.")
                .arg(option));
        return;
    }
    LaunchedProgram *program = m_programs->make(id);
    if (LaunchCommand::uses(launcher.arguments, LauncherPlaceholder::fileList)) {
        values.fileList = program->writeFileList(files.paths);
        if (values.fileList.isEmpty()) {
            delete program;
            tell(id,
                tr("The list of the selected files cannot be written to the folder %1.")
                    .arg(QDir::toNativeSeparators(QDir::tempPath())));
            return;
        }
    }
    program->start(LaunchCommand::program(launcher.program, values),
        LaunchCommand::arguments(launcher.arguments, values));
}

void LauncherCentre::tell(LauncherId id, const QString &text)
{
    kivMessageBoxForm::warning(m_window, LauncherSettings::caption(id), text, kivMessageBoxForm::OkOnly,
        kivMessageBoxForm::AnswerOk);
}
