#include "openfiles.h"

#include <algorithm>
#include <numeric>

namespace {
constexpr std::size_t mostIdle = 4;
/// Room for one that is deflated: it is unpacked as a whole.
constexpr qint64 mostIdleBytes = qint64(100) * 1024 * 1024;
} // namespace

std::unique_ptr<OpenFiles::Entry> OpenFiles::take(const QString &path)
{
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = std::find_if(
            m_idle.begin(), m_idle.end(), [&](const auto &entry) { return entry->path == path; });
        if (found != m_idle.end()) {
            std::unique_ptr<Entry> entry = std::move(*found);
            m_idle.erase(found);
            return entry;
        }
    }
    auto entry = std::make_unique<Entry>();
    entry->path = path;
    entry->problem = entry->file.open(path);
    return entry;
}

void OpenFiles::giveBack(std::unique_ptr<Entry> entry)
{
    if (entry->problem != PixelProblem::None || entry->file.info().frames < 2) {
        return;
    }
    const QMutexLocker lock(&m_mutex);
    m_idle.push_back(std::move(entry));
    const auto bytes = [this] {
        return std::accumulate(m_idle.begin(), m_idle.end(), qint64(0),
            [](qint64 sum, const auto &idle) { return sum + idle->file.heldBytes(); });
    };
    while (m_idle.size() > mostIdle || (!m_idle.empty() && bytes() > mostIdleBytes)) {
        m_idle.erase(m_idle.begin());
    }
}

void OpenFiles::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_idle.clear();
}
