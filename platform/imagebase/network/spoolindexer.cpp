#include "spoolindexer.h"

#include "indexwriter.h"
#include "objectspool.h"
#include "spoolnotes.h"
#include "spoolqueue.h"
#include "spoolreader.h"
#include "spoolverdicts.h"

#include <QElapsedTimer>
#include <QFile>

#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr int lockWaitMs = 200;
constexpr qint64 batchMs = 150; ///< how long others may wait for the lock of writers
constexpr auto lockGap = 1500us; ///< how long the lock stays free between two batches
constexpr auto pauseAfterFailure = 1000ms;
constexpr int mostIssues = 500; ///< a writer keeps its report as long as it lives

} // namespace

struct SpoolIndexer::Private
{
    Private(const QString &databasePath, ObjectSpool &spool, ReceiveJournal &journal, bool synced,
        SpoolFollower *follower);

    void run();
    void index(SpoolItems items);
    bool prepare();
    bool write(SpoolItems items);
    bool writeOne(SpoolItem &item, ReadFile &file);
    void commit();
    void giveUp();
    void setApart(SpoolItem item, const QString &why, bool isFull);
    void pause(const QString &why, ImportEnd end);

    ImportRequest request;
    FileStore store;
    std::unique_ptr<IndexConnection> connection;
    std::unique_ptr<IndexWriter> writer;
    SpoolItems batch; ///< written, not committed
    SpoolVerdicts verdicts; ///< of the batch
    bool isThere = false; ///< the object that came last, and is wanted
    int told = 0; ///< issues of the writer's report that are dealt with

    SpoolQueue queue;
    const SpoolNotes notes;
    SpoolReader reader{queue, notes};
    std::atomic<DuplicatePolicy> policy{DuplicatePolicy::KeepOld};
    std::atomic<bool> stuck{false};
    std::thread thread;
};

SpoolIndexer::Private::Private(const QString &databasePath, ObjectSpool &spool, ReceiveJournal &journal,
    bool synced, SpoolFollower *follower)
    : store(databasePath)
    , verdicts(follower)
    , notes(spool, journal)
{
    request.databasePath = databasePath;
    request.mode = ImportMode::Take;
    request.synced = synced;
}

SpoolIndexer::SpoolIndexer(const QString &databasePath, ObjectSpool &spool, ReceiveJournal &journal,
    bool synced, SpoolFollower *follower)
    : d(std::make_unique<Private>(databasePath, spool, journal, synced, follower))
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

void SpoolIndexer::add(const QByteArray &path)
{
    d->queue.add(path, nullptr);
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
    items = reader.read(std::move(items));
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
            verdicts.note(item, isThere && writer->hasTakenLast());
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
    isThere = stampSpooled(file.file) && !verdicts.isStranger(writer->database(), item);
    if (!isThere) {
        return true;
    }
    file.result = *item.result;
    file.taken = file.result.outcome == DicomReadResult::Outcome::Image;
    return writer->write(file);
}

void SpoolIndexer::Private::commit()
{
    if (!verdicts.record(writer->database())) {
        giveUp();
        queue.pause(pauseAfterFailure);
        return;
    }
    if (!writer->commit()) {
        giveUp();
        return;
    }
    const std::size_t written = batch.size();
    batch.clear();
    stuck = false;
    const QVector<ImportIssue> &issues = writer->report().issues();
    notes.keepAside(issues, told);
    told = issues.size();
    notes.countIndexed(written);
    queue.finish(written);
    verdicts.tell(notes);
    std::this_thread::sleep_for(lockGap);
}

/// The batch waits anew.
void SpoolIndexer::Private::giveUp()
{
    writer->abandon();
    queue.putBack(std::move(batch));
    batch.clear();
    verdicts.forget();
    const ImportEnd end = writer->end();
    const QString why = writer->endDetail();
    writer.reset();
    if (end != ImportEnd::Complete && !queue.isStopped()) {
        pause(why, end);
    }
}

/// @param why of the writer
void SpoolIndexer::Private::setApart(SpoolItem item, const QString &why, bool isFull)
{
    if (item.apartFor == 0ms) {
        notes.tellWaiting(why + QLatin1Char(' ') + QFile::decodeName(item.path), isFull);
    }
    queue.setApart(std::move(item));
}

void SpoolIndexer::Private::pause(const QString &why, ImportEnd end)
{
    if (!stuck.exchange(true)) {
        notes.tellWaiting(why, end == ImportEnd::DiskFull);
    }
    queue.pause(pauseAfterFailure);
}
