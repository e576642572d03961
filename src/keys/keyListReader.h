#pragma once

#include <kvControlPointManager.h>

#include <cstddef>

namespace kv::detail {

/// What the evaluation may ask of a key list beyond its interface. Changes nothing and allocates
/// nothing.
struct KeyListReader {
    /// The position of the first key whose frame is greater, the number of keys when there is none.
    static std::size_t firstAfter(const kvControlPointManager& list, double frame) {
        return list.firstAfterFrame(frame);
    }
};

} // namespace kv::detail
