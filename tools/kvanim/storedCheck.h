#pragma once

#include "findings.h"

namespace kvanim {

class Scene;

/// How much a scene holds, nested clips counted once.
struct StoredTotals {
    std::size_t blocks = 0;
    std::size_t curves = 0;
    std::size_t keys = 0;
};

/// Checks the records on the nodes of a scene that was read and not yet loaded. Loading sorts keys,
/// drops all but one of those at the same frame and drops blocks of clips whose node is gone, so
/// that none of it shows afterwards.
StoredTotals checkStored(const Scene& scene, Findings& findings);

} // namespace kvanim
