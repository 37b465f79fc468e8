#pragma once

#include "launchersettings.h"

#include <QMap>
#include <QObject>
#include <QVector>

class LaunchFiles;
class LaunchedProgram;
class QWidget;
class RunningPrograms;
class SelectionStatus;
struct LaunchValues;
struct RecordFiles;
struct RecordSelection;

/**
 * Starts the applications of the query panel for what is selected, and tells the user clearly where that
 * cannot be: none is configured, nothing is selected, the program does not start or dies at once.
 *
 * The files of the selection are read on another thread; the launcher is being prepared meanwhile, and is not
 * started a second time. A launcher may run more than once. Owned by the window; GUI thread.
 */
class LauncherCentre : public QObject
{
    Q_OBJECT

public:
    /// @param programs knows what runs
    /// @param window below which messages stand
    LauncherCentre(RunningPrograms *programs, const SelectionStatus *selection, QWidget *window);
    ~LauncherCentre() override;

    /// What runs, in the order of its start.
    const QVector<LaunchedProgram *> &running() const;
    bool isRunning(LauncherId id) const;
    /// Whether the files for it are being read.
    bool isPreparing(LauncherId id) const { return m_preparing.contains(id); }

public slots:
    void start(LauncherId id);

signals:
    /// What runs or is being prepared.
    void runningChanged();

private:
    void prepare(LauncherId id, const Launcher &launcher, const RecordSelection &selected);
    void launch(LauncherId id, const Launcher &launcher, const RecordFiles &files);
    void tell(LauncherId id, const QString &text);

    RunningPrograms *const m_programs;
    const SelectionStatus *const m_selection;
    QWidget *const m_window;
    QMap<LauncherId, LaunchFiles *> m_preparing;
};
