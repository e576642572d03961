// The track in time: ranges, order and mirroring.

#include "support/access/kvAnimationTrack.h"
#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using kvtest::fill;
using kvtest::newBlock;
using kvtest::newClip;
using kvtest::newCurve;
using kvtest::newSequence;
using Access = kvTestAccess<kvAnimationTrack>;
using Blocks = std::vector<kvAnimationBlock*>;
using Clips = std::vector<kvAnimationClip*>;
using Sequences = std::vector<kvAnimationSequence2*>;

const float kNaN = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST(Track, lastFrameIsTheEndOfTheBlockThatStartsLast) {
    kvAnimationTrack track;
    fill(track, {newBlock(0, 40), newBlock(5, 10)});
    EXPECT_EQ(track.getLastFrame(), 10.0F);
    EXPECT_EQ(track.getFirstFrame(), 0.0F);
    EXPECT_EQ(track.getDuration(), 10.0F);
    track.updateBounds();
    EXPECT_EQ(Access::lastFrame(track), 40.0F);
    EXPECT_EQ(Access::firstFrame(track), 0.0F);
}

TEST(Track, sequencesCountForTheFirstFrameOnly) {
    kvAnimationTrack track;
    track.addSequence(newSequence(5, 9));
    EXPECT_EQ(track.getFirstFrame(), 5.0F);
    EXPECT_EQ(track.getLastFrame(), -1e23F);
    EXPECT_EQ(Access::firstFrame(track), 5.0F);
    EXPECT_EQ(Access::lastFrame(track), 9.0F);
}

TEST(Track, rangeIsThatOfAllThreeKindsOfItems) {
    kvAnimationTrack track;
    track.addBlock(newBlock(10, 20));
    track.addClip(newClip({newBlock(3, 30)}));
    track.addSequence(newSequence(1, 99));
    EXPECT_EQ(track.getFirstFrame(), 1.0F);
    EXPECT_EQ(track.getLastFrame(), 30.0F);
    EXPECT_EQ(Access::lastFrame(track), 99.0F);
}

TEST(Track, gettersSortInPlaceByStart) {
    kvAnimationTrack track;
    kvAnimationBlock* early = newBlock(0, 40);
    kvAnimationBlock* late = newBlock(5, 10);
    kvAnimationSequence2* first = newSequence(1, 2);
    kvAnimationSequence2* second = newSequence(3, 4);
    fill(track, {early, late});
    track.addSequence(first);
    track.addSequence(second);
    Access::blocks(track) = {late, early};
    Access::sequences(track) = {second, first};
    track.getFirstFrame();
    EXPECT_EQ(track.getBlocks(), (Blocks{early, late}));
    EXPECT_EQ(track.getSequences(), (Sequences{first, second}));
    Access::blocks(track) = {late, early};
    track.getLastFrame();
    EXPECT_EQ(track.getBlocks(), (Blocks{early, late}));
}

TEST(Track, rangeFollowsSubclipsThatChangedPlaces) {
    kvAnimationTrack track;
    kvAnimationClip* first = newClip({newBlock(0, 10)});
    kvAnimationClip* second = newClip({newBlock(20, 30)});
    kvAnimationClip* third = newClip({newBlock(40, 45)});
    for (kvAnimationClip* clip : {first, second, third})
        track.addClip(clip);
    first->move(100);
    EXPECT_EQ(track.getLastFrame(), 110.0F);
    EXPECT_EQ(track.getFirstFrame(), 20.0F);
    EXPECT_EQ(track.getClips(), (Clips{second, third, first}));
    third->move(-40);
    EXPECT_EQ(track.getFirstFrame(), 0.0F);
    EXPECT_EQ(track.getLastFrame(), 110.0F);
    second->move(1000);
    track.updateBounds();
    EXPECT_EQ(Access::firstFrame(track), 0.0F);
    EXPECT_EQ(Access::lastFrame(track), 1030.0F);
}

TEST(Track, gettersSortInsideSubclipsAsWell) {
    kvAnimationTrack track;
    kvAnimationBlock* early = newBlock(0, 1);
    kvAnimationBlock* late = newBlock(5, 10);
    kvAnimationClip* clip = newClip({early});
    clip->insertBlock(late, 0);
    track.addClip(clip);
    Access::blocks(*clip->getTrack(0)) = {late, early};
    track.getFirstFrame();
    EXPECT_EQ(clip->getTrack(0)->getBlocks(), (Blocks{early, late}));
}

TEST(TrackSort, byEndAndByStart) {
    kvAnimationTrack track;
    kvAnimationBlock* longer = newBlock(0, 40);
    kvAnimationBlock* shorter = newBlock(5, 10);
    kvAnimationClip* longClip = newClip({newBlock(1, 41)});
    kvAnimationClip* shortClip = newClip({newBlock(6, 11)});
    kvAnimationSequence2* longSequence = newSequence(2, 42);
    kvAnimationSequence2* shortSequence = newSequence(7, 12);
    fill(track, {shorter, longer});
    track.addClip(shortClip);
    track.addClip(longClip);
    track.addSequence(shortSequence);
    track.addSequence(longSequence);
    EXPECT_EQ(track.getBlocks(), (Blocks{longer, shorter}));
    EXPECT_EQ(track.getClips(), (Clips{longClip, shortClip}));
    EXPECT_EQ(track.getSequences(), (Sequences{longSequence, shortSequence}));
    track.sort(true);
    EXPECT_EQ(track.getBlocks(), (Blocks{shorter, longer}));
    EXPECT_EQ(track.getClips(), (Clips{shortClip, longClip}));
    EXPECT_EQ(track.getSequences(), (Sequences{shortSequence, longSequence}));
    track.sort(false);
    EXPECT_EQ(track.getBlocks(), (Blocks{longer, shorter}));
    EXPECT_EQ(track.getClips(), (Clips{longClip, shortClip}));
    EXPECT_EQ(track.getSequences(), (Sequences{longSequence, shortSequence}));
}

TEST(TrackSort, equalFramesKeepTheirOrder) {
    kvAnimationTrack track;
    Sequences items;
    for (int i = 0; i < 20; ++i) {
        items.push_back(newSequence(static_cast<float>(i % 2), 5));
        Access::sequences(track).push_back(items.back());
    }
    track.sort(false);
    Sequences expected;
    for (int rest : {0, 1})
        for (std::size_t i = 0; i < items.size(); ++i)
            if (static_cast<int>(i % 2) == rest) expected.push_back(items[i]);
    EXPECT_EQ(track.getSequences(), expected);
}

TEST(TrackSort, updateBoundsOrdersEqualStartsByEnd) {
    kvAnimationTrack track;
    kvAnimationBlock* longer = newBlock(0, 40);
    kvAnimationBlock* shorter = newBlock(0, 10);
    Access::blocks(track) = {longer, shorter};
    track.sort(false);
    EXPECT_EQ(track.getBlocks(), (Blocks{longer, shorter}));
    track.updateBounds();
    EXPECT_EQ(track.getBlocks(), (Blocks{shorter, longer}));
    EXPECT_EQ(track.getLastFrame(), 40.0F);
}

TEST(TrackSort, framesThatAreNoNumbersComeLast) {
    kvAnimationTrack track;
    Sequences items;
    for (const float start : {kNaN, 3.0F, kNaN, -1e30F, 1e30F, 2.0F})
        items.push_back(newSequence(start, 4));
    for (kvAnimationSequence2* item : items)
        track.addSequence(item);
    EXPECT_EQ(track.getSequences(),
              (Sequences{items[3], items[5], items[1], items[4], items[0], items[2]}));
    EXPECT_EQ(track.getFirstFrame(), -1e30F);
}

TEST(TrackSort, aTrackOfFramesThatAreNoNumbersIsLikeAnEmptyOne) {
    kvAnimationTrack track;
    track.addSequence(newSequence(kNaN, kNaN));
    kvAnimationBlock* block = newBlock(1, 2);
    block->moveBlock(kNaN);
    track.addBlock(block);
    track.getDuration();
    EXPECT_EQ(track.getBlocks().size(), 1U);
    EXPECT_EQ(track.getFirstFrame(), 1e23F);
    EXPECT_EQ(track.getLastFrame(), -1e23F);
}

TEST(TrackSort, manyItemsAreSortedStablyTheSameWayAsFew) {
    // 500 is where sorting turns parallel.
    for (const int count : {499, 500, 5000}) {
        kvAnimationTrack track;
        std::mt19937 random(static_cast<unsigned>(count));
        std::vector<std::pair<float, kvAnimationSequence2*>> expected;
        for (int i = 0; i < count; ++i) {
            const float start = static_cast<float>(random() % 50);
            kvAnimationSequence2* item = newSequence(start, 100);
            expected.emplace_back(start, item);
            Access::sequences(track).push_back(item);
        }
        std::stable_sort(expected.begin(), expected.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        track.sort(false);
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_EQ(track.getSequences()[i], expected[i].second) << count << " " << i;
    }
}

TEST(TrackFlip, mirrorsBlocksBetweenFirstAndLastFrame) {
    kvAnimationTrack track;
    kvAnimationBlock* first = newBlock(0, 10);
    kvAnimationBlock* second = newBlock(20, 30);
    fill(track, {first, second});
    track.setFliped(true);
    EXPECT_TRUE(track.getFliped());
    EXPECT_EQ(first->getStartFrame(), 20.0F);
    EXPECT_EQ(first->getEndFrame(), 30.0F);
    EXPECT_EQ(second->getStartFrame(), 0.0F);
    EXPECT_EQ(second->getEndFrame(), 10.0F);
    EXPECT_TRUE(first->getFliped());
    EXPECT_EQ(first->getBlockCurves()[0]->getStartFrame(), 20.0);
    EXPECT_EQ(first->getBlockCurves()[0]->getCPs()[0].getPoint().y, 100.0) << "keys are mirrored";
}

TEST(TrackFlip, mirrorsOnEveryCallWhateverTheFlag) {
    kvAnimationTrack track;
    kvAnimationBlock* first = newBlock(0, 10);
    kvAnimationBlock* second = newBlock(20, 50);
    fill(track, {first, second});
    track.setFliped(true);
    EXPECT_EQ(first->getStartFrame(), 40.0F);
    track.setFliped(true);
    EXPECT_TRUE(track.getFliped());
    EXPECT_EQ(first->getStartFrame(), 0.0F);
    EXPECT_EQ(second->getStartFrame(), 20.0F);
    EXPECT_FALSE(first->getFliped());
    track.setFliped(false);
    EXPECT_FALSE(track.getFliped());
    EXPECT_EQ(first->getStartFrame(), 40.0F);
}

TEST(TrackFlip, takesTheDistanceAsADifferenceOfTwoGapsInSinglePrecision) {
    const float first = 0.1F;
    const float last = 1000.3F;
    const float start = 3.7F;
    const float end = 500.9F;
    kvAnimationTrack track;
    kvAnimationSequence2* sequence = newSequence(start, end);
    track.addBlock(newBlock(first, last));
    track.addSequence(sequence);
    const float behind = last - end;
    const float before = start - first;
    const float distance = behind - before;
    const float sum = first + last;
    const float otherwise = sum - end;
    ASSERT_NE(start + distance, otherwise) << "the numbers tell the two ways apart";
    track.setFliped(true);
    EXPECT_EQ(sequence->getStartFrame(), start + distance);
    EXPECT_EQ(sequence->getEndFrame(), end + distance);
}

TEST(TrackFlip, movesSequencesButDoesNotTurnThem) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(0, 30);
    kvAnimationSequence2* sequence = newSequence(2, 8);
    track.addBlock(block);
    track.addSequence(sequence);
    track.setFliped(true);
    EXPECT_EQ(sequence->getStartFrame(), 22.0F);
    EXPECT_EQ(sequence->getEndFrame(), 28.0F);
    EXPECT_FALSE(sequence->getFliped());
}

TEST(TrackFlip, mirrorsSubclipsInPlace) {
    kvAnimationTrack track;
    kvAnimationBlock* early = newBlock(10, 12);
    kvAnimationBlock* late = newBlock(14, 20);
    kvAnimationClip* clip = newClip({early});
    clip->insertBlock(late, 0);
    kvAnimationBlock* own = newBlock(0, 100);
    track.addBlock(own);
    track.addClip(clip);
    track.setFliped(true);
    EXPECT_TRUE(clip->getFliped());
    EXPECT_EQ(early->getStartFrame(), 18.0F)
        << "within 10 to 20, the range of the sub-clip's track";
    EXPECT_EQ(late->getStartFrame(), 10.0F);
    EXPECT_EQ(own->getStartFrame(), 0.0F);
}

TEST(TrackFlip, usesTheEndOfTheBlockThatStartsLast) {
    // Last frame is 10, so the block 0..40 goes to 10 - 40 = -30.
    kvAnimationTrack track;
    kvAnimationBlock* longer = newBlock(0, 40);
    kvAnimationBlock* inner = newBlock(5, 10);
    fill(track, {longer, inner});
    track.setFliped(true);
    EXPECT_EQ(longer->getStartFrame(), -30.0F);
    EXPECT_EQ(longer->getEndFrame(), 10.0F);
    EXPECT_EQ(inner->getStartFrame(), 0.0F);
    EXPECT_EQ(inner->getEndFrame(), 5.0F);
}

TEST(TrackFlip, withoutBlocksAndSubclipsThrowsSequencesToTheStartOfASearch) {
    // The last frame of such a track is -1e23, and about that the items are mirrored.
    kvAnimationTrack track;
    kvAnimationSequence2* first = newSequence(5, 9);
    kvAnimationSequence2* second = newSequence(20, 30);
    track.addSequence(first);
    track.addSequence(second);
    track.setFliped(true);
    EXPECT_EQ(first->getStartFrame(), -1e23F);
    EXPECT_EQ(first->getEndFrame(), -1e23F);
    EXPECT_EQ(second->getStartFrame(), -1e23F);
    EXPECT_EQ(second->getEndFrame(), -1e23F);
    EXPECT_TRUE(track.getFliped());
    track.setFliped(false);
    EXPECT_EQ(first->getStartFrame(), -1e23F) << "what the frames were is lost";
}

TEST(TrackFlip, mirrorsASequenceBehindTheLastFrameToBeforeTheFirst) {
    kvAnimationTrack track;
    kvAnimationBlock* block = newBlock(0, 10);
    kvAnimationSequence2* sequence = newSequence(12, 20);
    track.addBlock(block);
    track.addSequence(sequence);
    track.setFliped(true);
    EXPECT_EQ(block->getStartFrame(), 0.0F);
    EXPECT_EQ(sequence->getStartFrame(), -10.0F) << "0 + 10 - 20";
    EXPECT_EQ(sequence->getEndFrame(), -2.0F);
}

TEST(TrackFlip, ofAnEmptyTrackStoresTheFlag) {
    kvAnimationTrack track;
    track.setFliped(true);
    EXPECT_TRUE(track.getFliped());
}
