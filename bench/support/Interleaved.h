#pragma once

#include <benchmark/benchmark.h>

#include <functional>

/// Measures two ways of doing the same in turns, so that both meet the same moods of the machine. Reports the medians
/// of both in microseconds and the median of the ratio of each pair. `prepare` comes before each pair, unmeasured.
void measureInterleaved(
    benchmark::State &state, const std::function<void()> &floor, const std::function<void()> &ours,
    const std::function<void()> &prepare = [] {});
