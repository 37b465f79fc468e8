#pragma once

#include "launchersettings.h"

#include <QObject>
#include <QVector>

class LaunchedProgram;

/**
 * The programs that launchers have started and that still run. Outlives the window where a session owns it,
 * so that the window of another language or index knows them, too. GUI thread.
 */
class RunningPrograms : public QObject
{
    Q_OBJECT

public:
    /// Clears what programs of earlier runs have left.
    explicit RunningPrograms(QObject *parent = nullptr);

    /// A program that is to be started, or else deleted; it is among the running ones from started() to
    /// ended().
    LaunchedProgram *make(LauncherId id);
    /// In the order of their start.
    const QVector<LaunchedProgram *> &running() const { return m_running; }
    bool isRunning(LauncherId id) const;

signals:
    void changed();
    /// As LaunchedProgram::failed().
    void failed(LauncherId id, const QString &program, const QString &reason);

private:
    QVector<LaunchedProgram *> m_running;
};
