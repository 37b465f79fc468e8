#pragma once

#include "anonymizeoutputpanel.h"
#include "deidentifyrun.h"
#include "importrunner.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

class IndexJob;

/**
 * One making of anonymous copies, from the first file to where they go: made, looked at where names may be
 * seen in them, brought to their place, and imported where they go into the index. GUI thread; the work is on
 * threads. Ended or destroyed before the copies are in their place, it leaves nothing.
 */
class AnonymizeJob : public QObject
{
    Q_OBJECT

public:
    AnonymizeJob(DeidentifyRequest request, AnonymizeOutput output, QObject *parent = nullptr);
    ~AnonymizeJob() override;

    AnonymizeOutput output() const { return m_output; }
    /// Of the files of the request.
    int count() const;
    void start();
    void cancel();
    /// Answers doubtful(): goes on with all copies, or without those in which names may be seen.
    void deliver(bool withBurnedIn);

signals:
    /// A few times a second, while the copies are made.
    void progressed(int done);
    /// The copies are made, and some must be looked at first: waits for deliver() or cancel().
    void doubtful(const DeidentifyReport &report);
    /// The copies are in their place, and are imported now.
    void importing();
    /// The end. Sentences about the import are among the extra ones.
    void finished(const DeidentifyReport &report, const QStringList &extra);

private:
    void onMade(const DeidentifyReport &report);
    void onDelivered(const DeidentifyReport &report);
    void onImported(const ImportReport &report);
    void run(const std::function<DeidentifyReport(DeidentifyRun &)> &work,
        void (AnonymizeJob::*then)(const DeidentifyReport &));

    const AnonymizeOutput m_output;
    const std::shared_ptr<DeidentifyRun> m_run;
    QPointer<IndexJob> m_work;
    QTimer m_look;
    ImportRunner m_import;
    DeidentifyReport m_report;
    bool m_isDelivering = false; ///< from the answer on
};
