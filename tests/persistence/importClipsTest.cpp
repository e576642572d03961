// Reading clips: their tracks, cameras, and the layouts that older writers left.

#include "persistence/importFixture.h"
#include "support/access/kvAnimationAttachmentInteraction.h"

#include <OSGCameraSetting.h>

#include <OpenSG/OSGFieldContainerFactory.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using Access = kvTestAccess<kvAnimationAttachmentInteraction>;
using kv::test::Import;
using osg::NullFC;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- tracks and clips

TEST_F(Import, clipsAreReadWithoutMirroringOrPushingDownFlags) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    record->setFliped(true);
    record->setRepeated(true);
    record->setMotionBlur(true);
    track->setActive(false);
    track->setMotionBlur(true);
    track->setFliped(true);
    const osg::AnimationBlockPtr a = blockRecord(node, "a");
    a->addCurve(curveRecord(node, "translateX", {0.0F, 10.0F}));
    a->setFliped(true);
    const osg::AnimationBlockPtr b = blockRecord(node, "b");
    b->addCurve(curveRecord(node, "translateX", {20.0F, 40.0F}));
    track->addBlock(a);
    track->addBlock(b);
    track->addSequence(sequenceRecord("s", 3.0F, 4.5F));
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    ASSERT_THAT(*manager().getClips(), SizeIs(1));
    EXPECT_EQ(clip(0)->getName(), "clip");
    EXPECT_TRUE(clip(0)->getFliped());
    EXPECT_TRUE(clip(0)->getRepeat());
    EXPECT_TRUE(clip(0)->getMotionBlur());
    EXPECT_TRUE(clip(0)->getActive()) << "not stored";
    ASSERT_EQ(clip(0)->getTrackAmount(), 1);
    kvAnimationTrack* const t = clip(0)->getTrack(0);
    EXPECT_FALSE(t->getActive());
    EXPECT_TRUE(t->getMotionBlur());
    EXPECT_TRUE(t->getFliped());
    ASSERT_THAT(names(t->getBlocks()), ElementsAre("a", "b"));
    EXPECT_EQ(t->getBlocks()[0]->getStartFrame(), 0.0F);
    EXPECT_EQ(t->getBlocks()[0]->getEndFrame(), 10.0F);
    EXPECT_EQ(t->getBlocks()[1]->getStartFrame(), 20.0F);
    EXPECT_TRUE(t->getBlocks()[0]->getFliped());
    EXPECT_FALSE(t->getBlocks()[1]->getFliped());
    EXPECT_FALSE(t->getBlocks()[1]->getMotionBlur());
    EXPECT_TRUE(t->getBlocks()[1]->getActive());
    ASSERT_THAT(t->getSequences(), SizeIs(1));
    const kvAnimationSequence2* const s = t->getSequences()[0];
    EXPECT_EQ(s->getSequence(), "s");
    EXPECT_EQ(s->getStartFrame(), 3.0F);
    EXPECT_EQ(s->getEndFrame(), 4.5F);
    EXPECT_TRUE(s->getActive());
}

TEST_F(Import, activityOfBlocksOnTracksIsNotRead) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addBlock(blockRecord(node, "stored inactive"));
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_TRUE(clip(0)->getTrack(0)->getBlocks()[0]->getActive());
}

TEST_F(Import, aBlockWithoutNodeOnATrackIsDroppedAndItsSiblingsStay) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    const osg::AnimationBlockPtr homeless = blockRecord(NullFC, "homeless");
    homeless->addCurve(curveRecord(node, "translateX", {1.0F}));
    track->addBlock(homeless);
    track->addBlock(blockRecord(node, "b"));
    track->addSequence(sequenceRecord("s", 1.0F, 2.0F));
    track->addClip(osg::AnimationClipBase::create());
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    kvAnimationTrack* const t = clip(0)->getTrack(0);
    EXPECT_THAT(names(t->getBlocks()), ElementsAre("b"));
    EXPECT_THAT(t->getSequences(), SizeIs(1));
    EXPECT_THAT(t->getClips(), SizeIs(1));
}

TEST_F(Import, tracksKeepTheStoredOrderWhateverTheirNumbers) {
    osg::AnimationClipPtr record;
    const float starts[] = {5.0F, 2.0F, 9.0F};
    osg::AnimationTrackPtr track = clipWithTrack(record);
    for (int i = 0; i < 3; ++i) {
        if (i > 0) track = addTrack(record);
        track->setNumber(static_cast<int>(starts[i]));
        track->addSequence(sequenceRecord("s", starts[i], 20.0F));
    }
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    ASSERT_EQ(clip(0)->getTrackAmount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(clip(0)->getTrack(i)->getNumber(), i);
        EXPECT_EQ(clip(0)->getTrack(i)->getSequences()[0]->getStartFrame(), starts[i]);
    }
}

TEST_F(Import, foreignElementsOfClipListsAreIgnored) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addClip(blockRecord(node, "no clip"));
    track->addClip(node);
    record->addSubclip(curveRecord(node, "no clip either", {}));
    const osg::AnimationClipPtr good = osg::AnimationClipBase::create();
    good->setName("good");
    track->addClip(good);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    ASSERT_EQ(clip(0)->getTrackAmount(), 1);
    ASSERT_THAT(clip(0)->getTrack(0)->getClips(), SizeIs(1));
    EXPECT_EQ(clip(0)->getTrack(0)->getClips()[0]->getName(), "good");
}

TEST_F(Import, nestedClipsAreReadToAnyDepth) {
    osg::AnimationClipPtr record;
    osg::AnimationTrackPtr track = clipWithTrack(record);
    constexpr int kDepth = 20;
    for (int i = 0; i < kDepth; ++i) {
        const osg::AnimationClipPtr nested = osg::AnimationClipBase::create();
        nested->setName("level" + std::to_string(i));
        nested->setRepeated(i % 2 == 0);
        track->addClip(nested);
        track = addTrack(nested);
    }
    const osg::AnimationBlockPtr deepest = blockRecord(node, "deepest");
    deepest->addCurve(curveRecord(node, "translateX", {3.0F, 7.0F}));
    track->addBlock(deepest);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    kvAnimationClip* c = clip(0);
    EXPECT_EQ(c->getStartFrame(), 3.0F);
    EXPECT_EQ(c->getEndFrame(), 7.0F);
    for (int i = 0; i < kDepth; ++i) {
        ASSERT_THAT(c->getTrack(0)->getClips(), SizeIs(1));
        c = c->getTrack(0)->getClips()[0];
        EXPECT_EQ(c->getName(), "level" + std::to_string(i));
        EXPECT_EQ(c->getRepeat(), i % 2 == 0);
    }
    EXPECT_EQ(c->getTrack(0)->getBlocks()[0]->getBlockName(), "deepest");
}

TEST_F(Import, aClipThatIsStoredInsideItselfIsReadOnce) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addClip(record);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_THAT(clip(0)->getTrack(0)->getClips(), IsEmpty());
    track->clearClips(); // the record held itself
}

TEST_F(Import, clipsNestedDeeperThanAStackReachesAreCutOff) {
    osg::AnimationClipPtr record;
    osg::AnimationTrackPtr track = clipWithTrack(record);
    for (int i = 0; i < 3000; ++i) {
        const osg::AnimationClipPtr nested = osg::AnimationClipBase::create();
        track->addClip(nested);
        track = addTrack(nested);
    }
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    int levels = 1;
    for (kvAnimationClip* c = clip(0); !c->getTrack(0)->getClips().empty(); ++levels)
        c = c->getTrack(0)->getClips()[0];
    EXPECT_EQ(levels, 1000);
}

TEST_F(Import, itemsOfATrackEndInTheOrderThatAddingThemOneByOneGives) {
    const std::vector<std::vector<float>> ranges = {{30.0F, 40.0F}, {10.0F, 60.0F}, {10.0F, 20.0F},
                                                    {30.0F, 40.0F}, {0.0F, 5.0F},   {10.0F, 20.0F}};
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    kvAnimationClip* const reference = keep(new kvAnimationClip);
    reference->createTrack();
    int n = 0;
    for (const std::vector<float>& range : ranges) {
        const std::string name = std::to_string(n++);
        const osg::AnimationBlockPtr stored = blockRecord(node, name);
        stored->addCurve(curveRecord(node, "translateX", range));
        track->addBlock(stored);
        reference->insertBlock(makeBlock(node, name, range), 0);
    }
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_EQ(names(clip(0)->getTrack(0)->getBlocks()), names(reference->getTrack(0)->getBlocks()));
    EXPECT_EQ(clip(0)->getTrack(0)->getLastFrame(), reference->getTrack(0)->getLastFrame());
}

// --- cameras

TEST_F(Import, curvesOfACameraBlockStoredOnNoCameraEndUpOnTheCameraNode) {
    const osg::NodePtr camera = makeCamera();
    const osg::NodePtr otherCamera = makeCamera();
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    const osg::AnimationBlockPtr stored = blockRecord(node, "camera");
    stored->setCamBlock(true);
    stored->addCurve(curveRecord(node, "elsewhere", {1.0F}));
    stored->addCurve(curveRecord(otherCamera, "on a camera", {1.0F}));
    stored->addCurve(curveRecord(NullFC, "nowhere", {1.0F}));
    track->addBlock(stored);
    const osg::AnimationBlockPtr ordinary = blockRecord(node, "ordinary");
    ordinary->addCurve(curveRecord(node, "stays", {1.0F}));
    track->addBlock(ordinary);
    I::loadClipsFromAnimAttachment(node, &manager(), camera, false);
    const kvAnimationBlock* b = clip(0)->getBlock("camera", false);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->getAppropriateNode(), node) << "the block itself stays";
    EXPECT_EQ(b->getBlockCurves()[0]->getAppropriateNode(), camera);
    EXPECT_EQ(b->getBlockCurves()[1]->getAppropriateNode(), otherCamera);
    EXPECT_EQ(b->getBlockCurves()[2]->getAppropriateNode(), NullFC);
    b = clip(0)->getBlock("ordinary", false);
    EXPECT_EQ(b->getBlockCurves()[0]->getAppropriateNode(), node);
}

TEST_F(Import, aNodeWithoutCoreIsNoCamera) {
    const osg::NodePtr camera = makeCamera();
    osg::NodePtr bare = osg::Node::create();
    osg::addRefCP(bare);
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    const osg::AnimationBlockPtr stored = blockRecord(node, "camera");
    stored->setCamBlock(true);
    stored->addCurve(curveRecord(bare, "a", {1.0F}));
    track->addBlock(stored);
    I::loadClipsFromAnimAttachment(node, &manager(), camera, false);
    EXPECT_EQ(clip(0)->getTrack(0)->getBlocks()[0]->getBlockCurves()[0]->getAppropriateNode(),
              camera);
    osg::subRefCP(bare);
}

TEST_F(Import, topLevelCameraBlocksAreNotRetargeted) {
    const osg::AnimationBlockPtr stored = blockRecord(node, "camera");
    stored->setCamBlock(true);
    stored->addCurve(curveRecord(node, "a", {1.0F}));
    attachment(node)->addBlock(stored);
    I::loadBlocksFromAnimAttachment(node, &manager(), false);
    EXPECT_EQ(block(0)->getBlockCurves()[0]->getAppropriateNode(), node);
}

TEST_F(Import, withoutCameraNodeRetargetedCurvesLoseTheirNode) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    const osg::AnimationBlockPtr stored = blockRecord(node, "camera");
    stored->setCamBlock(true);
    stored->addCurve(curveRecord(node, "a", {1.0F}));
    track->addBlock(stored);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_EQ(clip(0)->getTrack(0)->getBlocks()[0]->getBlockCurves()[0]->getAppropriateNode(),
              NullFC);
}

// --- the older layout

TEST_F(Import, theOlderLayoutIsReadBeforeTheTracks) {
    const osg::NodePtr camera = makeCamera();
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addSequence(sequenceRecord("on a track", 1.0F, 2.0F));
    const osg::AnimationBlockPtr direct = blockRecord(node, "direct");
    direct->setCamBlock(true);
    direct->setAnimatedType(5);
    direct->setRepeated(true);
    direct->setMotionBlur(true);
    direct->setFliped(true);
    direct->addCurve(curveRecord(node, "translateX", {1.0F, 9.0F}));
    record->addBlock(direct);
    record->addBlock(blockRecord(NullFC, "homeless"));
    const osg::AnimationClipPtr sub = osg::AnimationClipBase::create();
    sub->setName("sub");
    sub->setRepeated(true);
    sub->setMotionBlur(true);
    sub->setFliped(true);
    const osg::AnimationBlockPtr inSub = blockRecord(node, "in sub");
    inSub->addCurve(curveRecord(node, "translateX", {2.0F, 8.0F}));
    sub->addBlock(inSub);
    const osg::AnimationClipPtr subSub = osg::AnimationClipBase::create();
    subSub->setName("sub sub");
    sub->addSubclip(subSub);
    record->addSubclip(sub);

    I::loadClipsFromAnimAttachment(node, &manager(), camera, false);
    ASSERT_EQ(clip(0)->getTrackAmount(), 4) << "one track per direct item, then the stored track";
    const kvAnimationBlock* const b = clip(0)->getTrack(0)->getBlocks().at(0);
    EXPECT_EQ(b->getBlockName(), "direct");
    EXPECT_TRUE(b->isCameraBlock());
    EXPECT_EQ(b->getAnimatedType(), 5);
    EXPECT_TRUE(b->getRepeat());
    EXPECT_TRUE(b->getMotionBlur());
    EXPECT_TRUE(b->getFliped());
    EXPECT_EQ(b->getStartFrame(), 1.0F);
    EXPECT_EQ(b->getEndFrame(), 9.0F);
    EXPECT_EQ(b->getBlockCurves()[0]->getAppropriateNode(), camera) << "re-targeted here, too";
    EXPECT_TRUE(b->getActive()) << "stored as false, but not read";
    EXPECT_EQ(clip(0)->getTrack(1)->getBlocks().at(0)->getBlockName(), "homeless");
    const kvAnimationClip* const s = clip(0)->getTrack(2)->getClips().at(0);
    EXPECT_EQ(s->getName(), "sub");
    EXPECT_TRUE(s->getRepeat());
    EXPECT_TRUE(s->getMotionBlur());
    EXPECT_TRUE(s->getFliped());
    ASSERT_EQ(s->getTrackAmount(), 2);
    EXPECT_EQ(s->getTrack(0)->getBlocks().at(0)->getBlockName(), "in sub");
    EXPECT_EQ(s->getTrack(1)->getClips().at(0)->getName(), "sub sub");
    EXPECT_EQ(clip(0)->getTrack(3)->getSequences().at(0)->getSequence(), "on a track");
}

TEST_F(Import, whatTheOlderWriterWritesIsReadBack) {
    kvAnimationClip* const written = keep(new kvAnimationClip("outer"));
    written->addBlock(makeBlock(node, "b", {1.0F, 2.0F}));
    auto* const nested = new kvAnimationClip("nested");
    nested->addBlock(makeBlock(node, "deep", {5.0F, 6.0F}));
    written->addSubclip(nested);
    const osg::AnimationClipPtr record = osg::AnimationClipBase::create();
    attachment(node)->addClip(record);
    Access::addSubClip(record, written);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_EQ(names(clip(0)->getBlocks(false, true)), names(written->getBlocks(false, true)));
    EXPECT_EQ(clip(0)->getStartFrame(), 1.0F);
    EXPECT_EQ(clip(0)->getEndFrame(), 6.0F);
}

// --- the oldest reader

TEST_F(Import, theOldestReaderAppendsWithoutIdentifiersAndBindingsAndKeepsTheRecords) {
    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F, 2.0F}));
    const osg::AnimationBlockPtr b = blockRecord(node, "b");
    b->setRepeated(true);
    b->addCurve(curveRecord(node, "translateY", {3.0F, 4.0F}));
    attachment(node)->addBlock(b);
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addSequence(sequenceRecord("not read", 1.0F, 2.0F));
    const osg::AnimationBlockPtr inClip = blockRecord(node, "in clip");
    inClip->addCurve(curveRecord(node, "translateZ", {5.0F, 6.0F}));
    record->addBlock(inClip);

    // The four keys before the clip draw one identifier each; the clip draws one when it is made
    // and one when it is registered.
    const std::vector<unsigned> draws = nextDraws(8);
    const kvAnimationCurve before;
    I::importAnimationAttachment(node, &manager());
    ASSERT_THAT(*manager().getAnimCurves(), SizeIs(1));
    EXPECT_EQ(curve(0)->getAnimatedAttribute(), "translateX");
    EXPECT_EQ(curve(0)->getId(), before.getId() + 1) << "only the counter's number";
    EXPECT_EQ(curve(0)->getAppropriateNode(), NullFC);
    EXPECT_EQ(curve(0)->getAnimationField().fcId, 0U);
    EXPECT_EQ(curve(0)->getAnimationField().fieldName, "unknown");
    EXPECT_THAT(curve(0)->getCPs(), SizeIs(2));
    ASSERT_THAT(*manager().getBlocks(), SizeIs(1));
    EXPECT_EQ(block(0)->getBlockName(), "b");
    EXPECT_EQ(block(0)->getAppropriateNode(), node);
    EXPECT_EQ(block(0)->getStartFrame(), 3.0F);
    EXPECT_EQ(block(0)->getEndFrame(), 4.0F);
    EXPECT_FALSE(block(0)->getRepeat()) << "flags are not read";
    ASSERT_THAT(*manager().getClips(), SizeIs(1));
    EXPECT_EQ(clip(0)->getName(), "clip");
    EXPECT_EQ(clip(0)->getId(), draws[5]);
    ASSERT_EQ(clip(0)->getTrackAmount(), 1);
    EXPECT_EQ(clip(0)->getTrack(0)->getBlocks().at(0)->getBlockName(), "in clip");
    EXPECT_EQ(clip(0)->getTrack(0)->getBlocks().at(0)->getEndFrame(), 6.0F);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 1U);
}

} // namespace
