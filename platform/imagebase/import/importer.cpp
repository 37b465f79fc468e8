#include "importer.h"

#include "importreader.h"
#include "importwalk.h"
#include "indexwriter.h"
#include "longwrite.h"
#include "obsoletefiles.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 50ms; ///< how long the writer waits for work before it commits what it has
constexpr qint64 batchMs = 100; ///< the write lock is given back this often
constexpr auto lockGap = 1500us; ///< and stays free this long, for others to get a turn
constexpr int lockWaitMs = 200; ///< between looks at the cancel flag
constexpr qint64 longestLockWaitMs = 60'000;

std::atomic<int> runningImports{0};

struct RunningImport
{
    RunningImport() { ++runningImports; }
    ~RunningImport() { --runningImports; }
    RunningImport(const RunningImport &) = delete;
    RunningImport &operator=(const RunningImport &) = delete;
};

/// Only others may tire an import of waiting: long work of this process ends, and can be ended.
void forgiveLongWrite(QElapsedTimer *waiting)
{
    if (LongWrite::isAnyRunning()) {
        waiting->restart();
    }
}

} // namespace

struct Importer::Private : ImportPipeline
{
    using ImportPipeline::ImportPipeline;

    std::unique_ptr<IndexConnection> openIndex() const;
    std::vector<std::thread> startThreads();
    void write(const IndexConnection &connection, ImportReport *report);
    void writeAll(IndexWriter &writer);
    bool takeTurn(IndexWriter &writer);
    bool writeChunk(IndexWriter &writer, ReadChunk &chunk);
    bool commit(IndexWriter &writer);
};

Importer::Importer(ImportRequest request)
    : d(std::make_unique<Private>(std::move(request)))
{ }

Importer::~Importer() = default;

ImportReport Importer::run()
{
    const RunningImport running;
    QElapsedTimer time;
    time.start();
    ImportReport report;
    {
        const std::unique_ptr<IndexConnection> connection = d->openIndex();
        if (connection->isOpen()) {
            d->store.sweepTemporaryFiles();
            ObsoleteFiles(connection->database()).remove();
            d->write(*connection, &report);
        } else {
            report.end = d->cancelled ? ImportEnd::Cancelled : ImportEnd::IndexFailed;
            report.endDetail = connection->failure().detail;
        }
    }
    report.elapsedMs = time.elapsed();
    d->walking = false;
    d->finished = true;
    return report;
}

bool Importer::isAnyRunning()
{
    return runningImports > 0;
}

void Importer::cancel()
{
    d->cancelled = true;
    d->stop();
}

ImportProgress Importer::progress() const
{
    ImportProgress progress;
    progress.finished = d->finished;
    progress.walking = d->walking;
    progress.done = d->done;
    progress.found = d->found;
    progress.current = QFile::decodeName(d->currentPath());
    return progress;
}

/// Tries as long as somebody else holds the index, but never longer than a cancel may take at a time.
std::unique_ptr<IndexConnection> Importer::Private::openIndex() const
{
    QElapsedTimer waiting;
    waiting.start();
    for (;;) {
        auto connection = std::make_unique<IndexConnection>(request.databasePath, lockWaitMs);
        const bool locked = connection->failure().reason == ConnectionFailure::Reason::Locked;
        forgiveLongWrite(&waiting);
        if (!locked || cancelled || waiting.elapsed() > longestLockWaitMs) {
            return connection;
        }
    }
}

std::vector<std::thread> Importer::Private::startThreads()
{
    std::vector<std::thread> threads;
    threads.emplace_back([this] { ImportWalk(*this).run(); });
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < cores; ++i) {
        threads.emplace_back([this] { ImportReader(*this).run(); });
    }
    return threads;
}

/// Runs the threads around the writer and leaves nothing behind, however it ends.
void Importer::Private::write(const IndexConnection &connection, ImportReport *report)
{
    std::vector<std::thread> threads = startThreads();
    IndexWriter writer(request, connection, store, cancelled);
    writeAll(writer);
    stop();
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const auto &left : readChunks.leftOver()) {
        discard(left.second, 0);
    }
    writer.abandon();
    *report = writer.report();
    report->end = writer.end() == ImportEnd::Complete && cancelled ? ImportEnd::Cancelled : writer.end();
    report->endDetail = writer.endDetail();
    report->notReached = found - report->found();
}

void Importer::Private::writeAll(IndexWriter &writer)
{
    QElapsedTimer batch;
    bool good = true;
    while (good && !cancelled && !readChunks.isDone()) {
        std::optional<ReadChunk> chunk = readChunks.take(patience);
        if (chunk && !writer.isOpen()) {
            good = takeTurn(writer);
            batch.start();
        }
        if (chunk && writer.isOpen()) {
            good = writeChunk(writer, *chunk);
        } else if (chunk) {
            discard(*chunk, 0);
        }
        if (good && writer.isOpen() && (!chunk || batch.elapsed() >= batchMs)) {
            good = commit(writer);
        }
    }
    if (good && writer.isOpen()) {
        commit(writer);
    }
}

bool Importer::Private::takeTurn(IndexWriter &writer)
{
    QElapsedTimer waiting;
    waiting.start();
    while (!cancelled) {
        forgiveLongWrite(&waiting);
        const bool lastTry = waiting.elapsed() > longestLockWaitMs;
        if (writer.begin(lastTry)) {
            return true;
        }
        if (lastTry) {
            return false;
        }
    }
    return true;
}

bool Importer::Private::writeChunk(IndexWriter &writer, ReadChunk &chunk)
{
    for (std::size_t i = 0; i < chunk.size(); ++i) {
        if (cancelled || !writer.write(chunk[i])) {
            discard(chunk, i);
            // What was written so far stays: only a failure undoes its batch.
            return cancelled && writer.end() == ImportEnd::Complete;
        }
    }
    return true;
}

bool Importer::Private::commit(IndexWriter &writer)
{
    const bool good = writer.commit();
    done = writer.report().found();
    std::this_thread::sleep_for(lockGap);
    return good;
}
