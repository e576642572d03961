#pragma once

#include <cstddef>

namespace kv::detail {

/// Asks for memory that will be read soon; any address will do. Nothing but the time depends on it.
inline void prefetchLines([[maybe_unused]] const void* start, [[maybe_unused]] std::size_t lines) {
#if defined(__GNUC__)
    // GCC takes a function that does nothing but this for one without any effect, and leaves out
    // the calls of it. It does not do so where there is such a statement.
    __asm__ volatile("");
    constexpr std::size_t kLine = 64;
    for (std::size_t i = 0; i < lines; ++i)
        __builtin_prefetch(static_cast<const char*>(start) + i * kLine);
#endif
}

} // namespace kv::detail
