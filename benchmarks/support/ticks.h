#pragma once

// How long one tick takes, measured in the same way here and for peers. Includes nothing of this
// project.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace kv::bench {

template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Seconds that a warm tick takes: the median of those that fit into a second, of 30 at least.
template <class Tick>
double medianTick(Tick tick) {
    for (int i = 0; i < 5; ++i)
        tick();
    std::vector<double> seconds;
    double sum = 0.0;
    while (sum < 1.0 || seconds.size() < 30) {
        seconds.push_back(secondsOf(tick));
        sum += seconds.back();
    }
    return median(seconds);
}

} // namespace kv::bench
