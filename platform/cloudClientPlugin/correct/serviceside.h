#pragma once

#include "correctionrequest.h"
#include "serviceobjects.h"
#include "studycopies.h"

#include <atomic>
#include <memory>

/**
 * The service's side of a correction: its objects, fetched, stored as they are to be and, where need be, as
 * they were. What goes wrong is in the report. It blocks, as ServiceCalls do.
 */
class ServiceSide
{
public:
    using Show = ServiceObjects::Show;
    using Holds = ServiceObjects::Holds;

    /// What is to be corrected, and what is told of it.
    struct Task
    {
        const CorrectionRequest &request;
        const QStringList &studies; ///< UIDs
        CorrectionReport &report;
    };

    /// @param task its references, like stop, outlive this. @param folder gets the files
    ServiceSide(const WebService &service, const std::atomic<bool> &stop, Show show, const Task &task,
        const QString &folder);

    /// Reads the objects, and notes what is other in them. @return false where it failed or was stopped
    bool fetch();
    /// Makes the corrected copies, which are on the disk then. @return false where it failed or was stopped
    bool makeCopies();
    /// From now on no wish to stop is heeded.
    void goOnRegardless();
    /// @return false where not all was stored; what could be undone is
    bool store();
    /// What the service shows now; Unknown where it could not be asked.
    Holds look();
    /// Stores what was, where the service does not have it any more.
    void undo();

    /// For the journal, and from it: then undoBegun() undoes what another run has begun to store.
    QJsonArray toJson() const { return m_objects.toJson(); }
    void recall(const QJsonArray &objects);
    /// As look(), after what is half stored under another ID has been put right where it can; Unknown only
    /// where the service may say it later.
    Holds lookAtBegun();
    void undoBegun();

private:
    void noteObjects();
    bool mayChangeId();
    bool findCopies(WebFailure &unknown);
    bool isThere(StudyCopies &copies, const QString &study, WebFailure &failure) const;
    bool isBarred(const QString &study) const;
    bool keepsUntold() const;
    WebFailure askWhetherDoubled(bool &isDoubled);
    WebFailure keepCopies(bool ofNew);
    WebFailure restore();
    WebFailure lookForOld();
    bool changesId() const;

    const WebService m_service;
    const std::atomic<bool> &m_stop;
    const Task m_task;
    ServiceCalls m_calls;
    ServiceObjects m_objects;
    std::unique_ptr<StudyCopies> m_copies; ///< null where the archive has no way to tell, or need not
};
