#include "spoolindexer.h"

#include "indexwriter.h"
#include "objectspool.h"
#include "receivejournal.h"
#include "spoolfile.h"

#include <QElapsedTimer>
#include <QFile>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include <sys/stat.h>

namespace {

using namespace std::chrono_literals;

constexpr int lockWaitMs = 200;
constexpr qint64 batchMs = 150; ///< a batch that syncs its commit costs more than an import's
constexpr auto moreSoon = 20ms; ///< a batch waits this long for a further object
constexpr auto lockGap = 1500us; ///< how long the lock of writers stays free between two batches
constexpr auto pauseAfterFailure = 1000ms;
constexpr std::size_t mostHeaders = 20'000; ///< those of further objects are read again
constexpr int mostIssues = 500; ///< a writer keeps its report as long as it lives

/// What a writer needs besides the header. @return false where the object is gone
bool fillStamp(WalkedFile &file)
{
    struct stat status = {};
    if (lstat(file.path.constData(), &status) != 0) {
        return false;
    }
    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
    file.stamp.size = status.st_size;
    file.stamp.time = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
    file.stamp.inode = status.st_ino;
    return true;
}

} // namespace

struct SpoolIndexer::Private
{
    struct Item
    {
        QByteArray path;
        std::unique_ptr<DicomReadResult> result; ///< null where it is still to be read
    };

    Private(const QString &databasePath, ObjectSpool &itsSpool, ReceiveJournal &itsJournal, bool synced);

    void run();
    void index();
    bool prepare();
    bool waitForWork(std::chrono::milliseconds longest);
    bool writeBatch();
    bool writeOne(Item &item);
    bool commit();
    void putBack();
    void tellIssues();
    void keepAside(const QByteArray &path, ReceiveProblem problem, const QString &detail) const;
    void pause(const QString &why, ImportEnd end);
    std::unique_ptr<Item> next();

    ObjectSpool &spool;
    ReceiveJournal &journal;
    ImportRequest request;
    FileStore store;
    DicomReader reader;
    std::unique_ptr<IndexConnection> connection;
    std::unique_ptr<IndexWriter> writer;
    std::deque<Item> batch; ///< written, not committed
    int told = 0; ///< issues of the writer's report that are dealt with

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Item> queue;
    int inWork = 0; ///< taken from the queue, not committed
    DuplicatePolicy policy = DuplicatePolicy::KeepOld;
    std::atomic<bool> stop{false};
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
        d->queue.push_back({path, nullptr});
    }
    d->thread = std::thread([this] { d->run(); });
}

SpoolIndexer::~SpoolIndexer()
{
    {
        const std::lock_guard lock(d->mutex);
        d->stop = true;
    }
    d->changed.notify_all();
    d->thread.join();
}

void SpoolIndexer::setPolicy(DuplicatePolicy policy)
{
    const std::lock_guard lock(d->mutex);
    d->policy = policy;
}

void SpoolIndexer::add(const QByteArray &path, const DicomReadResult &result)
{
    {
        const std::lock_guard lock(d->mutex);
        const bool keepsHeader = d->queue.size() < mostHeaders;
        d->queue.push_back({path, keepsHeader ? std::make_unique<DicomReadResult>(result) : nullptr});
    }
    d->changed.notify_one();
}

int SpoolIndexer::waiting() const
{
    const std::lock_guard lock(d->mutex);
    return static_cast<int>(d->queue.size()) + d->inWork;
}

bool SpoolIndexer::isStuck() const
{
    return d->stuck;
}

void SpoolIndexer::Private::run()
{
    while (!stop) {
        if (waitForWork(pauseAfterFailure) && !stop) {
            index();
        }
    }
    writer.reset();
    connection.reset(); // on the thread that opened it
}

bool SpoolIndexer::Private::waitForWork(std::chrono::milliseconds longest)
{
    std::unique_lock lock(mutex);
    changed.wait_for(lock, longest, [this] { return stop || !queue.empty(); });
    return !queue.empty();
}

void SpoolIndexer::Private::index()
{
    if (!prepare()) {
        return;
    }
    if (!writer->begin(false)) {
        return; // somebody else writes: the next turn may be ours
    }
    if (!writeBatch() || !commit()) {
        putBack();
        const ImportEnd end = writer->end();
        const QString why = writer->endDetail();
        writer.reset();
        if (end != ImportEnd::Complete) {
            pause(why, end);
        }
    }
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
    {
        const std::lock_guard lock(mutex);
        request.policy = policy;
    }
    if (!writer) {
        writer = std::make_unique<IndexWriter>(request, *connection, store, stop);
        told = 0;
    }
    return true;
}

std::unique_ptr<SpoolIndexer::Private::Item> SpoolIndexer::Private::next()
{
    const std::lock_guard lock(mutex);
    if (queue.empty()) {
        return nullptr;
    }
    auto item = std::make_unique<Item>(std::move(queue.front()));
    queue.pop_front();
    ++inWork;
    return item;
}

bool SpoolIndexer::Private::writeBatch()
{
    QElapsedTimer time;
    time.start();
    while (!stop && time.elapsed() < batchMs) {
        std::unique_ptr<Item> item = next();
        if (!item) {
            if (!waitForWork(moreSoon)) {
                break;
            }
            continue;
        }
        const bool good = writeOne(*item);
        batch.push_back(std::move(*item));
        if (!good) {
            return false;
        }
    }
    return true;
}

bool SpoolIndexer::Private::writeOne(Item &item)
{
    ReadFile file;
    file.file.path = item.path;
    if (!fillStamp(file.file)) {
        return true; // indexed by an earlier program, which had no time to take it off its list
    }
    if (!item.result) {
        if (!SpoolFile::isWhole(item.path)) {
            // It was never acknowledged: nobody relies on it, but it may be of use.
            keepAside(item.path, ReceiveProblem::NotReadable, QString());
            return true;
        }
        item.result = std::make_unique<DicomReadResult>(reader.read(item.path));
    }
    file.result = *item.result;
    file.taken = file.result.outcome == DicomReadResult::Outcome::Image;
    return writer->write(file);
}

bool SpoolIndexer::Private::commit()
{
    if (!writer->commit()) {
        return false;
    }
    const auto written = static_cast<qint64>(batch.size());
    batch.clear();
    stuck = false;
    tellIssues();
    journal.countIndexed(written);
    {
        const std::lock_guard lock(mutex);
        inWork = 0;
    }
    std::this_thread::sleep_for(lockGap);
    return true;
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

void SpoolIndexer::Private::putBack()
{
    writer->abandon();
    const std::lock_guard lock(mutex);
    // The one that failed goes behind the others, so that it holds up none of them.
    const bool failed = writer->end() != ImportEnd::Complete && !batch.empty();
    if (failed) {
        queue.push_back(std::move(batch.back()));
        batch.pop_back();
    }
    while (!batch.empty()) {
        queue.push_front(std::move(batch.back()));
        batch.pop_back();
    }
    inWork = 0;
}

void SpoolIndexer::Private::pause(const QString &why, ImportEnd end)
{
    if (!stuck.exchange(true)) {
        ReceiveEvent event;
        event.problem = end == ImportEnd::DiskFull ? ReceiveProblem::DiskFull : ReceiveProblem::IndexFailed;
        event.detail = why;
        journal.note(event, false);
    }
    std::unique_lock lock(mutex);
    changed.wait_for(lock, pauseAfterFailure, [this] { return stop.load(); });
}
