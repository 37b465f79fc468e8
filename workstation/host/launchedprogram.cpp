#include "launchedprogram.h"

#include <QVector>

namespace {

constexpr int lookMs = 1000;

/// A process that holds the folder that was made for it.
class HoldingProcess : public QProcess
{
protected:
    void setupChildProcess() override { LaunchFolder::holdByStandardError(); }
};

/// Processes that outlive their objects, so that nothing ends them.
void leaveRunning(QProcess *process)
{
    static auto *left = new QVector<QProcess *>;
    process->disconnect();
    left->append(process);
}

} // namespace

LaunchedProgram::LaunchedProgram(LauncherId launcher, QObject *parent)
    : QObject(parent)
    , m_launcher(launcher)
    , m_process(new HoldingProcess)
{
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(m_folder.errorFile(), QIODevice::Append);
    m_look.setInterval(lookMs);
    connect(&m_look, &QTimer::timeout, this, &LaunchedProgram::trimComplaints);
    connect(m_process, &QProcess::started, this, &LaunchedProgram::started);
    connect(m_process, &QProcess::errorOccurred, this, &LaunchedProgram::onErrorOccurred);
    connect(m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        &LaunchedProgram::onFinished);
}

LaunchedProgram::~LaunchedProgram()
{
    if (m_process->state() == QProcess::NotRunning) {
        m_process->deleteLater();
    } else {
        m_folder.keep(); // the program may still read what was written for it
        leaveRunning(m_process);
    }
}

void LaunchedProgram::start(const QString &program, const QStringList &arguments)
{
    m_sinceStart.start();
    m_look.start();
    m_process->start(program, arguments);
}

void LaunchedProgram::stop()
{
    if (m_isStopping) {
        m_process->kill();
    } else {
        m_isStopping = true;
        m_process->terminate();
    }
}

void LaunchedProgram::onErrorOccurred(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        emit failed(m_process->program(), m_process->errorString());
        end();
    }
}

void LaunchedProgram::onFinished(int exitCode, QProcess::ExitStatus status)
{
    const bool good = status == QProcess::NormalExit && exitCode == 0;
    if (!good && !m_isStopping && m_sinceStart.elapsed() <= comesUpWithinMs) {
        const QString said = m_folder.complaints();
        const QString end = status == QProcess::NormalExit
            ? tr("It ended at once with the code %1.").arg(exitCode)
            : tr("It crashed at once.");
        emit failed(m_process->program(), said.isEmpty() ? end : end + QLatin1Char('\n') + said);
    }
    this->end();
}

/// What a program says after it has come up interests nobody.
void LaunchedProgram::trimComplaints() const
{
    if (m_sinceStart.elapsed() > comesUpWithinMs) {
        m_folder.trim();
    }
}

void LaunchedProgram::end()
{
    emit ended();
    deleteLater();
}
