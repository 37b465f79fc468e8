#pragma once

#include "launchersettings.h"

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/**
 * One program that a launcher has started: a process of its own, which goes on when this object and the whole
 * workstation end. What it complains of goes to a file, so that no broken pipe ends it then.
 *
 * Deletes itself once the program has ended. GUI thread.
 */
class LaunchedProgram : public QObject
{
    Q_OBJECT

public:
    LaunchedProgram(LauncherId launcher, QObject *parent);
    ~LaunchedProgram() override;

    LauncherId launcher() const { return m_launcher; }
    qint64 processId() const { return m_process->processId(); }
    /// Writes a text file that names these files, one path a line; it stays while the program runs. @return
    /// its path, empty where it cannot be written
    QString writeFileList(const QStringList &files) const;
    /// started() or failed() answers.
    void start(const QString &program, const QStringList &arguments);
    /// Asks the program to end, and ends it when asked a second time.
    void stop();

    /// A program that fails within this time after its start has not come up.
    static constexpr qint64 comesUpWithinMs = 3000;

signals:
    void started();
    /// It did not start, or died as soon as it had: what the system or the program itself says. Comes before
    /// ended().
    void failed(const QString &program, const QString &reason);
    void ended();

private:
    void onErrorOccurred(QProcess::ProcessError error);
    void onFinished(int exitCode, QProcess::ExitStatus status);
    QString complaints() const;
    void end();

    const LauncherId m_launcher;
    const std::unique_ptr<QTemporaryDir> m_folder;
    QProcess *const m_process; ///< without a parent: deleting it while it runs would end the program
    QElapsedTimer m_sinceStart;
    bool m_isStopping = false;
};
