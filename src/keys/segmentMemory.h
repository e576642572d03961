#pragma once

#include "keys/segmentConstants.h"

#include <kvControlPointManager.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::detail {

/// What a curve remembers of the segment that was evaluated last: its constants beside the eight
/// numbers they were computed from. They are used again only for a segment that
/// has the same 64 bytes, so that nothing needs to be forgotten when keys change.
///
/// Any number of threads may use one memory at once. All of it is atomic. The sequence is odd while
/// somebody writes; a reader that finds it odd or changed has read nothing. The words are released
/// and acquired one by one, which costs nothing on the usual processors: whoever sees one of a new
/// entry's words sees the odd sequence before it, too.
class SegmentMemory {
  public:
    explicit SegmentMemory(SegmentWords& words) : _words(&words) {}

    /// The constants of exactly this segment; false when they are not remembered.
    bool recall(const Segment& s, SegmentConstants& constants) const {
        const std::uint64_t sequence = word(kSequence).load(std::memory_order_acquire);
        if ((sequence & 1U) != 0) return false;
        // Word by word in registers: going through an array costs more than the arithmetic saved.
        if ((differs(0, s.x0) | differs(1, s.y0) | differs(2, s.x1) | differs(3, s.y1) |
             differs(4, s.x2) | differs(5, s.y2) | differs(6, s.x3) | differs(7, s.y3)) != 0)
            return false;
        constants = {number(8), number(9), number(10), number(11), number(12), number(13), 0.0};
        return word(kSequence).load(std::memory_order_relaxed) == sequence;
    }

    /// Replaces what is remembered, unless another thread is doing so. The constants must be exact.
    void remember(const Segment& s, const SegmentConstants& c) const {
        std::uint64_t sequence = word(kSequence).load(std::memory_order_relaxed);
        if ((sequence & 1U) != 0 ||
            !word(kSequence).compare_exchange_strong(
                sequence, sequence + 1, std::memory_order_acquire, std::memory_order_relaxed))
            return;
        const double numbers[kNumbers] = {s.x0, s.y0, s.x1,     s.y1,    s.x2, s.y2, s.x3,
                                          s.y3, c.a3, c.qStart, c.shift, c.m,  c.k,  c.pCubed};
        for (std::size_t i = 0; i < kNumbers; ++i)
            word(kFirstNumber + i).store(bitsOf(numbers[i]), std::memory_order_release);
        word(kSequence).store(sequence + 2, std::memory_order_release);
    }

  private:
    // Then the numbers: the segment and its constants. At first those of no segment: one made of
    // zeros is held and never looked up.
    static constexpr std::size_t kSequence = 0;
    static constexpr std::size_t kFirstNumber = 1;
    static constexpr std::size_t kNumbers = 14;

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
