#pragma once

#include "manager/identifiers.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace kv::test {

/// How many identifiers a piece of code draws, at most eight; more count as 99. The generator is
/// seeded so that the first eight draws collide neither with what was issued before nor with one
/// another: then the store records one number a draw.
template <class Code>
std::size_t drawsOf(Code code) {
    constexpr std::size_t kMost = 8;
    for (unsigned seed = 1000; seed < 3000; ++seed) {
        std::srand(seed);
        std::uint64_t ids[kMost];
        bool fresh = true;
        for (std::size_t i = 0; i < kMost; ++i) {
            const int r1 = std::rand() & 0x7FFF;
            const int r2 = std::rand() & 0x7FFF;
            ids[i] = static_cast<std::uint64_t>(r1 * (r2 % 100 + 1));
            fresh = fresh && !kv::detail::isIssuedId(ids[i]);
            for (std::size_t j = 0; j < i; ++j)
                fresh = fresh && ids[j] != ids[i];
        }
        if (!fresh) continue;
        std::srand(seed);
        const std::size_t before = kv::detail::identifierStore().issued().size();
        code();
        const std::size_t draws = kv::detail::identifierStore().issued().size() - before;
        return draws <= kMost ? draws : 99;
    }
    return 99;
}

} // namespace kv::test
