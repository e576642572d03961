#pragma once

#include "keys/segmentConstants.h"

#include <kvControlPointManager.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::detail {

/// What a curve remembers of the segment that was evaluated last: its constants beside the three
/// numbers that they are computed from. They are used again only for a segment that has the same 24
/// bytes, so that nothing needs to be forgotten when keys change. Keys at an even pace, as most
/// have them that were captured or baked, have them in all segments.
///
/// Any number of threads may use one memory at once. All of it is atomic. The sequence is odd while
/// somebody writes; a reader that finds it odd or changed has read nothing. The words are released
/// and acquired one by one, which costs nothing on the usual processors: whoever sees one of a new
/// entry's words sees the odd sequence before it, too.
class SegmentMemory {
  public:
    explicit SegmentMemory(SegmentWords& words) : _words(&words) {}

    /// The constants for exactly these coefficients; false when they are not remembered.
    bool recall(const Coefficients<double>& a, SegmentConstants& constants) const {
        const std::uint64_t sequence = word(kSequence).load(std::memory_order_acquire);
        if ((sequence & 1U) != 0) return false;
        // Word by word in registers: going through an array costs more than the arithmetic saved.
        if ((differs(0, a.a3) | differs(1, a.a2) | differs(2, a.a1)) != 0) return false;
        constants = {a.a3, number(3), number(4), number(5), number(6), number(7), 0.0};
        return word(kSequence).load(std::memory_order_relaxed) == sequence;
    }

    /// Replaces what is remembered, unless another thread is doing so. The constants must be exact.
    void remember(const Coefficients<double>& a, const SegmentConstants& c) const {
        std::uint64_t sequence = word(kSequence).load(std::memory_order_relaxed);
        if ((sequence & 1U) != 0 ||
            !word(kSequence).compare_exchange_strong(
                sequence, sequence + 1, std::memory_order_acquire, std::memory_order_relaxed))
            return;
        const double numbers[kNumbers] = {a.a3, a.a2, a.a1, c.qStart, c.shift, c.m, c.k, c.pCubed};
        for (std::size_t i = 0; i < kNumbers; ++i)
            word(kFirstNumber + i).store(bitsOf(numbers[i]), std::memory_order_release);
        word(kSequence).store(sequence + 2, std::memory_order_release);
    }

    /// Whether the question before this one was, in all likelihood, about the same coefficients:
    /// then they are worth remembering.
    bool isAskedAgain(const Coefficients<double>& a) const {
        const std::uint64_t digest = bitsOf(a.a3) ^ (bitsOf(a.a2) << 1U) ^ (bitsOf(a.a1) << 2U);
        if (word(kAskedLast).load(std::memory_order_relaxed) == digest) return true;
        word(kAskedLast).store(digest, std::memory_order_relaxed);
        return false;
    }

  private:
    // Then the numbers: the coefficients and what follows from them. At first zeros, which may be
    // recalled: with an a3 of 0 a segment has no value, whatever the others are.
    static constexpr std::size_t kSequence = 0;
    static constexpr std::size_t kAskedLast = 1;
    static constexpr std::size_t kFirstNumber = 2;
    static constexpr std::size_t kNumbers = 8;

    std::atomic<std::uint64_t>& word(std::size_t i) const { return _words->words[i]; }

    static std::uint64_t bitsOf(double number) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return bits;
    }
    std::uint64_t differs(std::size_t i, double number) const {
        return word(kFirstNumber + i).load(std::memory_order_acquire) ^ bitsOf(number);
    }
    double number(std::size_t i) const {
        const std::uint64_t bits = word(kFirstNumber + i).load(std::memory_order_acquire);
        double result = 0.0;
        std::memcpy(&result, &bits, sizeof result);
        return result;
    }

    SegmentWords* _words;
};

} // namespace kv::detail
