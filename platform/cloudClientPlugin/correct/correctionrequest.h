#pragma once

#include "indexcorrection.h"
#include "localcopies.h"
#include "webfailure.h"

#include <QSet>

/// What is to be corrected, and where.
struct CorrectionRequest
{
    QString databasePath;
    IndexCorrection index;
    bool inService = true; ///< false corrects the index alone
};

/// What runs, for whoever shows it.
struct CorrectionProgress
{
    enum class Step : quint8 { Fetching, Writing, Storing, Checking, Restoring, CorrectingCopies };
    Step step = Step::Fetching;
    int done = 0;
    int all = 0; ///< 0 where it is not known
};

/// How a correction ended, and what both places hold now.
struct CorrectionReport
{
    enum class End : quint8 {
        Done, ///< as asked: both places, or the index alone
        Stopped, ///< by the user, before anything was changed
        Failed, ///< before anything was changed
        KeptOld, ///< the service took the objects and kept what it had; the index is as it was, too
        SameStudyThere, ///< the service has the study under the new ID already; nothing was changed
        Undone, ///< half-way; both places are as they were again
        UndoPending, ///< half-way; the service gets back what it had once it can be reached again
        EarlierPending, ///< nothing was changed, as an earlier one has not come to its end
        Doubled ///< the service now has an object under both IDs, and no way to remove one was found
    };
    End end = End::Failed;
    bool isLeft = false; ///< a journal keeps what remains to be done for the next time
    WebFailure failure; ///< of the service
    QString detail; ///< of a file or an object, in the system's words
    IndexCorrectionResult index;
    LocalCorrection files; ///< on this computer
    int objects = 0; ///< how many the service has of the studies
    int studies = 0; ///< how many of them it has
    PatientChanges changes;
    QSet<PatientField> inService; ///< fields that were other in the service before
    QSet<PatientField> inIndex; ///< fields that were other in the index before

    /// Ends so, or by a stop where that is why. @return false, which the caller may give back
    bool fail(End how, const WebFailure &why = {})
    {
        end = why.problem == WebProblem::Stopped ? End::Stopped : how;
        failure = why;
        return false;
    }
};

Q_DECLARE_METATYPE(CorrectionReport)
Q_DECLARE_METATYPE(CorrectionProgress)
