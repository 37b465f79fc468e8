#include "openfiles.h"

#include <algorithm>

namespace {
constexpr std::size_t mostIdle = 4;
}

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
    if (m_idle.size() > mostIdle) {
        m_idle.erase(m_idle.begin());
    }
}
