#include "longwrite.h"

#include <array>
#include <atomic>

namespace {

std::array<std::atomic<int>, 2> running{};

std::atomic<int> &countOf(LongWrite::Work work)
{
    return running[static_cast<std::size_t>(work)];
}

} // namespace

LongWrite::LongWrite(Work work)
    : m_work(work)
{
    ++countOf(m_work);
}

LongWrite::~LongWrite()
{
    --countOf(m_work);
}

bool LongWrite::isAnyRunning()
{
    return isRunning(Work::Compaction) || isRunning(Work::Deletion);
}

bool LongWrite::isRunning(Work work)
{
    return countOf(work) > 0;
}
