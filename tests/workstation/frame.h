#pragma once

#include "importreport.h"
#include "temporaryindex.h"
#include "workstationwindow.h"

#include <QMetaType>

#include <memory>

class NTableView;
class QAction;

Q_DECLARE_METATYPE(ImportReport)

/// A shown workstation window over a fresh index, and a second writer beside it.
class Frame
{
public:
    /// @param patients how many there are from the start, named "Start^0001" and so on, each with a study, a
    /// series and an image
    explicit Frame(int patients = 0);

    TemporaryIndex index;
    std::unique_ptr<WorkstationWindow> window;

    RecordForm *patients() const { return window->forms()[0]; }
    RecordForm *studies() const { return window->forms()[1]; }
    NTableView *patientView() const;
    NTableView *studyView() const;
    QAction *action(const char *objectName) const;

    /// Adds a patient as another program would: on a connection of its own.
    void addFromOutside(const QString &name) const;
    /// Clicks the middle of a cell that is on screen.
    static void click(NTableView *view, int row, const QString &column);
    static int columnOf(NTableView *view, const QString &column);

private:
    void fill(int patients) const;
};
