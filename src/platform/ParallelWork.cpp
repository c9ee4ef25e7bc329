#include "platform/ParallelWork.h"

#include <algorithm>
#include <thread>
#include <vector>

std::size_t threadsFor(std::size_t items, std::size_t itemsWorthAThread)
{
    // More threads than this only wait for each other inside the file system and the allocator.
    constexpr std::size_t mostThreads = 8;
    const std::size_t processors = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, mostThreads);
    return std::clamp<std::size_t>(items / itemsWorthAThread, 1, processors);
}

void runInParallel(std::size_t threads, const std::function<void(std::size_t)> &work)
{
    std::vector<std::jthread> helpers;
    for (std::size_t number = 1; number < threads; ++number)
        helpers.emplace_back(work, number);
    work(0);
}
