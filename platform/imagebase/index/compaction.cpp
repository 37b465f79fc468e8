#include "compaction.h"

#include <atomic>

namespace {

std::atomic<int> running{0};

} // namespace

Compaction::Compaction()
{
    ++running;
}

Compaction::~Compaction()
{
    --running;
}

bool Compaction::isAnyRunning()
{
    return running > 0;
}
