#pragma once

#include "deidentifyreport.h"
#include "uniquenames.h"

#include <atomic>

class ExportStage;

/**
 * Brings the anonymous copies of a run from their hidden folder to their place: each gets its name, then all
 * leave together. What comes of it is in the report. One thread.
 */
class DeliveredCopies
{
public:
    /// All outlive it.
    DeliveredCopies(const DeidentifyRequest &request, ExportStage &stage, DeidentifyReport &report);

    /// A copy in the stage, which is removed there where it is not wanted.
    /// @param withBurnedIn whether those in whose pictures names may be seen are wanted
    void add(const QString &passing, const DeidentifiedFile &result, bool withBurnedIn);
    /// False once one could not get its name.
    bool isGood() const { return m_report.ended == DeidentifyProblem::None; }
    /// Nothing where it is not good or was cancelled.
    void deliver(const std::atomic<bool> &cancelled);

private:
    QString nameOf(const DeidentifiedFile &file);
    int rename(const QString &passing, const QString &place);
    int leaveStage(QString &name);
    void fail(int error);

    const DeidentifyRequest &m_request;
    ExportStage &m_stage;
    DeidentifyReport &m_report;
    UniqueNames m_names;
};
