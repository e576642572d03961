// Identifiers without a search: a bitmap tells whether a number was issued, a vector keeps the
// order of issue.
#include "manager/identifiers.h"

#include <algorithm>
#include <cstdlib>

namespace kv::detail {

IdentifierStore::IdentifierStore(int (*random)()) : _random(random) {}

std::uint32_t IdentifierStore::draw() {
    // Two statements: the first random number is the factor, the second the multiplier. The mask
    // is what the host platform's generator delivers anyway and keeps the product in 22 bits.
    const int r1 = _random() & 0x7FFF;
    const int r2 = _random() & 0x7FFF;
    return static_cast<std::uint32_t>(r1 * (r2 % 100 + 1));
}

bool IdentifierStore::mark(std::uint32_t id) {
    std::uint64_t& word = _isIssued[id / 64];
    const std::uint64_t bit = std::uint64_t{1} << (id % 64);
    if ((word & bit) != 0) return false;
    word |= bit;
    ++_distinct;
    return true;
}

std::uint64_t IdentifierStore::create() {
    if (_isIssued.empty()) _isIssued.resize(kGreatestId / 64 + 1);

    // A collision asks for another identifier first and records itself afterwards. Drawing until a
    // number is new and turning the order round is the same without the recursion.
    const std::size_t start = _issued.size();
    const bool exhausted = _distinct == kDistinctIds;
    std::uint32_t id = draw();
    _issued.push_back(id);
    if (!exhausted) {
        while (!mark(id)) {
            id = draw();
            _issued.push_back(id);
        }
        std::reverse(_issued.begin() + static_cast<std::ptrdiff_t>(start), _issued.end());
    }
    return _issued.back();
}

bool IdentifierStore::isIssued(std::uint64_t id) const {
    if (id > kGreatestId || _isIssued.empty()) return false;
    return (_isIssued[id / 64] >> (id % 64) & 1) != 0;
}

IdentifierStore& identifierStore() {
    // Never destroyed: an object that outlives the library's own statics may still make a key.
    static IdentifierStore& store = *new IdentifierStore(&std::rand);
    return store;
}

std::uint64_t createUniqueId() {
    return identifierStore().create();
}

bool isIssuedId(std::uint64_t id) {
    return identifierStore().isIssued(id);
}

} // namespace kv::detail
