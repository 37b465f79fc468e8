// Two threads add to one plain number: the race that the thread sanitizer must report for its other answers
// to count.
#include <cstdio>
#include <thread>

namespace {

int shared = 0;

void add()
{
    for (int i = 0; i < 1000; ++i) {
        shared = shared + 1;
    }
}

} // namespace

int main()
{
    std::thread first(add);
    std::thread second(add);
    first.join();
    second.join();
    std::printf("%d\n", shared);
    return 0;
}
