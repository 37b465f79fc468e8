#include "spoolindexer.h"

#include "indexwriter.h"
#include "objectspool.h"
#include "receivejournal.h"
#include "spoolfile.h"
#include "spoolqueue.h"

#include <QElapsedTimer>
#include <QFile>

#include <thread>

#include <sys/stat.h>

namespace {

using namespace std::chrono_literals;

constexpr int lockWaitMs = 200;
constexpr qint64 batchMs = 150; ///< how long others may wait for the lock of writers
constexpr qint64 readingMs = 300; ///< for what earlier programs left, before the lock is taken
constexpr auto lockGap = 1500us; ///< how long the lock stays free between two batches
constexpr auto pauseAfterFailure = 1000ms;
constexpr int mostIssues = 500; ///< a writer keeps its report as long as it lives

/// What a writer needs besides the header. @return false where the object is gone
bool fillStamp(WalkedFile &file)
{
    struct stat status = {};
    if (lstat(file.path.constData(), &status) != 0) {
        return false;
    }
    file.stamp = stampOf(status);
    return true;
}

} // namespace

struct SpoolIndexer::Private
{
    Private(const QString &databasePath, ObjectSpool &itsSpool, ReceiveJournal &itsJournal, bool synced);

    void run();
    void index(SpoolItems items);
    SpoolItems readable(SpoolItems items);
    bool prepare();
    bool write(SpoolItems items);
    bool writeOne(SpoolItem &item, ReadFile &file);
    void commit();
    void giveUp();
    void tellIssues();
    void keepAside(const QByteArray &path, ReceiveProblem problem, const QString &detail) const;
    void setApart(SpoolItem item, const QString &why, bool isFull);
    void pause(const QString &why, ImportEnd end);
    void tellWaiting(const QString &why, bool isFull) const;

    ObjectSpool &spool;
    ReceiveJournal &journal;
    ImportRequest request;
    FileStore store;
    DicomReader reader;
    std::unique_ptr<IndexConnection> connection;
    std::unique_ptr<IndexWriter> writer;
    SpoolItems batch; ///< written, not committed
    int told = 0; ///< issues of the writer's report that are dealt with

    SpoolQueue queue;
    std::atomic<DuplicatePolicy> policy{DuplicatePolicy::KeepOld};
    std::atomic<bool> stuck{false};
    std::thread thread;
};

SpoolIndexer::Private::Private(
    const QString &databasePath, ObjectSpool &itsSpool, ReceiveJournal &itsJournal, bool synced)
    : spool(itsSpool)
    , journal(itsJournal)
    , store(databasePath)
{
    request.databasePath = databasePath;
    request.mode = ImportMode::Take;
    request.synced = synced;
}

SpoolIndexer::SpoolIndexer(
    const QString &databasePath, ObjectSpool &spool, ReceiveJournal &journal, bool synced)
    : d(std::make_unique<Private>(databasePath, spool, journal, synced))
{
    for (const QByteArray &path : spool.adopt()) {
        d->queue.add(path, nullptr);
    }
    d->thread = std::thread([this] { d->run(); });
}

SpoolIndexer::~SpoolIndexer()
{
    d->queue.stop();
    d->thread.join();
}

void SpoolIndexer::setPolicy(DuplicatePolicy policy)
{
    d->policy = policy;
}

void SpoolIndexer::add(const QByteArray &path, const DicomReadResult &result)
{
    d->queue.add(path, &result);
}

int SpoolIndexer::waiting() const
{
    return d->queue.waiting();
}

bool SpoolIndexer::isStuck() const
{
    return d->stuck || d->queue.hasApart();
}

void SpoolIndexer::Private::run()
{
    while (!queue.isStopped()) {
        SpoolItems items = queue.take();
        if (!items.empty()) {
            index(std::move(items));
        }
    }
    writer.reset();
    connection.reset(); // on the thread that opened it
}

void SpoolIndexer::Private::index(SpoolItems items)
{
    items = readable(std::move(items));
    if (items.empty() || !prepare() || !writer->begin(false)) {
        queue.putBack(std::move(items)); // where somebody else writes, the next turn may be ours
        return;
    }
    if (write(std::move(items))) {
        commit();
    } else {
        giveUp();
    }
}

/// Reads those that earlier programs left, as long as no lock is held. @return what is to be written
SpoolItems SpoolIndexer::Private::readable(SpoolItems items)
{
    QElapsedTimer time;
    time.start();
    SpoolItems good;
    while (!items.empty() && !time.hasExpired(readingMs) && !queue.isStopped()) {
        SpoolItem item = std::move(items.front());
        items.pop_front();
        WalkedFile file;
        file.path = item.path;
        const bool isThere = fillStamp(file); // else an earlier program had no time to take it off its list
        const bool isWhole = isThere && (item.result || SpoolFile::isWhole(item.path));
        if (isThere && !isWhole) {
            // It was never acknowledged: nobody relies on it, but it may be of use.
            keepAside(item.path, ReceiveProblem::NotReadable, QString());
        }
        if (!isWhole) {
            queue.finish(1);
            continue;
        }
        if (!item.result) {
            item.result = std::make_unique<DicomReadResult>(reader.read(item.path));
        }
        good.push_back(std::move(item));
    }
    queue.putBack(std::move(items));
    return good;
}

/// Opens what is needed to write.
bool SpoolIndexer::Private::prepare()
{
    if (!connection || !connection->isOpen()) {
        writer.reset();
        connection = std::make_unique<IndexConnection>(request.databasePath, lockWaitMs);
        if (!connection->isOpen()) {
            if (connection->failure().reason != ConnectionFailure::Reason::Locked) {
                pause(connection->failure().detail, ImportEnd::IndexFailed);
            }
            return false;
        }
    }
    if (writer && writer->report().issues().size() > mostIssues) {
        writer.reset();
    }
    request.policy = policy;
    if (!writer) {
        writer = std::make_unique<IndexWriter>(request, *connection, store, queue.isStopped());
        told = 0;
    }
    return true;
}

/// @return false where the batch is lost
bool SpoolIndexer::Private::write(SpoolItems items)
{
    QElapsedTimer time;
    time.start();
    bool good = true;
    while (good && !items.empty() && !time.hasExpired(batchMs)) {
        SpoolItem item = std::move(items.front());
        items.pop_front();
        ReadFile file;
        good = writeOne(item, file);
        if (good || queue.isStopped()) {
            batch.push_back(std::move(item));
        } else {
            const bool isPlacing = file.copyError != 0;
            setApart(std::move(item), writer->endDetail(), writer->end() == ImportEnd::DiskFull);
            if (isPlacing) {
                writer->resume();
                good = true;
            }
        }
    }
    queue.putBack(std::move(items));
    return good;
}

bool SpoolIndexer::Private::writeOne(SpoolItem &item, ReadFile &file)
{
    file.file.path = item.path;
    if (!fillStamp(file.file)) {
        return true;
    }
    file.result = *item.result;
    file.taken = file.result.outcome == DicomReadResult::Outcome::Image;
    return writer->write(file);
}

void SpoolIndexer::Private::commit()
{
    if (!writer->commit()) {
        giveUp();
        return;
    }
    const std::size_t written = batch.size();
    batch.clear();
    stuck = false;
    tellIssues();
    journal.countIndexed(static_cast<qint64>(written));
    queue.finish(written);
    std::this_thread::sleep_for(lockGap);
}

/// The batch waits anew.
void SpoolIndexer::Private::giveUp()
{
    writer->abandon();
    queue.putBack(std::move(batch));
    batch.clear();
    const ImportEnd end = writer->end();
    const QString why = writer->endDetail();
    writer.reset();
    if (end != ImportEnd::Complete && !queue.isStopped()) {
        pause(why, end);
    }
}

/// What was not taken still lies in the spool.
void SpoolIndexer::Private::tellIssues()
{
    const QVector<ImportIssue> &issues = writer->report().issues();
    for (; told < issues.size(); ++told) {
        const ImportIssue &issue = issues[told];
        const ReceiveProblem problem = issue.reason == FileReason::OtherContentKept
            ? ReceiveProblem::OtherContentKept
            : ReceiveProblem::NotReadable;
        keepAside(QFile::encodeName(issue.path), problem, issue.detail);
    }
}

void SpoolIndexer::Private::keepAside(
    const QByteArray &path, ReceiveProblem problem, const QString &detail) const
{
    ReceiveEvent event;
    event.problem = problem;
    event.detail = spool.keepAside(path) + QLatin1Char(' ') + detail;
    journal.countKeptAside();
    journal.note(event, false);
}

/// @param why of the writer
void SpoolIndexer::Private::setApart(SpoolItem item, const QString &why, bool isFull)
{
    if (item.apartFor == 0ms) {
        tellWaiting(why + QLatin1Char(' ') + QFile::decodeName(item.path), isFull);
    }
    queue.setApart(std::move(item));
}

void SpoolIndexer::Private::pause(const QString &why, ImportEnd end)
{
    if (!stuck.exchange(true)) {
        tellWaiting(why, end == ImportEnd::DiskFull);
    }
    queue.pause(pauseAfterFailure);
}

void SpoolIndexer::Private::tellWaiting(const QString &why, bool isFull) const
{
    ReceiveEvent event;
    event.problem = isFull ? ReceiveProblem::DiskFull : ReceiveProblem::IndexFailed;
    event.detail = why;
    journal.note(event, false);
}
