#pragma once

#include "launchersettings.h"

#include <QObject>
#include <QVector>

class LaunchedProgram;
class QWidget;
class SelectionStatus;
struct LaunchValues;
struct RecordFiles;

/**
 * Starts the applications of the query panel for what is selected, and tells the user clearly where that
 * cannot be: none is configured, nothing is selected, the program does not start or dies at once.
 *
 * A launcher may run more than once. What runs goes on when the window closes. Owned by the window; GUI
 * thread.
 */
class LauncherCentre : public QObject
{
    Q_OBJECT

public:
    /// @param window below which messages stand
    LauncherCentre(const SelectionStatus *selection, QWidget *window);
    ~LauncherCentre() override;

    /// What runs, in the order of its start.
    const QVector<LaunchedProgram *> &running() const { return m_running; }
    bool isRunning(LauncherId id) const;

public slots:
    void start(LauncherId id);

signals:
    void runningChanged();

private:
    bool mayStart(LauncherId id, const Launcher &launcher, const RecordFiles &files);
    LaunchedProgram *makeProgram(LauncherId id);
    void tell(const QString &caption, const QString &text);

    const SelectionStatus *const m_selection;
    QWidget *const m_window;
    QVector<LaunchedProgram *> m_running;
};
