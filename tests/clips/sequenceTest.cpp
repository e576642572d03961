// The sequence item: a range with a text.

#include "support/access/kvAnimationBlock.h"
#include "support/access/kvAnimationSequence2.h"
#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using kvtest::newSequence;

} // namespace

TEST(SequenceDefault, isDirtyAndHasNeverRun) {
    const kvAnimationSequence2 sequence;
    const float oldFrame = sequence.getOldFrame();
    std::uint32_t bits = 0;
    std::memcpy(&bits, &oldFrame, sizeof bits);
    EXPECT_EQ(bits, 0xE5A96816U);
    EXPECT_TRUE(sequence.getDirty());
    EXPECT_EQ(sequence.getZerosFillAmount(), 0U);
    EXPECT_EQ(sequence.getSequence(), "");
    EXPECT_EQ(sequence.getBlockName(), "");
    EXPECT_TRUE(sequence.getBlockCurves().empty());
    EXPECT_TRUE(sequence.getActive());
    EXPECT_EQ(sequence.getStartFrame(), 99999.0F);
    EXPECT_EQ(sequence.getEndFrame(), -99999.0F);
}

TEST(Sequence, textIsAlsoTheName) {
    const kvAnimationSequence2 sequence("open door");
    EXPECT_EQ(sequence.getSequence(), "open door");
    EXPECT_EQ(sequence.getBlockName(), "open door");
}

TEST(Sequence, takesItsIdFromTheCounterOfBlocks) {
    const std::uint32_t next = kvTestAccess<kvAnimationBlock>::nextId();
    const kvAnimationSequence2 sequence;
    const kvAnimationBlock block;
    EXPECT_EQ(sequence.getId(), next);
    EXPECT_EQ(block.getId(), next + 1);
}

TEST(Sequence, standingItemIsADefaultOne) {
    EXPECT_EQ(kvTestAccess<kvAnimationSequence2>::the().getSequence(), "");
}

TEST(Sequence, keepsTheLow16BitsOfTheZerosFillAmount) {
    kvAnimationSequence2 sequence;
    sequence.setZerosFillAmount(65537);
    EXPECT_EQ(sequence.getZerosFillAmount(), 1U);
    sequence.setZerosFillAmount(65535);
    EXPECT_EQ(sequence.getZerosFillAmount(), 65535U);
}

TEST(Sequence, movesItsRange) {
    const kvtest::SequenceOwner sequence(newSequence(10, 20));
    kvAnimationBlock* asBlock = sequence.get();
    asBlock->moveBlock(-5);
    EXPECT_EQ(sequence->getStartFrame(), 5.0F);
    EXPECT_EQ(sequence->getEndFrame(), 15.0F);
}

TEST(Sequence, stretchingSetsOneEdge) {
    const kvtest::SequenceOwner sequence(newSequence(10, 20));
    kvAnimationBlock* asBlock = sequence.get();
    asBlock->stretchLeft(12);
    EXPECT_EQ(sequence->getStartFrame(), 12.0F);
    EXPECT_EQ(sequence->getEndFrame(), 20.0F);
    asBlock->stretchRight(17);
    EXPECT_EQ(sequence->getStartFrame(), 12.0F);
    EXPECT_EQ(sequence->getEndFrame(), 17.0F);
}

TEST(Sequence, edgesMayInvert) {
    const kvtest::SequenceOwner sequence(newSequence(10, 20));
    sequence->stretchRight(5);
    EXPECT_EQ(sequence->getStartFrame(), 10.0F);
    EXPECT_EQ(sequence->getEndFrame(), 5.0F);
    EXPECT_EQ(sequence->getDuration(), -5.0F);
    EXPECT_FALSE(sequence->frameInBlockRange(7));
}

TEST(SequenceCopy, keepsTheTextButNotTheRange) {
    const kvtest::SequenceOwner source(newSequence(10, 20, "door"));
    source->setActive(false);
    source->setZerosFillAmount(3);
    source->setOldFrame(12);
    source->setDirty(false);
    const std::uint32_t next = kvTestAccess<kvAnimationBlock>::nextId();
    const kvAnimationSequence2 copy(*source);
    EXPECT_EQ(copy.getId(), next);
    EXPECT_EQ(copy.getStartFrame(), 99999.0F);
    EXPECT_EQ(copy.getEndFrame(), -99999.0F);
    EXPECT_EQ(copy.getBlockName(), "");
    EXPECT_TRUE(copy.getActive());
    EXPECT_EQ(copy.getSequence(), "door");
    EXPECT_EQ(copy.getZerosFillAmount(), 3U);
    EXPECT_EQ(copy.getOldFrame(), 12.0F);
    EXPECT_FALSE(copy.getDirty());
}

TEST(SequenceAssignment, takesEverything) {
    const kvtest::SequenceOwner source(newSequence(10, 20, "door"));
    source->setActive(false);
    source->setOldFrame(12);
    kvAnimationSequence2 target;
    target = *source;
    EXPECT_EQ(target.getId(), source->getId());
    EXPECT_EQ(target.getStartFrame(), 10.0F);
    EXPECT_EQ(target.getEndFrame(), 20.0F);
    EXPECT_EQ(target.getBlockName(), "door");
    EXPECT_EQ(target.getSequence(), "door");
    EXPECT_FALSE(target.getActive());
    EXPECT_EQ(target.getOldFrame(), 12.0F);
}
