#pragma once

#include "keys/segmentConstants.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::detail {

/// What a curve remembers of the segment that was evaluated last: where it is, and its constants
/// beside the eight numbers they were computed from. They are used again only for a segment that
/// has the same 64 bytes, so that nothing needs to be forgotten when keys change.
///
/// Any number of threads may use one memory at once. All of it is atomic. The sequence is odd while
/// somebody writes; a reader that finds it odd or changed has read nothing. The words are released
/// and acquired one by one, which costs nothing on the usual processors: whoever sees one of a new
/// entry's words sees the odd sequence before it, too.
class alignas(64) SegmentMemory {
  public:
    /// Where the segment that was evaluated last ends. A hint, right or wrong.
    std::size_t end() const { return _end.load(std::memory_order_relaxed); }

    /// Takes down where a segment ends; false when that was known already.
    bool setEnd(std::size_t end) {
        const auto narrow = static_cast<std::uint32_t>(end);
        if (_end.load(std::memory_order_relaxed) == narrow) return false;
        _end.store(narrow, std::memory_order_relaxed);
        return true;
    }

    /// The constants of exactly this segment; false when they are not remembered.
    bool recall(const Segment& s, SegmentConstants& constants) const {
        const std::uint32_t sequence = _sequence.load(std::memory_order_acquire);
        if ((sequence & 1U) != 0) return false;
        // Word by word in registers: going through an array costs more than the arithmetic saved.
        if ((differs(0, s.x0) | differs(1, s.y0) | differs(2, s.x1) | differs(3, s.y1) |
             differs(4, s.x2) | differs(5, s.y2) | differs(6, s.x3) | differs(7, s.y3)) != 0)
            return false;
        constants = {number(8),  number(9),  number(10), number(11),
                     number(12), number(13), number(14)};
        return _sequence.load(std::memory_order_relaxed) == sequence;
    }

    /// Replaces what is remembered, unless another thread is doing so.
    void remember(const Segment& s, const SegmentConstants& c) {
        std::uint32_t sequence = _sequence.load(std::memory_order_relaxed);
        if ((sequence & 1U) != 0 ||
            !_sequence.compare_exchange_strong(sequence, sequence + 1, std::memory_order_acquire,
                                               std::memory_order_relaxed))
            return;
        const double numbers[kWords] = {s.x0,    s.y0, s.x1, s.y1,     s.x2,
                                        s.y2,    s.x3, s.y3, c.a3,     c.qStart,
                                        c.shift, c.m,  c.k,  c.pCubed, c.pCubedError};
        for (std::size_t i = 0; i < kWords; ++i)
            _words[i].store(bitsOf(numbers[i]), std::memory_order_release);
        _sequence.store(sequence + 2, std::memory_order_release);
    }

  private:
    static constexpr std::size_t kWords = 15;

    static std::uint64_t bitsOf(double number) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return bits;
    }
    std::uint64_t differs(std::size_t i, double number) const {
        return _words[i].load(std::memory_order_acquire) ^ bitsOf(number);
    }
    double number(std::size_t i) const {
        const std::uint64_t bits = _words[i].load(std::memory_order_acquire);
        double result = 0.0;
        std::memcpy(&result, &bits, sizeof result);
        return result;
    }

    std::atomic<std::uint32_t> _sequence{0};
    std::atomic<std::uint32_t> _end{0};
    // The segment, then its constants. At first the source of no segment: one made of zeros is held
    // and never looked up.
    std::atomic<std::uint64_t> _words[kWords] = {};
};
static_assert(sizeof(SegmentMemory) == 128, "two lines of the cache");

} // namespace kv::detail
