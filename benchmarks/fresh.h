#pragma once

// Measurements that must be the first and only thing a process does: every key and every id made
// stays in the store of ids, and memory once used is not given back.

#include <cstddef>
#include <ctime>
#include <string>
#include <vector>

namespace kv::bench {

using Words = std::vector<std::string>;

/// One measurement: its name, how many arguments it takes, and what it prints.
struct Measurement {
    const char* name;
    std::size_t arguments;
    double (*run)(const Words& arguments);
};

/// The measurements of one topic each.
std::vector<Measurement> keyMeasurements();
std::vector<Measurement> clipMeasurements();
std::vector<Measurement> fileMeasurements();

/// Processor time, so that other programs do not count; that of the system for this one does.
inline double processorSeconds() {
    struct timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(const Work& work) {
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

/// The nanoseconds that each of `count` items takes.
template <class Work>
double nanosecondsEach(std::size_t count, const Work& work) {
    return secondsOf(work) / static_cast<double>(count) * 1e9;
}

inline std::size_t numberOf(const std::string& word) {
    return static_cast<std::size_t>(std::stoull(word));
}

} // namespace kv::bench
