#pragma once

#include <kvAnimationBlock.h>

/// The counter of the class, the kept node id and the standing block.
template <>
struct kvTestAccess<kvAnimationBlock> {
    static std::uint32_t nextId() { return kvAnimationBlock::_idCount; }
    static std::uint32_t& nodeId(kvAnimationBlock& block) { return block._appropriateNodeId; }
    static const kvAnimationBlock& the() { return kvAnimationBlock::_the; }
};
