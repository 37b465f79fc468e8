#pragma once

#include "uploadjobs.h"
#include "uploadlines.h"
#include "uploadsettling.h"
#include "uploadsource.h"

class UploadRecords;
class UploadSituation;

/**
 * Decides what goes into which request and when, as much at once as the service takes well, and hears what
 * comes back: of the service, which it keeps away from in trouble, and of the files. Lives on one thread with
 * an event loop.
 */
class UploadSender : public QObject
{
    Q_OBJECT

public:
    /// All but the path and the parent must outlive it.
    UploadSender(const QString &databasePath, UploadSituation &situation, UploadJobs &jobs,
        UploadRecords &records, QObject *parent = nullptr);

    /// Requests from now on go to the service of the session.
    void openLines();
    /// Sends what may be sent at the moment.
    void sendOn();
    /// Cuts off what is on its way of an upload.
    void abort(qint64 task) { m_lines.abort(task); }

signals:
    /// The service takes the session no longer; told once a session.
    void sessionRefused();

private:
    bool maySend() const;
    UploadBatch nextBatch();
    void onCame(const UploadBatch &batch, const StoreAnswer &answer);
    void hearOfService(const UploadBatch &batch, const StoreAnswer &answer, bool isLeft);

    UploadSituation &m_situation;
    UploadJobs &m_jobs;
    UploadRecords &m_records;
    UploadSource m_source;
    UploadSettling m_settling;
    UploadLines m_lines;
};
