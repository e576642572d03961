// The track: what is added to it, taken off and found on it, its flags and its copies.

#include "support/access/kvAnimationTrack.h"
#include "support/clipBuilders.h"

#include <kvAnimationManager2.h>

#include <gtest/gtest.h>

namespace {

using kvtest::fill;
using kvtest::newBlock;
using kvtest::newClip;
using kvtest::newCurve;
using kvtest::newSequence;
using Blocks = std::vector<kvAnimationBlock*>;

} // namespace

TEST(TrackDefault, isEmptyAndUnnumbered) {
    kvAnimationTrack track;
    EXPECT_TRUE(track.getActive());
    EXPECT_FALSE(track.getFliped());
    EXPECT_FALSE(track.getMotionBlur());
    EXPECT_EQ(track.getNumber(), -1);
    EXPECT_TRUE(track.getBlocks().empty());
    EXPECT_TRUE(track.getClips().empty());
    EXPECT_TRUE(track.getSequences().empty());
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(track), 0.0F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 0.0F);
    EXPECT_EQ(kvAnimationTrack(7).getNumber(), 7);
    track.setNumber(-3);
    EXPECT_EQ(track.getNumber(), -3);
}

TEST(TrackDefault, reportsTheSentinelsAsRange) {
    kvAnimationTrack track;
    EXPECT_EQ(track.getFirstFrame(), 1e23F);
    EXPECT_EQ(track.getLastFrame(), -1e23F);
    EXPECT_EQ(track.getDuration(), -2e23F);
    track.updateBounds();
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(track), 1e23F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), -1e23F);
}

TEST(TrackAdding, nullIsRefused) {
    kvAnimationTrack track;
    EXPECT_FALSE(track.addBlock(nullptr));
    EXPECT_FALSE(track.addClip(nullptr));
    EXPECT_FALSE(track.addSequence(nullptr));
    EXPECT_TRUE(track.getBlocks().empty());
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(track), 0.0F) << "nothing was updated";
}

TEST(TrackAdding, updatesTheBounds) {
    kvAnimationTrack track;
    EXPECT_TRUE(track.addBlock(newBlock(10, 20)));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(track), 10.0F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 20.0F);
    EXPECT_TRUE(track.addSequence(newSequence(5, 7)));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(track), 5.0F);
    EXPECT_TRUE(track.addClip(newClip({newBlock(15, 40)})));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 40.0F);
}

TEST(TrackAdding, updatesTheBlocksFromTheirKeys) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(10, 20);
    track.addBlock(block);
    block->getBlockCurves().front()->insertCP(2, 0);
    track.addSequence(newSequence(50, 51));
    EXPECT_EQ(block->getStartFrame(), 2.0F);
}

TEST(TrackAdding, nothingChecksForDuplicates) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(10, 20);
    EXPECT_TRUE(track.addBlock(block));
    EXPECT_TRUE(track.addBlock(block));
    EXPECT_EQ(track.getBlocks(), (Blocks{block, block}));
    EXPECT_TRUE(track.subBlock(block, false));
    EXPECT_EQ(track.getBlocks(), (Blocks{block}));
}

TEST(TrackRemoving, takesOffWithoutDeleting) {
    kvAnimationTrack track;
    kvAnimationBlock* stays = newBlock(0, 5);
    const kvtest::BlockOwner goes(newBlock(10, 20));
    fill(track, {stays, goes.get()});
    EXPECT_TRUE(track.subBlock(goes.get(), false));
    EXPECT_EQ(track.getBlocks(), (Blocks{stays}));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 5.0F);
    EXPECT_EQ(goes->getBlockCurves().size(), 1U);
    EXPECT_FALSE(track.subBlock(goes.get(), true));
}

TEST(TrackRemoving, goesById) {
    kvAnimationTrack track;
    const kvtest::BlockOwner block(newBlock(0, 5));
    kvAnimationBlock other;
    block->setId(77);
    other.setId(77);
    track.addBlock(block.get());
    EXPECT_TRUE(track.subBlock(&other, false));
    EXPECT_TRUE(track.getBlocks().empty());
}

TEST(TrackRemoving, comparesIdsIn32Bits) {
    kvAnimationTrack track;
    const kvtest::BlockOwner block(newBlock(0, 5));
    block->setId(7);
    track.addBlock(block.get());
    EXPECT_EQ(track.getBlock(0x100000007UL, false), block.get());
    EXPECT_TRUE(track.subBlock(0x100000007UL, false));
}

TEST(TrackRemoving, nullAndStrangersAnswerFalse) {
    kvAnimationTrack track;
    track.addBlock(newBlock(0, 5));
    EXPECT_FALSE(track.subBlock(nullptr, true));
    EXPECT_FALSE(track.subClip(nullptr, true));
    EXPECT_FALSE(track.subSequence(nullptr, true));
    kvAnimationBlock block;
    kvAnimationClip clip;
    kvAnimationSequence2 sequence;
    block.setId(4000000000UL);
    clip.setId(4000000000UL);
    sequence.setId(4000000000UL);
    EXPECT_FALSE(track.subBlock(&block, true));
    EXPECT_FALSE(track.subClip(&clip, true));
    EXPECT_FALSE(track.subSequence(&sequence, true));
    EXPECT_EQ(track.getBlocks().size(), 1U);
}

TEST(TrackRemoving, reachesSubclipsOnlyWhenRecursive) {
    kvAnimationTrack track;
    const kvtest::BlockOwner block(newBlock(0, 50));
    const kvtest::SequenceOwner sequence(newSequence(0, 60));
    auto* deepest = newClip({block.get()});
    deepest->addSequence(sequence.get());
    auto* middle = new kvAnimationClip();
    middle->addSubclip(deepest);
    track.addClip(middle);
    track.addBlock(newBlock(0, 10));
    EXPECT_FALSE(track.subBlock(block.get(), false));
    EXPECT_FALSE(track.subSequence(sequence.get(), false));
    EXPECT_FALSE(track.subClip(deepest, false));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 50.0F);
    EXPECT_TRUE(track.subBlock(block.get(), true));
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(track), 10.0F)
        << "every track on the way updates its bounds";
    EXPECT_TRUE(track.subSequence(sequence.get(), true));
    EXPECT_TRUE(track.subClip(deepest, true));
    EXPECT_EQ(middle->getSubclip(deepest->getId(), true), nullptr);
    delete deepest;
}

TEST(TrackRemoving, reachesAnyDepth) {
    kvAnimationTrack track;
    auto* top = new kvAnimationClip();
    kvAnimationClip* deepest = top->newSubclip()->newSubclip();
    const kvtest::BlockOwner block(newBlock(0, 1));
    const kvtest::SequenceOwner sequence(newSequence(0, 1));
    const std::unique_ptr<kvAnimationClip> clip(newClip({}));
    deepest->addBlock(block.get());
    deepest->addSequence(sequence.get());
    deepest->addSubclip(clip.get());
    track.addClip(top);
    EXPECT_EQ(track.getClip(clip->getId(), true), clip.get());
    EXPECT_TRUE(track.subBlock(block.get(), true));
    EXPECT_TRUE(track.subSequence(sequence.get(), true));
    EXPECT_TRUE(track.subClip(clip.get(), true));
    EXPECT_TRUE(deepest->getBlocks(false, true).empty());
    EXPECT_TRUE(deepest->getSequences(false, true).empty());
    EXPECT_TRUE(deepest->getSubclips(false, true).empty());
}

TEST(TrackRemoving, takesTheOwnItemBeforeOneInASubclip) {
    kvAnimationTrack track;
    const kvtest::BlockOwner own(newBlock(0, 1));
    kvAnimationBlock* nested = newBlock(0, 1);
    track.addClip(newClip({nested}));
    track.addBlock(own.get());
    own->setId(5);
    nested->setId(5);
    EXPECT_TRUE(track.subBlock(5UL, true));
    EXPECT_TRUE(track.getBlocks().empty());
    EXPECT_EQ(track.getBlock(5UL, true), nested);
}

TEST(TrackFinding, byIdNameAndCurve) {
    kvAnimationTrack track;
    kvAnimationBlock* own = newBlock(0, 1, "own");
    kvAnimationBlock* nested = newBlock(0, 1, "nested");
    own->setId(1000001);
    nested->setId(1000002);
    kvAnimationSequence2* sequence = newSequence(0, 1);
    sequence->setId(1000003);
    kvAnimationClip* inner = newClip({nested});
    inner->setId(1000004);
    inner->addSequence(sequence);
    auto* outer = new kvAnimationClip();
    outer->setId(1000005);
    outer->addSubclip(inner);
    track.addBlock(own);
    track.addClip(outer);

    EXPECT_EQ(track.getBlock(1000001UL, false), own);
    EXPECT_EQ(track.getBlock(1000002UL, false), nullptr);
    EXPECT_EQ(track.getBlock(1000002UL, true), nested);
    EXPECT_EQ(track.getBlock(std::string("own"), false), own);
    EXPECT_EQ(track.getBlock(std::string("nested"), false), nullptr);
    EXPECT_EQ(track.getBlock(std::string("nested"), true), nested);
    EXPECT_EQ(track.getBlock(std::string("Own"), true), nullptr);
    EXPECT_EQ(track.getBlock(own->getBlockCurves().front(), false), own);
    EXPECT_EQ(track.getBlock(nested->getBlockCurves().front(), false), nullptr);
    EXPECT_EQ(track.getBlock(nested->getBlockCurves().front(), true), nested);
    EXPECT_EQ(track.getClip(1000005UL, false), outer);
    EXPECT_EQ(track.getClip(1000004UL, false), nullptr);
    EXPECT_EQ(track.getClip(1000004UL, true), inner);
    EXPECT_EQ(track.getSequence(1000003UL, false), nullptr);
    EXPECT_EQ(track.getSequence(1000003UL, true), sequence);
}

TEST(TrackFinding, byCurveMeansThatVeryCurve) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(0, 1);
    block->addCurve(nullptr);
    track.addBlock(block);
    kvAnimationCurve stranger;
    stranger.setId(block->getBlockCurves().front()->getId());
    EXPECT_EQ(track.getBlock(&stranger, true), nullptr);
    EXPECT_EQ(track.getBlock(static_cast<kvAnimationCurve*>(nullptr), true), nullptr);
}

TEST(TrackClear, forgetsWithoutDeleting) {
    kvAnimationTrack track;
    const kvtest::BlockOwner block(newBlock(0, 1));
    const kvtest::SequenceOwner sequence(newSequence(0, 1));
    const std::unique_ptr<kvAnimationClip> clip(newClip({}));
    track.addBlock(block.get());
    track.addSequence(sequence.get());
    track.addClip(clip.get());
    track.clear();
    EXPECT_TRUE(track.getBlocks().empty());
    EXPECT_TRUE(track.getClips().empty());
    EXPECT_TRUE(track.getSequences().empty());
}

TEST(TrackDestructor, deletesASequencePutAmongTheBlocks) {
    // Its text is long enough to be lost if it were deleted as a block.
    kvAnimationTrack track;
    track.addBlock(newSequence(0, 1, "a text that is far too long to be kept without memory"));
    EXPECT_EQ(track.getBlocks().size(), 1U);
}

TEST(TrackCopy, isDeepAndDrawsFreshIds) {
    kvAnimationTrack track(4);
    kvAnimationBlock* block = newBlock(10, 20, "block");
    kvAnimationSequence2* sequence = newSequence(1, 2, "sequence");
    kvAnimationClip* clip = newClip({newBlock(3, 30)});
    track.addBlock(block);
    track.addSequence(sequence);
    track.addClip(clip);
    track.setMotionBlur(true);
    track.setFliped(true);
    track.setFliped(true);
    track.setActive(false);
    const kvAnimationTrack copy(track);
    EXPECT_EQ(copy.getNumber(), 4);
    EXPECT_FALSE(copy.getActive());
    EXPECT_TRUE(copy.getFliped());
    EXPECT_TRUE(copy.getMotionBlur());
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(copy), 1.0F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(copy), 30.0F);
    ASSERT_EQ(copy.getBlocks().size(), 1U);
    ASSERT_EQ(copy.getClips().size(), 1U);
    ASSERT_EQ(copy.getSequences().size(), 1U);
    EXPECT_NE(copy.getBlocks()[0], block);
    EXPECT_NE(copy.getClips()[0], clip);
    EXPECT_NE(copy.getSequences()[0], sequence);
    EXPECT_EQ(copy.getBlocks()[0]->getBlockName(), "block");
    EXPECT_EQ(copy.getSequences()[0]->getSequence(), "sequence");
    EXPECT_EQ(copy.getSequences()[0]->getStartFrame(), 99999.0F) << "a copy has no range";
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getBlocks()[0]->getId()));
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getClips()[0]->getId()));
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getSequences()[0]->getId()));
}

TEST(TrackAssignment, sharesTheItems) {
    kvAnimationTrack source(3);
    source.addBlock(newBlock(10, 20));
    source.addClip(newClip({newBlock(12, 14)}));
    source.addSequence(newSequence(11, 13));
    source.setMotionBlur(true);
    source.setFliped(true);
    source.setActive(false);
    const unsigned int id = source.getBlocks()[0]->getId();
    kvAnimationTrack target;
    target = source;
    EXPECT_EQ(target.getNumber(), 3);
    EXPECT_FALSE(target.getActive());
    EXPECT_TRUE(target.getFliped());
    EXPECT_TRUE(target.getMotionBlur());
    EXPECT_EQ(target.getBlocks(), source.getBlocks());
    EXPECT_EQ(target.getClips(), source.getClips());
    EXPECT_EQ(target.getSequences(), source.getSequences());
    EXPECT_EQ(target.getBlocks()[0]->getId(), id);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::firstFrame(target), 10.0F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(target), 20.0F);
    target.clear();
}

TEST(TrackFlags, activeReachesItemsButNothingBelowASubclip) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(0, 1);
    kvAnimationBlock* nested = newBlock(0, 1);
    kvAnimationSequence2* sequence = newSequence(0, 1);
    kvAnimationClip* clip = newClip({nested});
    track.addBlock(block);
    track.addSequence(sequence);
    track.addClip(clip);
    track.setActive(false);
    EXPECT_FALSE(track.getActive());
    EXPECT_FALSE(block->getActive());
    EXPECT_FALSE(sequence->getActive());
    EXPECT_FALSE(clip->getActive());
    EXPECT_TRUE(nested->getActive());
    EXPECT_TRUE(clip->getTrack(0)->getActive());
    track.setActive(true);
    EXPECT_TRUE(block->getActive());
    EXPECT_TRUE(sequence->getActive());
    EXPECT_TRUE(clip->getActive());
}

TEST(TrackFlags, motionBlurReachesEveryBlockButNoSequence) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(0, 1);
    kvAnimationBlock* nested = newBlock(0, 1);
    kvAnimationSequence2* sequence = newSequence(0, 1);
    kvAnimationClip* clip = newClip({nested});
    track.addBlock(block);
    track.addSequence(sequence);
    track.addClip(clip);
    track.setMotionBlur(true);
    EXPECT_TRUE(track.getMotionBlur());
    EXPECT_TRUE(block->getMotionBlur());
    EXPECT_TRUE(clip->getMotionBlur());
    EXPECT_TRUE(clip->getTrack(0)->getMotionBlur());
    EXPECT_TRUE(nested->getMotionBlur());
    EXPECT_FALSE(sequence->getMotionBlur());
}
