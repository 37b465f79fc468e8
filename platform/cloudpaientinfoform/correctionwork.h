#pragma once

#include "correctionrequest.h"
#include "webservice.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

class QThread;
class RunningCorrection;

/// A study's patient as the index and the service have it.
struct StudyFacts
{
    IndexedPatient index;
    bool isInService = false;
    PatientValues service;
    int serviceObjects = 0;
    WebFailure failure; ///< why the service could not say
};

Q_DECLARE_METATYPE(StudyFacts)

/**
 * Reads, and then corrects, on a thread of its own; one of them at a time: a new reading ends the one before,
 * which says no more. Destroying it stops what may be stopped and waits for the rest. GUI thread.
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
    void stop() { m_stop = true; }

signals:
    void known(const StudyFacts &facts);
    /// What an earlier run had left half done.
    void finishedEarlier(const QVector<CorrectionReport> &reports);
    void progress(const CorrectionProgress &progress);
    void finished(const CorrectionReport &report);

private:
    /// What a work says, each on the GUI thread; nothing once another has begun.
    using Tell = std::function<void(const std::function<void()> &)>;
    void begin(const std::function<void(const Tell &)> &work);

    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<RunningCorrection> m_running;
    std::atomic<bool> m_stop{false};
    int m_number = 0; ///< of what was begun last
};
