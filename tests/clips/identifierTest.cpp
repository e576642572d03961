// How many identifiers a copy draws, and in which order.

#include "manager/identifiers.h"
#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace {

using kvtest::newBlock;
using kvtest::newClip;
using kvtest::newCurve;
using kvtest::newSequence;

using Ids = std::vector<std::uint32_t>;

// The identifiers drawn since a mark. A draw that collides with an earlier identifier records what
// the search for a fresh one found, and then itself; such by-products are told apart here, so that
// the tests do not depend on the state of the random generator.
class Drawn {
  public:
    std::size_t count() const {
        const Ids& all = kv::detail::identifierStore().issued();
        std::unordered_set<std::uint32_t> seen(all.begin(), all.begin() + _before);
        std::size_t collisions = 0;
        for (auto id = all.begin() + _before; id != all.end(); ++id)
            if (!seen.insert(*id).second) ++collisions;
        return all.size() - static_cast<std::size_t>(_before) - collisions;
    }

    /// Whether these were drawn in this order, with others between them or not.
    bool inOrder(const Ids& expected) const {
        const Ids& all = kv::detail::identifierStore().issued();
        auto next = expected.begin();
        for (auto id = all.begin() + _before; id != all.end() && next != expected.end(); ++id)
            if (*id == *next) ++next;
        return next == expected.end();
    }

  private:
    std::ptrdiff_t _before =
        static_cast<std::ptrdiff_t>(kv::detail::identifierStore().issued().size());
};

} // namespace

TEST(CopyIds, aBlockDrawsItsOwnThenOneACurve) {
    kvAnimationBlock block;
    block.addCurve(newCurve({}));
    block.addCurve(nullptr);
    block.addCurve(newCurve({}));
    const Drawn drawn;
    const kvAnimationBlock copy(block);
    ASSERT_EQ(copy.getBlockCurves().size(), 2U);
    EXPECT_EQ(drawn.count(), 3U);
    EXPECT_TRUE(drawn.inOrder(
        {copy.getId(), copy.getBlockCurves()[0]->getId(), copy.getBlockCurves()[1]->getId()}));
}

TEST(CopyIds, assignmentsAndNewBlocksDrawNone) {
    kvAnimationBlock block;
    kvAnimationClip clip;
    const Drawn drawn;
    kvAnimationBlock other;
    other = block;
    kvAnimationClip* const same = &clip;
    clip = *same;
    kvAnimationSequence2 sequence;
    const kvAnimationSequence2 copy(sequence);
    const kvAnimationTrack track(1);
    EXPECT_EQ(drawn.count(), 0U);
}

TEST(CopyIds, aClipDrawsItsOwnFirstThenBlocksSubclipsAndSequencesOfEachTrack) {
    kvAnimationClip clip;
    auto* block = new kvAnimationBlock();
    block->addCurve(newCurve({}));
    clip.addSequence(newSequence(0, 1));
    clip.insertSubclip(newClip({}), 0);
    clip.insertBlock(block, 0);
    const Drawn drawn;
    const kvAnimationClip copy(clip);
    // The block and the sub-clip draw once as copies and once more for the id that they keep.
    EXPECT_EQ(drawn.count(), 7U);
    const kvAnimationTrack& track = *copy.getTrack(0);
    EXPECT_TRUE(drawn.inOrder({copy.getId(), track.getBlocks()[0]->getBlockCurves()[0]->getId(),
                               track.getBlocks()[0]->getId(), track.getClips()[0]->getId(),
                               track.getSequences()[0]->getId()}));
}
