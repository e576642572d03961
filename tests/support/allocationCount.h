#pragma once

#include <cstddef>

namespace kvtest {

/// Calls of operator new, of any form, since the start of the program. A test program that uses
/// this has its operators new and delete replaced by counting ones on top of malloc and free.
std::size_t allocationCount();

/// How many allocations running this makes.
template <class Work>
std::size_t allocationsOf(Work work) {
    const std::size_t before = allocationCount();
    work();
    return allocationCount() - before;
}

} // namespace kvtest
