#pragma once

#include "launchersettings.h"

#include <QObject>
#include <QPointer>

class LauncherCentre;
class PatientQueryForm;
class QStatusBar;
class QToolButton;
class SelectionStatus;

/**
 * What the user sees of the launchers: on the panel's buttons what a click will open and whether it runs, and
 * in the status bar an entry that lists what runs and can stop it. Owned by the window; GUI thread.
 */
class LauncherButtons : public QObject
{
    Q_OBJECT

public:
    /// @param panel the query panel, whose signals start the launchers
    LauncherButtons(
        PatientQueryForm *panel, QStatusBar *bar, const SelectionStatus *selection, LauncherCentre *centre);

private:
    void describeButtons();
    void describe(LauncherId id);
    void describeInertButtons();
    void listRunning();

    const QPointer<PatientQueryForm> m_panel;
    QToolButton *const m_running;
    const SelectionStatus *const m_selection;
    const LauncherCentre *const m_centre;
};
