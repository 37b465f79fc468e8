#pragma once

#include "recordform.h"

/**
 * A record form below another one: it shows the rows of one parent, or none, and hands on that files dropped
 * on it have been imported, since they may belong to any patient. GUI thread.
 */
class PATIENTMANAGER_EXPORT DependentForm : public RecordForm
{
    Q_OBJECT

public slots:
    void onLoadFileFinished(bool bResult);

signals:
    void signalLoadFileFinished(bool bResult);

protected:
    using RecordForm::RecordForm;
    void openDependentTable(NTableView *view);

    /// Heights that the window's layouts switch between.
    static constexpr int leastHeight = 100;
    static constexpr int fixedHeight = 75;
    static constexpr int freeHeight = 1111;
};
