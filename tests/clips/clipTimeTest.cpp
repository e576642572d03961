// The clip in time: its range, moving, scaling and mirroring it.

#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using kvtest::newBlock;
using kvtest::newClip;
using kvtest::newCurve;
using kvtest::newSequence;
using Blocks = std::vector<kvAnimationBlock*>;

const float kNaN = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST(ClipRange, spansTheTracks) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(10, 20));
    clip.addBlock(newBlock(5, 12));
    clip.createTrack();
    EXPECT_EQ(clip.getStartFrame(), 5.0F);
    EXPECT_EQ(clip.getEndFrame(), 20.0F);
    EXPECT_EQ(clip.getDuration(), 15.0F);
    EXPECT_TRUE(clip.frameInClipRange(5));
    EXPECT_TRUE(clip.frameInClipRange(20));
    EXPECT_FALSE(clip.frameInClipRange(std::nextafter(5.0F, 0.0F)));
    EXPECT_FALSE(clip.frameInClipRange(std::nextafter(20.0F, 30.0F)));
    EXPECT_FALSE(clip.frameInClipRange(kNaN));
}

TEST(ClipRange, endIgnoresSequences) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(10, 20));
    clip.addSequence(newSequence(0, 99));
    EXPECT_EQ(clip.getStartFrame(), 0.0F);
    EXPECT_EQ(clip.getEndFrame(), 20.0F);
}

TEST(ClipRange, endIsThatOfTheBlockThatStartsLastOnItsTrack) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(0, 40));
    clip.insertBlock(newBlock(5, 10), 0);
    EXPECT_EQ(clip.getEndFrame(), 10.0F);
    clip.addBlock(newBlock(0, 15));
    EXPECT_EQ(clip.getEndFrame(), 15.0F);
}

TEST(ClipRange, isComputedAfreshFromSubclips) {
    kvAnimationClip clip;
    kvAnimationBlock* block = newBlock(3, 7);
    clip.newSubclip()->newSubclip()->addBlock(block);
    EXPECT_EQ(clip.getStartFrame(), 3.0F);
    EXPECT_EQ(clip.getEndFrame(), 7.0F);
    block->moveBlock(10);
    EXPECT_EQ(clip.getStartFrame(), 13.0F);
    EXPECT_EQ(clip.getEndFrame(), 17.0F);
}

TEST(ClipMove, movesEverythingAtEveryDepth) {
    kvAnimationClip clip;
    kvAnimationBlock* block = newBlock(0, 10);
    kvAnimationBlock* nested = newBlock(5, 6);
    kvAnimationSequence2* sequence = newSequence(1, 2);
    kvAnimationSequence2* nestedSequence = newSequence(3, 4);
    clip.addBlock(block);
    clip.addSequence(sequence);
    kvAnimationClip* inner = clip.newSubclip()->newSubclip();
    inner->addBlock(nested);
    inner->addSequence(nestedSequence);
    clip.move(2.5F);
    EXPECT_EQ(block->getStartFrame(), 2.5F);
    EXPECT_EQ(block->getBlockCurves()[0]->getStartFrame(), 2.5);
    EXPECT_EQ(nested->getStartFrame(), 7.5F);
    EXPECT_EQ(sequence->getStartFrame(), 3.5F);
    EXPECT_EQ(nestedSequence->getEndFrame(), 6.5F);
}

TEST(ClipStretch, leftScalesAndKeepsTheEnd) {
    kvAnimationClip clip;
    kvAnimationBlock* first = newBlock(10, 15);
    kvAnimationBlock* second = newBlock(15, 20);
    clip.addBlock(first);
    clip.addBlock(second);
    clip.stretchLeft(0);
    EXPECT_EQ(first->getStartFrame(), 0.0F);
    EXPECT_EQ(first->getEndFrame(), 10.0F);
    EXPECT_EQ(second->getStartFrame(), 10.0F);
    EXPECT_EQ(second->getEndFrame(), 20.0F);
}

TEST(ClipStretch, rightScalesAndKeepsTheStart) {
    kvAnimationClip clip;
    kvAnimationBlock* first = newBlock(0, 5);
    kvAnimationBlock* second = newBlock(5, 10);
    kvAnimationSequence2* sequence = newSequence(1, 2);
    clip.addBlock(first);
    clip.addBlock(second);
    clip.insertSequence(sequence, 0);
    clip.stretchRight(20);
    EXPECT_EQ(first->getStartFrame(), 0.0F);
    EXPECT_EQ(first->getEndFrame(), 10.0F);
    EXPECT_EQ(second->getStartFrame(), 10.0F);
    EXPECT_EQ(second->getEndFrame(), 20.0F);
    EXPECT_EQ(sequence->getStartFrame(), 2.0F);
    EXPECT_EQ(sequence->getEndFrame(), 4.0F);
}

TEST(ClipStretch, scalesSubclipsByTheirOwnRange) {
    kvAnimationClip clip;
    kvAnimationBlock* outer = newBlock(0, 20);
    kvAnimationBlock* nested = newBlock(10, 20);
    clip.addBlock(outer);
    clip.newSubclip()->newSubclip()->addBlock(nested);
    clip.stretchRight(40);
    EXPECT_EQ(outer->getEndFrame(), 40.0F);
    EXPECT_EQ(nested->getStartFrame(), 20.0F);
    EXPECT_EQ(nested->getEndFrame(), 40.0F);
    clip.stretchLeft(20);
    EXPECT_EQ(outer->getStartFrame(), 20.0F);
    EXPECT_EQ(nested->getStartFrame(), 30.0F);
    EXPECT_EQ(nested->getEndFrame(), 40.0F);
}

TEST(ClipStretch, shrinkingLeavesNoItemInverted) {
    kvAnimationClip clip;
    kvAnimationSequence2* sequence = newSequence(0, 5);
    kvAnimationBlock* block = newBlock(0, 5);
    clip.addSequence(sequence);
    clip.addBlock(block);
    clip.addBlock(newBlock(0, 100));
    clip.stretchLeft(90);
    EXPECT_EQ(sequence->getStartFrame(), 90.0F);
    EXPECT_EQ(sequence->getEndFrame(), 90.5F);
    EXPECT_EQ(block->getStartFrame(), 90.0F);
    EXPECT_EQ(block->getEndFrame(), 90.5F);
    clip.stretchRight(95);
    EXPECT_EQ(block->getStartFrame(), 90.0F);
    EXPECT_EQ(block->getEndFrame(), 90.25F);
}

TEST(ClipStretch, mapsBeyondTheNewRangeWhatLiesBeyondTheOld) {
    // The end is 10, that of the block that starts last; the block 0..40 is mapped beyond it.
    kvAnimationClip clip;
    kvAnimationBlock* longer = newBlock(0, 40);
    clip.addBlock(longer);
    clip.insertBlock(newBlock(5, 10), 0);
    clip.stretchRight(20);
    EXPECT_EQ(longer->getStartFrame(), 0.0F);
    EXPECT_EQ(longer->getEndFrame(), 80.0F);
}

TEST(ClipStretch, mapsInSinglePrecisionQuotientFirst) {
    // With the product first the result would be another float.
    const float start = 0.1F;
    const float end = 7.3F;
    const float middle = 2.9F;
    const float newEnd = 11.7F;
    kvAnimationClip clip;
    kvAnimationSequence2* sequence = newSequence(middle, end);
    clip.addBlock(newBlock(start, end));
    clip.insertSequence(sequence, 0);
    const float oldLength = end - start;
    const float newLength = newEnd - start;
    const float quotient = (middle - start) / oldLength;
    const float product = quotient * newLength;
    clip.stretchRight(newEnd);
    EXPECT_EQ(sequence->getStartFrame(), product + start);
}

TEST(ClipStretch, thereAndBackRestoresBlocksWhoseCurvesShareTheirRange) {
    // Powers of two keep every quotient exact.
    kvAnimationClip clip;
    kvAnimationBlock* first = newBlock(0, 8);
    first->addCurve(newCurve({0, 2, 4, 8}, "y"));
    kvAnimationBlock* second = newBlock(4, 16);
    clip.addBlock(first);
    clip.addBlock(second);
    clip.stretchRight(64);
    EXPECT_EQ(first->getEndFrame(), 32.0F);
    EXPECT_EQ(first->getBlockCurves()[1]->getCPs()[1].getPoint().x, 8.0);
    clip.stretchRight(16);
    const auto& keys = first->getBlockCurves()[1]->getCPs();
    EXPECT_EQ(keys[1].getPoint().x, 2.0);
    EXPECT_EQ(keys[1].getInTangent().x, 1.75);
    EXPECT_EQ(keys[1].getOutTangent().x, 2.25);
    EXPECT_EQ(keys[3].getPoint().x, 8.0);
    EXPECT_EQ(second->getStartFrame(), 4.0F);
    EXPECT_EQ(second->getEndFrame(), 16.0F);
    clip.stretchLeft(-16);
    clip.stretchLeft(0);
    EXPECT_EQ(keys[1].getPoint().x, 2.0);
    EXPECT_EQ(second->getStartFrame(), 4.0F);
}

TEST(ClipStretch, curvesOfDifferentRangesAllEndTogetherAndAreNotRestored) {
    kvAnimationClip clip;
    kvAnimationBlock* block = newBlock(0, 8);
    block->addCurve(newCurve({0, 4}, "y"));
    clip.addBlock(block);
    clip.stretchRight(16);
    clip.stretchRight(8);
    EXPECT_EQ(block->getBlockCurves()[1]->getEndFrame(), 8.0);
}

TEST(ClipStretch, ofAClipWithoutLengthIsHarmless) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(5, 5));
    clip.addSequence(newSequence(5, 5));
    clip.newSubclip()->addBlock(newBlock(5, 5));
    clip.stretchLeft(0);
    clip.stretchRight(10);
    clip.stretchLeft(kNaN);
    clip.stretchRight(std::numeric_limits<float>::infinity());
    clip.getBlocks(true, true);
    EXPECT_EQ(clip.getTrackAmount(), 3);
    kvAnimationClip empty;
    empty.stretchLeft(0);
    empty.stretchRight(0);
    empty.newSubclip();
    empty.stretchLeft(0);
    EXPECT_EQ(empty.getStartFrame(), 1e23F);
}

TEST(ClipFlip, mirrorsEachTrackWithinItsOwnRange) {
    kvAnimationClip clip;
    kvAnimationBlock* a = newBlock(0, 5);
    kvAnimationBlock* b = newBlock(10, 20);
    kvAnimationBlock* c = newBlock(5, 10);
    clip.addBlock(a);
    clip.insertBlock(b, 0);
    clip.addBlock(c);
    clip.setFliped(true);
    EXPECT_TRUE(clip.getFliped());
    EXPECT_TRUE(clip.getTrack(0)->getFliped());
    EXPECT_EQ(a->getStartFrame(), 15.0F);
    EXPECT_EQ(b->getStartFrame(), 0.0F);
    EXPECT_EQ(c->getStartFrame(), 5.0F);
    clip.setFliped(true);
    EXPECT_EQ(a->getStartFrame(), 0.0F);
    EXPECT_EQ(b->getStartFrame(), 10.0F);
    EXPECT_TRUE(clip.getFliped());
    EXPECT_FALSE(a->getFliped());
}

TEST(ClipFlags, motionBlurReachesEveryDepth) {
    kvAnimationClip clip;
    kvAnimationBlock* nested = newBlock(0, 1);
    kvAnimationClip* inner = clip.newSubclip()->newSubclip();
    inner->addBlock(nested);
    clip.setMotionBlur(true);
    EXPECT_TRUE(clip.getMotionBlur());
    EXPECT_TRUE(inner->getMotionBlur());
    EXPECT_TRUE(nested->getMotionBlur());
    clip.setMotionBlur(false);
    EXPECT_FALSE(nested->getMotionBlur());
}

TEST(ClipFlags, onlyTheClipsOwnSequencesBecomeDirty) {
    kvAnimationClip clip;
    kvAnimationSequence2* own = newSequence(0, 1);
    kvAnimationSequence2* nested = newSequence(0, 1);
    clip.addSequence(own);
    clip.newSubclip()->addSequence(nested);
    own->setDirty(false);
    nested->setDirty(false);
    clip.setAllSequencesDirty();
    EXPECT_TRUE(own->getDirty());
    EXPECT_FALSE(nested->getDirty());
}
