#pragma once

#include <kvControlPoint.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kv::detail {

/// Finds the first key with an id in a growing list of keys, without the walk. Keys may only be
/// added behind the others; after any other change the index has to be thrown away. Lists of
/// imported keys never need one, because their ids ascend.
class KeyIdIndex {
  public:
    /// The position that means "no such key".
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The longest list that can be indexed; positions are kept in 32 bits.
    static constexpr std::size_t kMaxKeys = 0x7FFFFFFF;

    /// Takes up the keys that were added since the last call.
    void cover(const std::vector<kvControlPoint>& keys);

    std::size_t find(int id) const;

  private:
    // Open addressing: slots are probed one after the other from the id's own place, and at least
    // half of them are free.
    struct Slot {
        int id = 0;
        std::uint32_t place = 0; // position + 1; 0 marks a free slot
    };

    std::size_t slotOf(int id) const;
    void grow(std::size_t keys);

    std::vector<Slot> _slots;
    std::size_t _covered = 0;
};

} // namespace kv::detail
