#pragma once

#include "commandline.h"

#include <QObject>

class ImportReport;
class WorkstationWindow;

/**
 * What the workstation does by itself after its start: the imports of the command line or of the samples,
 * then a picture of the window, then the end, each where it was asked for. GUI thread; deletes nothing, runs
 * once.
 */
class StartSequence : public QObject
{
    Q_OBJECT

public:
    StartSequence(CommandLine line, WorkstationWindow *window);

    /// Call once the window is shown and the event loop is about to run.
    void begin();

signals:
    /// The program may end; code is 0, or 1 where there is no index, an import failed or no picture could be
    /// saved.
    void quitWanted(int code);
    /// All is done; also sent where the program goes on.
    void idle();

private:
    QStringList wantedImports() const;
    void onImportEnded(const ImportReport &report);
    void present();
    void finish();
    void takeScreenshot();
    void end();
    void say(const QString &text) const;

    const CommandLine m_line;
    WorkstationWindow *const m_window;
    int m_code = 0;
};
