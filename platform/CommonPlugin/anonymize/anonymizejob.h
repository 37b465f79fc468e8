#pragma once

#include "anonymizeoutputpanel.h"
#include "deidentifyrun.h"
#include "importrunner.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class IndexJob;

/**
 * One making of anonymous copies, from the first file to where they go: made, looked at where names may be
 * seen in them, brought to their place, and imported where they go into the index. GUI thread; the work is on
 * threads.
 *
 * Cancelled or destroyed before its end it leaves nothing, except what the index has taken by then. Copies
 * that the index could not take stay in their folder until somebody decides about them.
 */
class AnonymizeJob : public QObject
{
    Q_OBJECT

public:
    AnonymizeJob(DeidentifyRequest request, AnonymizeOutput output, QObject *parent = nullptr);
    ~AnonymizeJob() override;

    AnonymizeOutput output() const { return m_output; }
    const DeidentifyRequest &request() const { return m_run->request(); }
    void start();
    /// Ends it soon; finished() comes then.
    void cancel();
    /// Answers doubtful(): goes on with all copies, or without those in which names may be seen.
    void deliver(bool withBurnedIn);
    /// Answers notTaken(): tries again, or leaves the copies where they are.
    void importAgain();
    void keep();

    /// Whether there is a job that has not come to its end.
    static bool isAnyRunning();
    static void cancelAll();

signals:
    /// A few times a second, while the copies are made.
    void progressed(int done);
    /// The copies are made, and some must be looked at first: waits for deliver() or cancel().
    void doubtful(const DeidentifyReport &report);
    /// The copies are in their place, and are imported now.
    void importing();
    /// The index has new records.
    void imported();
    /// The index has not taken all copies: waits for importAgain(), keep() or cancel().
    void notTaken(const DeidentifyReport &report, const ImportReport &import);
    /// The end. Sentences about the import are among the extra ones.
    void finished(const DeidentifyReport &report, const QStringList &extra);

private:
    enum class Step : quint8 { Making, Asking, Delivering, Importing, NotTaken, Removing, Ended };

    void onMade();
    void onDelivered();
    void onImported(const ImportReport &report);
    void removeCopies();
    void end();
    void run(Step step, const std::function<DeidentifyReport()> &work, void (AnonymizeJob::*then)());

    const AnonymizeOutput m_output;
    const std::shared_ptr<DeidentifyRun> m_run;
    /// What the work came to last: its thread writes it, and nobody reads it before that has ended.
    const std::shared_ptr<DeidentifyReport> m_made;
    QPointer<IndexJob> m_work;
    QTimer m_look;
    std::unique_ptr<ImportRunner> m_import;
    DeidentifyReport m_report;
    QStringList m_extra;
    Step m_step = Step::Making;
    bool m_isCancelled = false;
};
