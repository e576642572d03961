#pragma once

#include <optional>

namespace kv::test {

struct Spot {
    double x = 0.0;
    double y = 0.0;
};

/// The two handles of a key, as positions.
struct Handles {
    Spot in;
    Spot out;
};

/// Where a recomputation puts the handles of `key`, for tangent types 2 to 5 and length modes 1 to
/// 3, by a table of its own: one row a cell, direction and length apart. A key without `previous`
/// is the first of its list, one without `next` the last. Any other type or mode gives handles on
/// the key.
Handles expectedHandles(int type, int mode, std::optional<Spot> previous, Spot key,
                        std::optional<Spot> next);

} // namespace kv::test
