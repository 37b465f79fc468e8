#include "frameloader.h"

#include <QThread>

#include <algorithm>

namespace {

constexpr int leastThreads = 2;
/// How far ahead it decodes, and how far behind.
constexpr int ahead = 24;
constexpr int behind = 4;
/// Of a place in the cache, besides its pixels.
constexpr qint64 entryBytes = 4096;

qint64 bytesOf(const LoadedFrame &loaded)
{
    return loaded.frame.bytes() + entryBytes;
}

} // namespace

FrameLoader::FrameLoader(QObject *parent, qint64 cacheBytes)
    : QObject(parent)
    , m_cacheBytes(cacheBytes)
{
    m_pool.setMaxThreadCount(std::max(leastThreads, QThread::idealThreadCount()));
}

FrameLoader::~FrameLoader()
{
    setList({});
    m_pool.waitForDone();
}

void FrameLoader::setList(const ImageList &list)
{
    m_files.clear();
    const QMutexLocker lock(&m_mutex);
    m_list = list;
    ++m_generation;
    m_wanted.clear();
    m_inWork.clear();
    m_cache.clear();
    m_bytes = 0;
}

qint64 FrameLoader::cachedBytes() const
{
    const QMutexLocker lock(&m_mutex);
    return m_bytes;
}

LoadedFramePtr FrameLoader::request(int index, int direction)
{
    const QMutexLocker lock(&m_mutex);
    m_current = index;
    schedule(index, direction);
    return m_cache.value(index);
}

void FrameLoader::schedule(int index, int direction)
{
    m_wanted.clear();
    const auto want = [this](int place) {
        if (place >= 0 && place < m_list.size() && !m_cache.contains(place) && !m_inWork.contains(place)) {
            m_wanted.append(place);
        }
    };
    // Large pictures leave room for a few only: what is far would push out what is near.
    const qint64 each = m_cache.isEmpty() ? 0 : m_bytes / m_cache.size();
    const int room = each > 0 ? int(std::min<qint64>(ahead, m_cacheBytes / each / 2)) : ahead;
    for (int step = std::min(room, behind); step >= 1; --step) {
        want(index - direction * step);
    }
    for (int step = room; step >= 0; --step) {
        want(index + direction * step);
    }
    while (m_workers < std::min(m_pool.maxThreadCount(), m_wanted.size())) {
        ++m_workers;
        m_pool.start([this] { work(); });
    }
}

bool FrameLoader::takeNext(int &index, ImagePlace &place, int &generation)
{
    const QMutexLocker lock(&m_mutex);
    if (m_wanted.isEmpty()) {
        --m_workers;
        return false;
    }
    index = m_wanted.takeLast();
    place = m_list.at(index);
    generation = m_generation;
    m_inWork.insert(index);
    return true;
}

void FrameLoader::work()
{
    int index = 0;
    int generation = 0;
    ImagePlace place;
    while (takeNext(index, place, generation)) {
        const LoadedFramePtr loaded = decode(place);
        {
            const QMutexLocker lock(&m_mutex);
            if (generation != m_generation) {
                continue;
            }
            m_inWork.remove(index);
            keep(index, loaded);
        }
        emit ready(index); // queued to the GUI thread
    }
}

/// Puts it into the cache and drops what is farthest from the picture that is looked at.
void FrameLoader::keep(int index, const LoadedFramePtr &loaded)
{
    m_cache.insert(index, loaded);
    m_bytes += bytesOf(*loaded);
    while (m_bytes > m_cacheBytes && m_cache.size() > 1) {
        auto farthest = m_cache.begin();
        for (auto entry = m_cache.begin(); entry != m_cache.end(); ++entry) {
            if (std::abs(entry.key() - m_current) > std::abs(farthest.key() - m_current)) {
                farthest = entry;
            }
        }
        m_bytes -= bytesOf(**farthest);
        m_cache.erase(farthest);
    }
}

LoadedFramePtr FrameLoader::decode(const ImagePlace &place)
{
    auto loaded = std::make_shared<LoadedFrame>();
    std::unique_ptr<OpenFiles::Entry> entry = m_files.take(place.path);
    loaded->info = entry->file.info();
    loaded->info.frameValues.clear(); // the frame has its own
    loaded->problem = entry->problem == PixelProblem::None ? entry->file.readFrame(place.frame, loaded->frame)
                                                           : entry->problem;
    m_files.giveBack(std::move(entry));
    return loaded;
}
