// An id to first position table for one list of keys.
#include "keys/keyIdIndex.h"

namespace kv::detail {

std::size_t KeyIdIndex::slotOf(int id) const {
    const std::size_t mask = _slots.size() - 1;
    // Fibonacci hashing: ids are products of small numbers and share many low bits.
    std::size_t at = (static_cast<std::uint32_t>(id) * 0x9E3779B97F4A7C15ULL >> 32) & mask;
    while (_slots[at].place != 0 && _slots[at].id != id)
        at = (at + 1) & mask;
    return at;
}

void KeyIdIndex::grow(std::size_t keys) {
    std::size_t size = 64;
    while (size < keys * 2)
        size *= 2;
    if (size <= _slots.size()) return;
    std::vector<Slot> old(size);
    old.swap(_slots);
    for (const Slot& slot : old)
        if (slot.place != 0) _slots[slotOf(slot.id)] = slot;
}

void KeyIdIndex::cover(const std::vector<kvControlPoint>& keys) {
    grow(keys.size());
    for (; _covered < keys.size(); ++_covered) {
        const int id = keys[_covered].getId();
        Slot& slot = _slots[slotOf(id)];
        if (slot.place == 0) slot = {id, static_cast<std::uint32_t>(_covered + 1)};
    }
}

std::size_t KeyIdIndex::find(int id) const {
    if (_slots.empty()) return kNone;
    const Slot& slot = _slots[slotOf(id)];
    return slot.place == 0 ? kNone : slot.place - 1;
}

} // namespace kv::detail
