// The clip: its tracks, what is added to them, taken off, found and collected, and its copies.

#include "support/access/kvAnimationClip.h"
#include "support/access/kvAnimationTrack.h"
#include "support/clipBuilders.h"

#include <kvAnimationManager2.h>

#include <gtest/gtest.h>

namespace {

using kvtest::newBlock;
using kvtest::newClip;
using kvtest::newCurve;
using kvtest::newSequence;
using Blocks = std::vector<kvAnimationBlock*>;
using Clips = std::vector<kvAnimationClip*>;
using Sequences = std::vector<kvAnimationSequence2*>;

std::vector<int> numbersOf(const kvAnimationClip& clip) {
    std::vector<int> numbers;
    for (const kvAnimationTrack* track : clip.getTracks())
        numbers.push_back(track->getNumber());
    return numbers;
}

} // namespace

TEST(ClipDefault, isCalledClipAndHasNoTracks) {
    kvAnimationClip clip;
    EXPECT_EQ(clip.getName(), "Clip");
    EXPECT_TRUE(clip.getActive());
    EXPECT_FALSE(clip.getFliped());
    EXPECT_FALSE(clip.getRepeat());
    EXPECT_FALSE(clip.getMotionBlur());
    EXPECT_EQ(clip.getTrackAmount(), 0);
    EXPECT_TRUE(clip.getTracks().empty());
    EXPECT_EQ(clip.getStartFrame(), 1e23F);
    EXPECT_EQ(clip.getEndFrame(), -1e23F);
    EXPECT_EQ(clip.getDuration(), -2e23F);
    EXPECT_FALSE(clip.frameInClipRange(0));
    EXPECT_EQ(clip.getLastInsertedBlock(), nullptr);
    EXPECT_EQ(clip.getLastInsertedSubclip(), nullptr);
    EXPECT_EQ(clip.getLastInsertedSequence(), nullptr);
    EXPECT_TRUE(kvAnimationManager2::checkId(clip.getId()));
}

TEST(Clip, settersReadBack) {
    kvAnimationClip clip(std::string("walk"));
    EXPECT_EQ(clip.getName(), "walk");
    clip.setName("run");
    clip.setId(0x100000007UL);
    clip.setActive(false);
    clip.setRepeat(true);
    EXPECT_EQ(clip.getName(), "run");
    EXPECT_EQ(clip.getId(), 7U);
    EXPECT_FALSE(clip.getActive());
    EXPECT_TRUE(clip.getRepeat());
}

TEST(ClipTracks, everyAddMakesATrack) {
    kvAnimationClip clip;
    EXPECT_TRUE(clip.addBlock(newBlock(0, 1)));
    EXPECT_TRUE(clip.addBlock(newBlock(0, 1)));
    EXPECT_TRUE(clip.addBlock(newBlock(0, 1)));
    EXPECT_EQ(numbersOf(clip), (std::vector<int>{0, 1, 2}));
    clip.deleteTrack(1);
    EXPECT_EQ(numbersOf(clip), (std::vector<int>{0, 2}));
    EXPECT_EQ(clip.createTrack(), 2);
    EXPECT_EQ(numbersOf(clip), (std::vector<int>{0, 2, 2}));
}

TEST(ClipTracks, deleteTakesTheFirstOfANumber) {
    kvAnimationClip clip;
    for (int i = 0; i < 3; ++i)
        clip.createTrack();
    clip.getTrack(0)->setNumber(2);
    kvAnimationTrack* last = clip.getTrack(2);
    clip.deleteTrack(2);
    EXPECT_EQ(clip.getTrackAmount(), 2);
    EXPECT_EQ(clip.getTrack(1), last);
    clip.deleteTrack(9);
    clip.deleteTrack(-1);
    EXPECT_EQ(clip.getTrackAmount(), 2);
}

TEST(ClipTracks, areFoundByPosition) {
    kvAnimationClip clip;
    clip.createTrack();
    clip.createTrack();
    EXPECT_EQ(clip.getTrack(0), clip.getTracks()[0]);
    EXPECT_EQ(clip.getTrack(1), clip.getTracks()[1]);
    EXPECT_EQ(clip.getTrack(2), nullptr);
    EXPECT_EQ(clip.getTrack(-1), nullptr);
}

TEST(ClipTracks, emptyOnesAreDeletedFromTheEndOnly) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(0, 1));
    clip.createTrack();
    clip.addSequence(newSequence(0, 1));
    clip.createTrack();
    clip.createTrack();
    clip.deleteEmptyTracks();
    EXPECT_EQ(numbersOf(clip), (std::vector<int>{0, 1, 2}));
    kvAnimationClip other;
    other.createTrack();
    other.addSubclip(newClip({}));
    other.deleteEmptyTracks();
    EXPECT_EQ(other.getTrackAmount(), 2);
    kvAnimationClip empty;
    empty.createTrack();
    empty.deleteEmptyTracks();
    empty.deleteEmptyTracks();
    EXPECT_EQ(empty.getTrackAmount(), 0);
}

TEST(ClipTracks, sortUpdatesOneOrAll) {
    kvAnimationClip clip;
    kvAnimationBlock* first = newBlock(0, 1);
    kvAnimationBlock* second = newBlock(0, 1);
    clip.addBlock(first);
    clip.addBlock(second);
    first->getBlockCurves()[0]->insertCP(5, 0);
    second->getBlockCurves()[0]->insertCP(6, 0);
    clip.sortTrack(-1);
    clip.sortTrack(2);
    EXPECT_EQ(first->getEndFrame(), 1.0F);
    clip.sortTrack(0);
    EXPECT_EQ(first->getEndFrame(), 5.0F);
    EXPECT_EQ(second->getEndFrame(), 1.0F);
    clip.sortTracks();
    EXPECT_EQ(second->getEndFrame(), 6.0F);
    second->getBlockCurves()[0]->insertCP(7, 0);
    clip.updateBounds();
    EXPECT_EQ(second->getEndFrame(), 7.0F);
    EXPECT_EQ(kvTestAccess<kvAnimationTrack>::lastFrame(*clip.getTrack(1)), 7.0F);
}

TEST(ClipAdding, insertOutsideMakesATrack) {
    kvAnimationClip clip;
    clip.createTrack();
    clip.createTrack();
    kvAnimationBlock* outside = newBlock(0, 1);
    kvAnimationBlock* below = newBlock(0, 1);
    kvAnimationBlock* inside = newBlock(0, 1);
    EXPECT_TRUE(clip.insertBlock(outside, 7));
    EXPECT_EQ(clip.getTrackAmount(), 3);
    EXPECT_TRUE(clip.insertBlock(below, -1));
    EXPECT_EQ(clip.getTrackAmount(), 4);
    EXPECT_TRUE(clip.insertBlock(inside, 1));
    EXPECT_EQ(clip.getTrackAmount(), 4);
    EXPECT_EQ(clip.getTrack(1)->getBlocks(), (Blocks{inside}));
    EXPECT_EQ(clip.getTrack(2)->getBlocks(), (Blocks{outside}));
}

TEST(ClipAdding, remembersTheLastInserted) {
    kvAnimationClip clip;
    kvAnimationBlock* block = newBlock(0, 1);
    kvAnimationClip* sub = newClip({});
    kvAnimationSequence2* sequence = newSequence(0, 1);
    clip.addBlock(block);
    EXPECT_EQ(clip.getLastInsertedBlock(), block);
    clip.addSubclip(sub);
    EXPECT_EQ(clip.getLastInsertedSubclip(), sub);
    clip.insertSequence(sequence, 0);
    EXPECT_EQ(clip.getLastInsertedSequence(), sequence);
    EXPECT_EQ(clip.getLastInsertedBlock(), block);
    kvAnimationClip* made = clip.newSubclip();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(clip.getLastInsertedSubclip(), made);
    EXPECT_EQ(made->getName(), "Clip");
    EXPECT_EQ(clip.getTrackAmount(), 3);
    kvAnimationBlock* inserted = newBlock(0, 1);
    clip.insertBlock(inserted, 0);
    EXPECT_EQ(clip.getLastInsertedBlock(), inserted);
}

TEST(ClipAdding, nullMakesNoTrack) {
    kvAnimationClip clip;
    EXPECT_FALSE(clip.addBlock(nullptr));
    EXPECT_FALSE(clip.insertBlock(nullptr, 3));
    EXPECT_FALSE(clip.addSubclip(nullptr));
    EXPECT_FALSE(clip.insertSubclip(nullptr, 3));
    EXPECT_FALSE(clip.addSequence(nullptr));
    EXPECT_FALSE(clip.insertSequence(nullptr, 3));
    EXPECT_EQ(clip.getTrackAmount(), 0);
    EXPECT_EQ(clip.getLastInsertedBlock(), nullptr);
}

TEST(ClipRemoving, asksTheTracksInOrder) {
    kvAnimationClip clip;
    const kvtest::BlockOwner first(newBlock(0, 1));
    kvAnimationBlock* second = newBlock(0, 1);
    clip.addBlock(first.get());
    clip.addBlock(second);
    first->setId(5);
    second->setId(5);
    EXPECT_TRUE(clip.subBlock(5UL, false));
    EXPECT_TRUE(clip.getTrack(0)->getBlocks().empty());
    EXPECT_EQ(clip.getTrackAmount(), 2) << "the track stays";
    EXPECT_EQ(clip.getBlock(5UL, false), second);
}

TEST(ClipRemoving, nullAndStrangersAnswerFalse) {
    kvAnimationClip clip;
    clip.addBlock(newBlock(0, 1));
    EXPECT_FALSE(clip.subBlock(nullptr, true));
    EXPECT_FALSE(clip.subSubclip(nullptr, true));
    EXPECT_FALSE(clip.subSequence(nullptr, true));
    EXPECT_FALSE(clip.subBlock(4000000000UL, true));
    EXPECT_FALSE(clip.subSubclip(clip.getId(), true)) << "a clip is not on itself";
    EXPECT_FALSE(clip.subSequence(4000000000UL, true));
}

TEST(ClipRemoving, reachesSubclipsOnlyWhenRecursive) {
    kvAnimationClip clip;
    const kvtest::BlockOwner block(newBlock(0, 1));
    const kvtest::SequenceOwner sequence(newSequence(0, 1));
    const std::unique_ptr<kvAnimationClip> inner(newClip({}));
    kvAnimationClip* outer = clip.newSubclip();
    outer->addSubclip(inner.get());
    inner->addBlock(block.get());
    inner->addSequence(sequence.get());
    EXPECT_FALSE(clip.subBlock(block.get(), false));
    EXPECT_TRUE(clip.subBlock(block.get(), true));
    EXPECT_FALSE(clip.subSequence(sequence.get(), false));
    EXPECT_TRUE(clip.subSequence(sequence.get(), true));
    EXPECT_FALSE(clip.subSubclip(inner.get(), false));
    EXPECT_TRUE(clip.subSubclip(inner.get(), true));
}

TEST(ClipFinding, byIdNameAndCurveAtAnyDepth) {
    kvAnimationClip clip;
    kvAnimationBlock* block = newBlock(0, 1, "door");
    kvAnimationSequence2* sequence = newSequence(0, 1);
    block->setId(1000001);
    sequence->setId(1000002);
    kvAnimationClip* outer = clip.newSubclip();
    kvAnimationClip* inner = outer->newSubclip();
    inner->setId(1000003);
    inner->addBlock(block);
    inner->addSequence(sequence);
    EXPECT_EQ(clip.getBlock(1000001UL, false), nullptr);
    EXPECT_EQ(clip.getBlock(1000001UL, true), block);
    EXPECT_EQ(clip.getBlock(0x100000000UL + 1000001UL, true), block);
    EXPECT_EQ(clip.getBlock(std::string("door"), true), block);
    EXPECT_EQ(clip.getBlock(block->getBlockCurves()[0], true), block);
    EXPECT_EQ(clip.getSubclip(1000003UL, false), nullptr);
    EXPECT_EQ(clip.getSubclip(1000003UL, true), inner);
    EXPECT_EQ(clip.getSequence(1000002UL, false), nullptr);
    EXPECT_EQ(clip.getSequence(1000002UL, true), sequence);
}

TEST(ClipCollecting, isInOrderOfStartOrEnd) {
    kvAnimationClip clip;
    kvAnimationBlock* late = newBlock(10, 11);
    kvAnimationBlock* early = newBlock(0, 50);
    kvAnimationBlock* middle = newBlock(5, 6);
    clip.addBlock(late);
    clip.addBlock(early);
    clip.addBlock(middle);
    EXPECT_EQ(clip.getBlocks(false, false), (Blocks{early, middle, late}));
    EXPECT_EQ(clip.getBlocks(true, false), (Blocks{middle, late, early}));
    kvAnimationSequence2* lateSequence = newSequence(10, 11);
    kvAnimationSequence2* earlySequence = newSequence(0, 50);
    clip.addSequence(lateSequence);
    clip.addSequence(earlySequence);
    EXPECT_EQ(clip.getSequences(false, false), (Sequences{earlySequence, lateSequence}));
    EXPECT_EQ(clip.getSequences(true, false), (Sequences{lateSequence, earlySequence}));
    kvAnimationClip* lateClip = newClip({newBlock(10, 11)});
    kvAnimationClip* earlyClip = newClip({newBlock(0, 50)});
    clip.addSubclip(lateClip);
    clip.addSubclip(earlyClip);
    EXPECT_EQ(clip.getSubclips(false, false), (Clips{earlyClip, lateClip}));
    EXPECT_EQ(clip.getSubclips(true, false), (Clips{lateClip, earlyClip}));
    EXPECT_EQ(clip.getTrack(0)->getBlocks(), (Blocks{late})) << "the tracks stay as they are";
}

TEST(ClipCollecting, descendsOneLevelOnly) {
    kvAnimationClip clip;
    kvAnimationBlock* own = newBlock(3, 4);
    kvAnimationBlock* sub = newBlock(1, 2);
    kvAnimationBlock* subSub = newBlock(0, 9);
    kvAnimationSequence2* subSequence = newSequence(0, 1);
    kvAnimationSequence2* subSubSequence = newSequence(0, 1);
    clip.addBlock(own);
    kvAnimationClip* inner = clip.newSubclip();
    inner->addBlock(sub);
    inner->addSequence(subSequence);
    kvAnimationClip* innermost = inner->newSubclip();
    innermost->addBlock(subSub);
    innermost->addSequence(subSubSequence);
    EXPECT_EQ(clip.getBlocks(false, false), (Blocks{own}));
    EXPECT_EQ(clip.getBlocks(false, true), (Blocks{sub, own}));
    EXPECT_EQ(clip.getSequences(false, true), (Sequences{subSequence}));
    EXPECT_EQ(clip.getSubclips(false, false), (Clips{inner}));
    const Clips both = clip.getSubclips(false, true);
    EXPECT_EQ(both.size(), 2U);
}

TEST(ClipCollecting, equalFramesKeepTheOrderOfTracksThenSubclips) {
    kvAnimationClip clip;
    kvAnimationBlock* first = newBlock(0, 9);
    kvAnimationBlock* second = newBlock(0, 9);
    kvAnimationBlock* nested = newBlock(0, 9);
    clip.newSubclip()->addBlock(nested);
    clip.addBlock(first);
    clip.addBlock(second);
    EXPECT_EQ(clip.getBlocks(false, true), (Blocks{first, second, nested}));
    EXPECT_EQ(clip.getBlocks(true, true), (Blocks{first, second, nested}));
}

TEST(ClipCollecting, itemsOfASubclipAreInOrderOfStartAmongEqualEnds) {
    kvAnimationClip clip;
    kvAnimationBlock* late = newBlock(5, 9);
    kvAnimationBlock* early = newBlock(0, 9);
    kvAnimationClip* sub = clip.newSubclip();
    sub->addBlock(late);
    sub->addBlock(early);
    EXPECT_EQ(clip.getBlocks(true, true), (Blocks{early, late}));
}

TEST(ClipCopy, isDeepWithTheClipsIdDrawnFirst) {
    kvAnimationClip source(std::string("walk"));
    source.setActive(false);
    source.setRepeat(true);
    source.addBlock(newBlock(10, 20, "b"));
    source.newSubclip()->addBlock(newBlock(0, 5));
    source.addSequence(newSequence(0, 1));
    source.setMotionBlur(true);
    const kvAnimationClip copy(source);
    EXPECT_EQ(copy.getLastInsertedSequence(), nullptr);
    EXPECT_EQ(copy.getName(), "walk");
    EXPECT_FALSE(copy.getActive());
    EXPECT_TRUE(copy.getRepeat());
    EXPECT_TRUE(copy.getMotionBlur());
    EXPECT_FALSE(copy.getFliped());
    EXPECT_EQ(copy.getLastInsertedBlock(), nullptr);
    EXPECT_EQ(copy.getLastInsertedSubclip(), nullptr);
    ASSERT_EQ(copy.getTrackAmount(), 3);
    ASSERT_EQ(copy.getTrack(0)->getBlocks().size(), 1U);
    EXPECT_NE(copy.getTrack(0)->getBlocks()[0], source.getTrack(0)->getBlocks()[0]);
    EXPECT_EQ(copy.getTrack(0)->getBlocks()[0]->getBlockName(), "b");
    ASSERT_EQ(copy.getTrack(1)->getClips().size(), 1U);
    EXPECT_EQ(copy.getTrack(1)->getClips()[0]->getTrack(0)->getBlocks().size(), 1U);
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getId()));
    kvAnimationClip mirrored;
    mirrored.setFliped(true);
    EXPECT_TRUE(kvAnimationClip(mirrored).getFliped());
}

TEST(ClipAssignment, sharesTheTracks) {
    kvAnimationClip source(std::string("walk"));
    source.addBlock(newBlock(10, 20));
    source.newSubclip();
    source.addSequence(newSequence(0, 1));
    source.setActive(false);
    source.setRepeat(true);
    source.setMotionBlur(true);
    source.setFliped(true);
    kvAnimationClip target;
    target = source;
    EXPECT_FALSE(target.getActive());
    EXPECT_TRUE(target.getRepeat());
    EXPECT_TRUE(target.getMotionBlur());
    EXPECT_TRUE(target.getFliped());
    EXPECT_EQ(target.getLastInsertedSubclip(), source.getLastInsertedSubclip());
    EXPECT_EQ(target.getLastInsertedSequence(), source.getLastInsertedSequence());
    EXPECT_EQ(target.getId(), source.getId());
    EXPECT_EQ(target.getName(), "walk");
    EXPECT_EQ(target.getTracks(), source.getTracks());
    EXPECT_EQ(target.getLastInsertedBlock(), source.getLastInsertedBlock());
    kvTestAccess<kvAnimationClip>::tracks(target).clear();
}

TEST(ClipPrint, listsTracks) {
    kvAnimationClip clip(std::string("walk"));
    clip.addBlock(newBlock(0, 1));
    clip.insertSequence(newSequence(0, 1), 0);
    // What lies in a sub-clip is not counted.
    kvAnimationClip* sub = clip.newSubclip();
    sub->addBlock(newBlock(0, 1));
    sub->addSequence(newSequence(0, 1));
    sub->newSubclip();
    testing::internal::CaptureStdout();
    clip.printClipInfo();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Clip Info\n"
                                                      "Name: walk\n"
                                                      "Blocks: 1\n"
                                                      "Subclips: 1\n"
                                                      "Sequences: 1\n"
                                                      "Tracks: 2\n"
                                                      "\t0: 1 blocks 1 sequences 0 clips.\n"
                                                      "\t1: 0 blocks 0 sequences 1 clips.\n"
                                                      "\n");
}
