#pragma once

#include "runningprograms.h"

#include <QObject>

/**
 * What goes on when a window is built in the place of another: where a session owns it, the window of another
 * language or index works with the same services. GUI thread.
 */
class SessionServices : public QObject
{
    Q_OBJECT

public:
    explicit SessionServices(QObject *parent = nullptr);

    /// The programs that launchers have started.
    RunningPrograms *programs() const { return m_programs; }

private:
    RunningPrograms *const m_programs;
};
