// What must never come about: a clip below itself. And what sharing does instead.

#include "support/access/kvAnimationClip.h"
#include "support/access/kvAnimationTrack.h"
#include "support/clipBuilders.h"

#include <gtest/gtest.h>

namespace {

using kvtest::newBlock;
using kvtest::newClip;

struct Family {
    kvAnimationClip top;
    kvAnimationClip* middle = top.newSubclip();
    kvAnimationClip* bottom = middle->newSubclip();
};

} // namespace

TEST(Nesting, aClipIsNotPutIntoItself) {
    kvAnimationClip clip;
    clip.createTrack();
    EXPECT_FALSE(clip.addSubclip(&clip));
    EXPECT_FALSE(clip.insertSubclip(&clip, 0));
    EXPECT_FALSE(clip.insertSubclip(&clip, 9));
    EXPECT_FALSE(clip.getTrack(0)->addClip(&clip));
    EXPECT_EQ(clip.getTrackAmount(), 1);
    EXPECT_TRUE(clip.getTrack(0)->getClips().empty());
    EXPECT_EQ(clip.getLastInsertedSubclip(), nullptr);
}

TEST(Nesting, aClipIsNotPutBelowItself) {
    Family family;
    kvAnimationClip* const before = family.bottom->getLastInsertedSubclip();
    family.bottom->createTrack();
    for (kvAnimationClip* ancestor : {&family.top, family.middle}) {
        EXPECT_FALSE(family.bottom->addSubclip(ancestor));
        EXPECT_FALSE(family.bottom->insertSubclip(ancestor, 0));
        EXPECT_FALSE(family.bottom->getTrack(0)->addClip(ancestor));
    }
    EXPECT_EQ(family.bottom->getTrackAmount(), 1);
    EXPECT_TRUE(family.bottom->getTrack(0)->getClips().empty());
    EXPECT_EQ(family.bottom->getLastInsertedSubclip(), before);
}

TEST(Nesting, aStrangerMayGoAnywhere) {
    Family family;
    auto* stranger = newClip({newBlock(0, 1)});
    EXPECT_TRUE(family.bottom->addSubclip(stranger));
    EXPECT_EQ(family.top.getSubclip(stranger->getId(), true), stranger);
}

TEST(Nesting, theSameSubclipMayStandAtTwoPlaces) {
    kvAnimationClip clip;
    auto* shared = newClip({newBlock(3, 4)});
    EXPECT_TRUE(clip.addSubclip(shared));
    EXPECT_TRUE(clip.addSubclip(shared));
    EXPECT_EQ(clip.getSubclips(false, false).size(), 2U);
    EXPECT_EQ(clip.getStartFrame(), 3.0F);
    EXPECT_TRUE(clip.subSubclip(shared, false));
}

TEST(Nesting, assigningAnAncestorChangesNothing) {
    Family family;
    const unsigned int id = family.bottom->getId();
    *family.bottom = family.top;
    EXPECT_EQ(family.bottom->getId(), id);
    EXPECT_EQ(family.bottom->getTrackAmount(), 0);
    kvAnimationTrack* track = family.middle->getTrack(0);
    *track = *family.top.getTrack(0);
    EXPECT_EQ(track->getClips(), (std::vector<kvAnimationClip*>{family.bottom}));
}

TEST(Nesting, assigningToItselfChangesNothing) {
    Family family;
    kvAnimationClip& alias = family.top;
    family.top = alias;
    EXPECT_EQ(family.top.getTrackAmount(), 1);
    kvAnimationTrack& track = *family.top.getTrack(0);
    kvAnimationTrack& trackAlias = track;
    track = trackAlias;
    EXPECT_EQ(track.getClips().size(), 1U);
}

TEST(Nesting, aSharedTrackKeepsBothItsClipsAway) {
    // After the assignment both clips have the same track, so neither may be put on it.
    kvAnimationClip first;
    first.createTrack();
    kvAnimationClip second;
    second = first;
    EXPECT_FALSE(first.insertSubclip(&second, 0));
    EXPECT_FALSE(second.insertSubclip(&first, 0));
    EXPECT_TRUE(first.getTrack(0)->getClips().empty());
    kvTestAccess<kvAnimationClip>::tracks(second).clear();
}

TEST(Nesting, aChainOfAThousandClipsWorksInEveryOperation) {
    kvAnimationClip top;
    kvAnimationClip* clip = &top;
    for (int i = 0; i < 1000; ++i)
        clip = clip->newSubclip();
    kvAnimationBlock* block = newBlock(3, 9);
    clip->addBlock(block);
    EXPECT_EQ(top.getStartFrame(), 3.0F);
    EXPECT_EQ(top.getEndFrame(), 9.0F);
    EXPECT_EQ(top.getBlock(block->getId(), true), block);
    EXPECT_FALSE(clip->addSubclip(&top));
    top.sortTracks();
    top.move(1);
    EXPECT_EQ(top.getStartFrame(), 4.0F);
    const kvAnimationClip copy(top);
    EXPECT_EQ(copy.getTrackAmount(), 1);
}

TEST(Nesting, aClipOfThousandsOfEmptyTracksWorks) {
    kvAnimationClip clip;
    for (int i = 0; i < 5000; ++i)
        clip.createTrack();
    EXPECT_EQ(clip.getStartFrame(), 1e23F);
    EXPECT_EQ(clip.getEndFrame(), -1e23F);
    clip.sortTracks();
    clip.stretchLeft(5);
    clip.setFliped(true);
    EXPECT_TRUE(clip.getBlocks(false, true).empty());
    clip.deleteEmptyTracks();
    EXPECT_EQ(clip.getTrackAmount(), 0);
}
