#pragma once

#include "boundedqueue.h"
#include "filestore.h"
#include "importrequest.h"
#include "orderedbuffer.h"
#include "readfile.h"
#include "unpackedahead.h"

#include <QByteArray>

#include <atomic>
#include <mutex>
#include <vector>

/// Files of the walk that travel together.
struct WalkedChunk
{
    std::size_t number = 0;
    std::vector<WalkedFile> files;
};

/// What the threads of an import share: the ways from the walk to the readers and from these to the writer,
/// how far it is, and that it is to end. Any thread.
struct ImportPipeline
{
    explicit ImportPipeline(ImportRequest asked)
        : request(std::move(asked))
        , store(request.databasePath)
    { }

    /// Lets every thread come to its end.
    void stop()
    {
        stopped = true;
        walked.abort();
        readChunks.abort();
    }

    void noteCurrent(const QByteArray &path)
    {
        const std::lock_guard lock(currentMutex);
        current = path;
    }

    QByteArray currentPath() const
    {
        const std::lock_guard lock(currentMutex);
        return current;
    }

    /// Removes the copies of files that do not come to their places.
    static void discard(const ReadChunk &chunk, std::size_t from)
    {
        for (std::size_t i = from; i < chunk.size(); ++i) {
            FileStore::discard(chunk[i].temporaryPath);
        }
    }

    static constexpr std::size_t chunksWalkedAhead = 8192; ///< so that progress knows the whole soon
    static constexpr std::size_t chunksInFlight = 64; ///< bounds the headers between readers and writer

    const ImportRequest request;
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

private:
    mutable std::mutex currentMutex;
    QByteArray current;
};
