#include "support/Interleaved.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

double microseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void measureInterleaved(benchmark::State &state, const std::function<void()> &floor, const std::function<void()> &ours,
    const std::function<void()> &prepare)
{
    std::vector<double> floors;
    std::vector<double> results;
    std::vector<double> ratios;
    bool floorFirst = true;
    for (auto _ : state) {
        prepare();
        double floorTime = 0;
        if (floorFirst)
            floorTime = microseconds(floor);
        const double time = microseconds(ours);
        if (!floorFirst)
            floorTime = microseconds(floor);
        floorFirst = !floorFirst;
        floors.push_back(floorTime);
        results.push_back(time);
        ratios.push_back(time / floorTime);
        state.SetIterationTime(time / 1e6);
    }
    state.counters["floor_us"] = median(floors);
    state.counters["ours_us"] = median(results);
    state.counters["ratio"] = median(ratios);
}
