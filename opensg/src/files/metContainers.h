#pragma once

// Which containers a writer met, and which of them more than once.

#include <OpenSG/OSGBaseTypes.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace osg::files {

/// Remembers containers by number, two bits each. Numbers come from a counter and so lie close
/// together: pages of bits are smaller and faster here than a hash table.
class MetContainers {
  public:
    /// Notes a meeting. \return whether it is the first.
    bool meet(UInt32 id) {
        std::uint8_t& byte = byteOf(id);
        const unsigned shift = 2 * (id % 4);
        const unsigned state = byte >> shift & 3u;
        if (state < 2) byte = static_cast<std::uint8_t>(byte + (1u << shift));
        return state == 0;
    }

    /// Whether a container was met more than once.
    bool isShared(UInt32 id) { return (byteOf(id) >> (2 * (id % 4)) & 3u) == 2; }

  private:
    static constexpr UInt32 kPerPage = 65536;

    std::uint8_t& byteOf(UInt32 id) {
        const UInt32 page = id / kPerPage;
        if (page >= _pages.size()) _pages.resize(page + 1);
        if (_pages[page] == nullptr) _pages[page] = std::make_unique<std::uint8_t[]>(kPerPage / 4);
        return _pages[page][id % kPerPage / 4];
    }

    std::vector<std::unique_ptr<std::uint8_t[]>> _pages;
};

} // namespace osg::files
