#include "importer.h"

#include "archivemember.h"
#include "archivereader.h"
#include "boundedqueue.h"
#include "indexwriter.h"
#include "knownfiles.h"
#include "longwrite.h"
#include "obsoletefiles.h"
#include "orderedbuffer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr std::size_t chunkSize = 32; ///< files that travel together
constexpr std::size_t chunksWalkedAhead =
    8192; ///< the walk runs ahead, so that progress knows the whole soon
constexpr qint64 bytesOfChunk = 32LL << 20; ///< of files out of archives
constexpr qint64 bytesUnpackedAhead = 512LL << 20; ///< of the disk, before the walk waits for the writer
constexpr std::size_t chunksInFlight = 64; ///< bounds the headers between readers and writer
constexpr auto patience = 50ms; ///< how long the writer waits for work before it commits what it has
constexpr qint64 batchMs = 100; ///< the write lock is given back this often
constexpr auto lockGap = 1500us; ///< and stays free this long, for others to get a turn
constexpr int lockWaitMs = 200; ///< between looks at the cancel flag
constexpr qint64 longestLockWaitMs = 60'000;

struct WalkedChunk
{
    std::size_t number = 0;
    std::vector<WalkedFile> files;
};

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

struct Importer::Private
{
    explicit Private(ImportRequest asked)
        : request(std::move(asked))
        , store(request.databasePath)
    { }

    std::unique_ptr<IndexConnection> openIndex() const;
    void walk();
    void read();
    void readInto(ReadFile &file, DicomReader &reader, KnownFiles &known);
    void write(const IndexConnection &connection, ImportReport *report);
    bool takeTurn(IndexWriter &writer);
    bool writeChunk(IndexWriter &writer, ReadChunk &chunk);
    bool commit(IndexWriter &writer);
    void stop();
    void noteCurrent(const QByteArray &path);
    static void discard(ReadChunk &chunk, std::size_t from);

    ImportRequest request;
    FileStore store;
    UnpackedAhead unpacked; ///< outlives all that is unpacked
    std::atomic<bool> stopped{false};
    BoundedQueue<WalkedChunk> walked{chunksWalkedAhead};
    OrderedBuffer<ReadChunk> readChunks{chunksInFlight};
    std::atomic<bool> cancelled{false};
    std::atomic<qint64> found{0};
    std::atomic<qint64> done{0};
    std::atomic<bool> walking{true};
    std::atomic<bool> finished{false};
    mutable std::mutex currentMutex;
    QByteArray current;
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
    const std::lock_guard lock(d->currentMutex);
    progress.current = QFile::decodeName(d->current);
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

void Importer::Private::noteCurrent(const QByteArray &path)
{
    const std::lock_guard lock(currentMutex);
    current = path;
}

void Importer::Private::stop()
{
    stopped = true;
    walked.abort();
    readChunks.abort();
}

void Importer::Private::walk()
{
    WalkedChunk chunk;
    const auto flush = [&] {
        const std::size_t number = chunk.number;
        const bool taken = walked.push(std::move(chunk));
        chunk = {};
        chunk.number = number + 1;
        return taken;
    };
    qint64 bytes = 0;
    const FileWalker::Sink put = [&](WalkedFile file) {
        ++found;
        if (file.member) {
            file.member->countIn(&unpacked, file.stamp.size);
            bytes += file.stamp.size;
        }
        chunk.files.push_back(std::move(file));
        if (cancelled || (chunk.files.size() < chunkSize && bytes < bytesOfChunk)) {
            return !cancelled;
        }
        bytes = 0;
        // Only what has been handed on comes to its place while the walk waits.
        const bool taken = flush();
        unpacked.waitBelow(bytesUnpackedAhead, stopped);
        return taken;
    };
    ArchiveReader archives(store, cancelled, put);
    FileWalker walker(QFile::encodeName(store.folder()), [&](WalkedFile file) {
        const bool isArchive = file.reason == FileReason::None && request.mode != ImportMode::Take
            && ArchiveReader::isArchive(file.path);
        return isArchive ? archives.read(file) : put(std::move(file));
    });
    for (const QString &path : qAsConst(request.paths)) {
        const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        if (!walker.walk(QFile::encodeName(absolute))) {
            break;
        }
    }
    if (!chunk.files.empty()) {
        flush();
    }
    walking = false;
    readChunks.setEnd(chunk.number);
    walked.close();
}

void Importer::Private::read()
{
    DicomReader reader;
    KnownFiles known(request.databasePath, request.mode);
    while (std::optional<WalkedChunk> chunk = walked.pop()) {
        ReadChunk result(chunk->files.size());
        for (std::size_t i = 0; i < result.size() && !cancelled; ++i) {
            result[i].file = std::move(chunk->files[i]);
            readInto(result[i], reader, known);
        }
        if (cancelled || !readChunks.put(chunk->number, result)) {
            discard(result, 0);
            return;
        }
    }
}

void Importer::Private::readInto(ReadFile &file, DicomReader &reader, KnownFiles &known)
{
    if (file.file.reason != FileReason::None) {
        return;
    }
    noteCurrent(file.file.path);
    if (file.file.member) {
        // It is in the store already, and has no other place.
        file.result = reader.read(file.file.member->path);
        file.temporaryPath =
            file.result.outcome == DicomReadResult::Outcome::Image ? file.file.member->path : QByteArray();
        return;
    }
    file.known = request.mode != ImportMode::Take && known.contains(file.file);
    if (file.known) {
        return;
    }
    file.result = reader.read(file.file.path);
    const bool isImage = file.result.outcome == DicomReadResult::Outcome::Image;
    file.taken = isImage && request.mode == ImportMode::Take;
    if (isImage && request.mode == ImportMode::Copy) {
        FileStore::Copy copy = store.copyIn(file.file.path, cancelled);
        file.temporaryPath = copy.temporaryPath;
        file.copyError = copy.systemError;
    }
}

/// Runs the threads around the writer and leaves nothing behind, however it ends.
void Importer::Private::write(const IndexConnection &connection, ImportReport *report)
{
    std::vector<std::thread> threads;
    threads.emplace_back([this] { walk(); });
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < cores; ++i) {
        threads.emplace_back([this] { read(); });
    }
    IndexWriter writer(request, connection, store, cancelled);
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
    stop();
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (auto &left : readChunks.leftOver()) {
        discard(left.second, 0);
    }
    writer.abandon();
    *report = writer.report();
    report->end = writer.end() == ImportEnd::Complete && cancelled ? ImportEnd::Cancelled : writer.end();
    report->endDetail = writer.endDetail();
    report->notReached = found - report->found();
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

void Importer::Private::discard(ReadChunk &chunk, std::size_t from)
{
    for (std::size_t i = from; i < chunk.size(); ++i) {
        FileStore::discard(chunk[i].temporaryPath);
    }
}
