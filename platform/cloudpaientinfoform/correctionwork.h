#pragma once

#include "correctionrequest.h"
#include "correctionthread.h"
#include "webservice.h"

#include <QObject>

#include <functional>
#include <memory>

class RunningCorrection;

/// A study's patient as the index and the service have it.
struct StudyFacts
{
    IndexedPatient index;
    IndexCorrectionResult found; ///< whether the index has the study, or could say so
    bool isInService = false;
    PatientValues service;
    int serviceObjects = 0;
    WebFailure failure; ///< why the service could not say
};

Q_DECLARE_METATYPE(StudyFacts)

/**
 * Reads, and then corrects, on a thread of its own; one of them at a time: a new reading ends the one before
 * and waits for its end elsewhere; that one says no more but what it has finished. Destroying it stops what
 * may be stopped and waits for the rest. GUI thread.
 */
class CorrectionWork : public QObject
{
    Q_OBJECT

public:
    explicit CorrectionWork(QObject *parent);
    ~CorrectionWork() override;

    /// @param service an empty address for none
    void read(
        const QString &databasePath, qlonglong studyPk, const QString &studyUid, const WebService &service);
    void correct(const CorrectionRequest &request, const WebService &service);
    void stop() { m_thread.stop(); }

signals:
    void known(const StudyFacts &facts);
    /// What an earlier run had left half done; it is told but once, whatever has begun since.
    void finishedEarlier(const QVector<CorrectionReport> &reports);
    void progress(const CorrectionProgress &progress);
    void finished(const CorrectionReport &report);

private:
    using News = std::function<void()>;
    void tell(const News &news);
    void tell(int number, const News &news);

    std::unique_ptr<RunningCorrection> m_running;
    int m_number = 0; ///< of what was begun last
    CorrectionThread m_thread; ///< goes first
};
