#pragma once

#include "launchersettings.h"
#include "launchfolder.h"

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTimer>

/**
 * One program that a launcher has started: a process of its own, which goes on when this object and the whole
 * workstation end. What it complains of goes to a file, so that no broken pipe ends it then; the file is
 * emptied whenever it has become large, as long as a workstation runs.
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
    /// As LaunchFolder; it stays while the program runs.
    QString writeFileList(const QStringList &files) const { return m_folder.writeFileList(files); }
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
    void trimComplaints() const;
    void end();

    const LauncherId m_launcher;
    LaunchFolder m_folder;
    QProcess *const m_process; ///< without a parent: deleting it while it runs would end the program
    QElapsedTimer m_sinceStart;
    QTimer m_look;
    bool m_isStopping = false;
};
