#pragma once

#include "scuassociation.h"
#include "sendjob.h"

#include <QObject>

#include <memory>

/// How a service sends.
struct SendOptions
{
    ScuOptions association; ///< time-outs; the own AE title is set here too
    int associationsPerNode = 2; ///< side by side to one node, where there is enough to send
    int firstPauseMs = 2000; ///< before a node or an object is tried again; doubled each time
    int longestPauseMs = 60'000;
    int attemptsPerObject = 4; ///< before an object that breaks the line or is never answered has failed
    qint64 giveUpMs = qint64(24) * 60 * 60 * 1000; ///< a node that is away for so long fails its objects
    qint64 keepEndedMs = qint64(7) * 24 * 60 * 60 * 1000; ///< ended jobs are forgotten after this
};

/**
 * Sends files to DICOM nodes in the background: jobs on disk, workers that go on with them after a restart or
 * a kill. Where the disk refuses a job or an outcome, it is kept in memory and written once that is possible;
 * nothing is sent meanwhile.
 *
 * What a peer has acknowledged is noted before the next object is sent, so that only the object in flight at
 * a kill may be sent twice. Nodes are served side by side; one that is away holds up no other. Of several
 * programs with the same file of jobs one sends, the others' requests included. All functions and signals are
 * for the GUI thread and none blocks it; the destructor ends the workers within a second and keeps the jobs.
 */
class SendService : public QObject
{
    Q_OBJECT

public:
    /// @param storePath the file of the jobs; made where it does not exist
    explicit SendService(const QString &storePath, SendOptions options = {}, QObject *parent = nullptr);
    ~SendService() override;

    /// The file of the jobs that belongs to an index.
    static QString storePathOf(const QString &indexPath);
    /// The file of these jobs, for a SendLog of another thread.
    QString storePath() const;

    /// Takes files and folders as they come: what is no DICOM file or no path, and folders themselves, are
    /// skipped and counted. @return the job's id at once; it is on the disk a moment later
    qint64 enqueue(
        const QStringList &paths, const DicomNode &node, SendSource source, const SendLabel &label = {});

    /// All jobs by their age, as of the last changed().
    const QVector<SendJob> &jobs() const;
    /// A job with id 0 where there is none.
    SendJob job(qint64 id) const;
    /// Whether a job was asked for of this object.
    bool isOfThisRun(qint64 job) const;
    /// Whether a job was known once and has been removed since.
    bool isForgotten(qint64 job) const;
    /// What has failed in this run of the program since it was last seen.
    qint64 unseenFailures() const;
    /// Somebody looks at them now.
    void setFailuresSeen();
    /// Why the jobs cannot be kept (the words of the database); empty where all is well.
    QString storeProblem() const;

    /// Part of a job's objects in the order of their sending, read from the disk now; waits for nobody, and
    /// is empty where they cannot be read at the moment.
    /// @param onlyFailed leaves all others out
    QVector<SendObject> objects(qint64 job, int first, int count, bool onlyFailed = false) const;

public slots:
    /// For associations from now on.
    void setOwnAeTitle(const QString &aeTitle);
    /// The object in flight is still answered.
    void pause(qint64 job);
    void resume(qint64 job);
    /// What has not been sent never is; the object in flight is cut off.
    void cancel(qint64 job);
    /// Tries what failed again, and at once what waits for a node that was away; a paused or cancelled job
    /// goes on.
    void retryFailed(qint64 job);
    /// Forgets a job that is over.
    void remove(qint64 job);

signals:
    /// jobs() is new; a few times a second at most.
    void changed();
    /// So many more objects of a job were accepted; gathered like changed(), never twice for one object.
    void accepted(qint64 job, int count);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
