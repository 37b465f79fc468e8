#include "runningprograms.h"

#include "launchedprogram.h"
#include "launchfolder.h"

#include <algorithm>

RunningPrograms::RunningPrograms(QObject *parent)
    : QObject(parent)
{
    LaunchFolder::sweep();
}

bool RunningPrograms::isRunning(LauncherId id) const
{
    return std::any_of(m_running.begin(), m_running.end(),
        [id](const LaunchedProgram *program) { return program->launcher() == id; });
}

LaunchedProgram *RunningPrograms::make(LauncherId id)
{
    auto *program = new LaunchedProgram(id, this);
    connect(program, &LaunchedProgram::started, this, [this, program] {
        m_running.append(program);
        emit changed();
    });
    connect(program, &LaunchedProgram::ended, this, [this, program] {
        if (m_running.removeOne(program)) {
            emit changed();
        }
    });
    // Queued: who is told shows a message box, which runs events, while the program is about to be deleted.
    connect(
        program, &LaunchedProgram::failed, this,
        [this, id](const QString &command, const QString &reason) { emit failed(id, command, reason); },
        Qt::QueuedConnection);
    return program;
}
