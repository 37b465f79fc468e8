#pragma once

#include "cloudclientplugin_export.h"
#include "correctionrequest.h"
#include "webservice.h"

#include <atomic>
#include <functional>
#include <memory>

class CorrectionJournal;
class IndexSide;
class ServiceSide;

/**
 * Corrects patient data in a service and in the index, both or neither.
 *
 * The objects are fetched, written anew with the same UIDs, stored, and read back; only then the index
 * follows. Whatever goes wrong half-way, the objects are stored back as they were; a journal beside the index
 * does that after a kill, or once the service can be reached again. It blocks: for a thread with an event
 * dispatcher of its own and a stack of correctionStack bytes. The index is opened by path.
 */
class CLOUDCLIENTPLUGIN_EXPORT StudyCorrection
{
public:
    using Show = std::function<void(const CorrectionProgress &)>;

    /// @param service an empty address for none
    /// @param stop is heeded until the first object is stored, and by finishBegun() throughout
    StudyCorrection(WebService service, const std::atomic<bool> &stop, Show show);
    ~StudyCorrection();
    StudyCorrection(const StudyCorrection &) = delete;
    StudyCorrection &operator=(const StudyCorrection &) = delete;

    /// What is the patient's is what the index has when this begins, whatever the caller has read.
    CorrectionReport run(const CorrectionRequest &request);

    /// Finishes or undoes what earlier runs left for this index and service, or without a service what needs
    /// none any more. What cannot come to its end yet is left for the next time.
    /// @return one report each, but for what a stop has cut short
    QVector<CorrectionReport> finishBegun(const QString &databasePath);

private:
    bool begin(const CorrectionRequest &request);
    bool isAlone();
    bool openJournal();
    bool prepare();
    void makeServiceSide();
    void correctTheService();
    IndexSide indexSide(bool heedsStop);
    void correctTheFiles(bool heedsStop);
    void finish();
    void finishInService();
    bool isOver() const;

    const WebService m_service;
    const std::atomic<bool> &m_stop;
    const Show m_show;
    std::unique_ptr<CorrectionJournal> m_journal;
    std::unique_ptr<ServiceSide> m_serviceSide; ///< null where the index is corrected alone
    CorrectionRequest m_request;
    QStringList m_studies; ///< UIDs of those whose objects are corrected
    CorrectionReport m_report;
};
