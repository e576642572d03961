#pragma once

#include <kvAnimationBlock.h>
#include <kvAnimationSequence2.h>

#include <memory>

namespace kv::detail {

/// Deletes a block of a track; null is fine. The destructor of blocks is not virtual, so a sequence
/// item that was put among the blocks has to be told apart.
inline void deleteBlock(kvAnimationBlock* block) {
    if (auto* sequence = dynamic_cast<kvAnimationSequence2*>(block))
        std::default_delete<kvAnimationSequence2>{}(sequence);
    else
        std::default_delete<kvAnimationBlock>{}(block);
}

/// Deletes a sequence item of a track; null is fine.
inline void deleteSequence(kvAnimationSequence2* sequence) {
    std::default_delete<kvAnimationSequence2>{}(sequence);
}

} // namespace kv::detail
