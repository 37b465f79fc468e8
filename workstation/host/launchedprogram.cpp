#include "launchedprogram.h"

#include <QFile>
#include <QVector>

#include <algorithm>

namespace {

/// As much as a message box shows of what a program has said.
constexpr qint64 lastBytes = 2000;
constexpr int lastLines = 8;
constexpr char errorFile[] = "errors.txt";

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
    , m_folder(std::make_unique<QTemporaryDir>())
    , m_process(new QProcess)
{
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(m_folder->filePath(QLatin1String(errorFile)));
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
        m_folder->setAutoRemove(false); // the program may still read what was written for it
        leaveRunning(m_process);
    }
}

QString LaunchedProgram::writeFileList(const QStringList &files) const
{
    QFile list(m_folder->filePath(QStringLiteral("files.txt")));
    QByteArray lines;
    for (const QString &file : files) {
        lines += file.toUtf8() + '\n';
    }
    const bool written =
        m_folder->isValid() && list.open(QIODevice::WriteOnly) && list.write(lines) == lines.size();
    return written && list.flush() ? list.fileName() : QString();
}

void LaunchedProgram::start(const QString &program, const QStringList &arguments)
{
    m_sinceStart.start();
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
        const QString said = complaints();
        const QString end = status == QProcess::NormalExit
            ? tr("It ended at once with the code %1.").arg(exitCode)
            : tr("It crashed at once.");
        emit failed(m_process->program(), said.isEmpty() ? end : end + QLatin1Char('\n') + said);
    }
    this->end();
}

/// The last lines of its complaints.
QString LaunchedProgram::complaints() const
{
    QFile file(m_folder->filePath(QLatin1String(errorFile)));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    file.seek(std::max<qint64>(0, file.size() - lastBytes));
    const QStringList lines = QString::fromLocal8Bit(file.readAll()).trimmed().split(QLatin1Char('\n'));
    return QStringList(lines.mid(std::max(0, lines.size() - lastLines))).join(QLatin1Char('\n'));
}

void LaunchedProgram::end()
{
    emit ended();
    deleteLater();
}
