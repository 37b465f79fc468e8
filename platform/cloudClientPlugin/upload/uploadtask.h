#pragma once

#include "cloudclientplugin_export.h"
#include "uploadtally.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class UploadEngine;

/**
 * One upload, as its window sees it: a handle of what stands in the index and is sent on other threads.
 * Lives on the GUI thread, and belongs to who asked for it; deleting it ends no upload. It starts from the
 * event loop, so connections that are made right after it was made hear all.
 */
class CLOUDCLIENTPLUGIN_EXPORT UpLoadTask : public QObject
{
    Q_OBJECT

public:
    ~UpLoadTask() override;

    /// A number of the window's own.
    int number() const { return m_number; }
    void setNumber(int number) { m_number = number; }
    QString patientName() const { return m_patientName; }
    /// Kept in the index, for the next start of the program.
    void setPatientName(const QString &name);
    QStringList seriesUIDs() const { return m_seriesUids; }
    int fileCount() const { return m_tally.all; }

    UploadTally tally() const { return m_tally; }
    /// What failed until now, read from the index.
    QVector<UploadFault> faults() const;

    /// Cancels what waits and what is on its way, and forgets the upload; within a second. What the service
    /// has acknowledged stays recorded.
    void finishTask();
    /// Records once more in the index what the service has acknowledged. With false nothing is done.
    void setUploadedCloudflag(bool isUploaded);
    /// What has failed waits again.
    void retryFailed();
    /// Asks a service that is away at once, for all uploads: they wait for the same one.
    void tryNow();

signals:
    /// At most five times a second, and once with the last numbers.
    void progress(int failed, int succeeded, int all, UpLoadTask *task);
    /// Nothing waits any more; again after each retryFailed().
    void finshUpLoad(int failed, int succeeded, QStringList failedPaths, QByteArray sessionId);
    /// Nothing is left to do with it: all is stored, or finishTask() ended it.
    void finshTask(UpLoadTask *task);
    /// tally() is another; at most five times a second.
    void changed(UpLoadTask *task);

private:
    friend class UploadEngine;
    UpLoadTask(
        UploadEngine &engine, qint64 id, QString patientName, QStringList seriesUids, UploadTally tally);

    void take(const UploadTally &tally);
    void tellRunEnd();
    void tellEnd();

    UploadEngine *m_engine; ///< null once its index has been released
    const qint64 m_id;
    int m_number = 0;
    QString m_patientName;
    const QStringList m_seriesUids;
    UploadTally m_tally;
    bool m_hasEnded = false;
};
