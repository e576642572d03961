// Reading: objects from records, which identifiers they get, and what becomes of the records.

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

// --- loose curves

TEST_F(Import, curvesAreRegisteredInStoredOrderWithNodeAndKeys) {
    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F, 2.0F}));
    attachment(node)->addCurve(curveRecord(NullFC, "translateY", {3.0F}));
    I::loadCurvesFromAnimAttachment(node, &manager(), false);
    ASSERT_THAT(*manager().getAnimCurves(), SizeIs(2));
    EXPECT_EQ(curve(0)->getAnimatedAttribute(), "translateX");
    EXPECT_EQ(curve(0)->getAppropriateNode(), node);
    ASSERT_THAT(curve(0)->getCPs(), SizeIs(2));
    const kvControlPoint& key = curve(0)->getCPs()[1];
    EXPECT_EQ(key.getPoint().x, 2.0);
    EXPECT_EQ(key.getPoint().y, 20.0);
    EXPECT_EQ(key.getInTangent().x, 1.0);
    EXPECT_EQ(key.getOutTangent().x, 3.0);
    EXPECT_EQ(key.getTangentType(), 6);
    EXPECT_EQ(curve(1)->getAppropriateNode(), NullFC);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 0U) << "reading consumes";
}

TEST_F(Import, loadingTwiceLoadsOnce) {
    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F}));
    attachment(node)->addBlock(blockRecord(node, "b"));
    osg::AnimationClipPtr record;
    clipWithTrack(record);
    for (int i = 0; i < 2; ++i) {
        I::loadCurvesFromAnimAttachment(node, &manager(), false);
        I::loadBlocksFromAnimAttachment(node, &manager(), false);
        I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    }
    EXPECT_THAT(*manager().getAnimCurves(), SizeIs(1));
    EXPECT_THAT(*manager().getBlocks(), SizeIs(1));
    EXPECT_THAT(*manager().getClips(), SizeIs(1));
}

TEST_F(Import, eachReaderEmptiesItsOwnListOnly) {
    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F}));
    attachment(node)->addBlock(blockRecord(node, "b"));
    osg::AnimationClipPtr record;
    clipWithTrack(record);
    I::loadBlocksFromAnimAttachment(node, &manager(), false);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 0U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 1U);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 0U);
}

TEST_F(Import, withoutNodeManagerOrAttachmentNothingHappens) {
    I::loadCurvesFromAnimAttachment(NullFC, &manager(), false);
    I::loadBlocksFromAnimAttachment(node, &manager(), true);
    I::loadClipsFromAnimAttachment(node, &manager(), node, false);
    I::importAnimationAttachment(NullFC, &manager());
    I::importAnimationAttachment(node, &manager());
    EXPECT_THAT(I::getBlocksFromAttachment(NullFC), IsEmpty());

    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F}));
    attachment(node)->addBlock(blockRecord(node, "b"));
    osg::AnimationClipPtr record;
    clipWithTrack(record);
    I::loadCurvesFromAnimAttachment(node, nullptr, false);
    I::loadBlocksFromAnimAttachment(node, nullptr, false);
    I::loadClipsFromAnimAttachment(node, nullptr, node, false);
    I::importAnimationAttachment(node, nullptr);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U) << "nothing was read, nothing lost";
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 1U);
}

TEST_F(Import, resolvingReadsFromTheTransformNode) {
    const osg::NodePtr child = makeGroup(node);
    attachment(node)->addCurve(curveRecord(child, "translateX", {1.0F}));
    I::loadCurvesFromAnimAttachment(child, &manager(), false);
    EXPECT_THAT(*manager().getAnimCurves(), IsEmpty());
    I::loadCurvesFromAnimAttachment(child, &manager(), true);
    ASSERT_THAT(*manager().getAnimCurves(), SizeIs(1));
    EXPECT_EQ(curve(0)->getAppropriateNode(), child);
}

TEST_F(Import, nullElementsAreSkipped) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    stored->getMFCurves()->push_back(NullFC);
    stored->getMFBlocks()->push_back(NullFC);
    stored->getMFClips()->push_back(NullFC);
    const osg::AnimationCurvePtr record = curveRecord(node, "translateX", {1.0F});
    record->getMFControlPoints()->push_back(NullFC);
    stored->addCurve(record);
    const osg::AnimationBlockPtr blockWithHole = blockRecord(node, "b");
    blockWithHole->getMFCurves()->push_back(NullFC);
    stored->addBlock(blockWithHole);
    osg::AnimationClipPtr clipRecord;
    const osg::AnimationTrackPtr track = clipWithTrack(clipRecord);
    track->getMFBlocks()->push_back(NullFC);
    track->getMFSequences()->push_back(NullFC);
    track->getMFClips()->push_back(NullFC);
    clipRecord->getMFBlocks()->push_back(NullFC);
    clipRecord->getMFSubclips()->push_back(NullFC);
    clipRecord->getMFTracks()->push_back(NullFC);
    I::importAnimationAttachment(node, &manager());
    I::loadCurvesFromAnimAttachment(node, &manager(), false);
    I::loadBlocksFromAnimAttachment(node, &manager(), false);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_THAT(*manager().getAnimCurves(), SizeIs(2));
    EXPECT_THAT(*manager().getBlocks(), SizeIs(2));
    ASSERT_THAT(*manager().getClips(), SizeIs(2));
    EXPECT_EQ(clip(1)->getTrackAmount(), 1);
}

// --- identifiers

TEST_F(Import, aLooseCurveDrawsOneIdentifier) {
    attachment(node)->addCurve(curveRecord(node, "translateX", {}));
    const std::vector<unsigned> draws = nextDraws(1);
    I::loadCurvesFromAnimAttachment(node, &manager(), false);
    EXPECT_EQ(curve(0)->getId(), draws[0]);
}

TEST_F(Import, aTopLevelBlockKeepsTheSecondIdentifierThatItDraws) {
    const osg::AnimationBlockPtr record = blockRecord(node, "b");
    record->addCurve(curveRecord(node, "translateX", {1.0F}));
    record->addCurve(curveRecord(node, "translateY", {1.0F}));
    attachment(node)->addBlock(record);
    const std::vector<unsigned> draws = nextDraws(5);
    I::loadBlocksFromAnimAttachment(node, &manager(), false);
    EXPECT_EQ(block(0)->getId(), draws[1]);
    EXPECT_EQ(block(0)->getBlockCurves()[0]->getId(), draws[2]);
    // One draw for the key of the first curve.
    EXPECT_EQ(block(0)->getBlockCurves()[1]->getId(), draws[4]);
}

TEST_F(Import, blocksForTheCallerDrawOneIdentifierEach) {
    attachment(node)->addBlock(blockRecord(node, "a"));
    attachment(node)->addBlock(blockRecord(node, "b"));
    const std::vector<unsigned> draws = nextDraws(2);
    const std::vector<kvAnimationBlock*> blocks = I::getBlocksFromAttachment(attachment(node));
    ASSERT_THAT(blocks, SizeIs(2));
    EXPECT_EQ(keep(blocks[0])->getId(), draws[0]);
    EXPECT_EQ(keep(blocks[1])->getId(), draws[1]);
}

TEST_F(Import, aClipKeepsTheThirdIdentifierAndItsItemsDrawTheirOwn) {
    osg::AnimationClipPtr record;
    const osg::AnimationTrackPtr track = clipWithTrack(record);
    track->addBlock(blockRecord(node, "b"));
    track->addSequence(sequenceRecord("s", 1.0F, 2.0F));
    const osg::AnimationClipPtr nested = osg::AnimationClipBase::create();
    track->addClip(nested);
    const std::vector<unsigned> draws = nextDraws(7);
    I::loadClipsFromAnimAttachment(node, &manager(), NullFC, false);
    EXPECT_EQ(clip(0)->getId(), draws[2]); // made, registered, renewed
    EXPECT_EQ(clip(0)->getTrack(0)->getBlocks()[0]->getId(), draws[3]);
    EXPECT_EQ(clip(0)->getTrack(0)->getSequences()[0]->getId(), draws[4]);
    EXPECT_EQ(clip(0)->getTrack(0)->getClips()[0]->getId(), draws[6]); // made, renewed
}

// --- blocks

TEST_F(Import, topLevelBlocksAreReadFieldByField) {
    const osg::AnimationBlockPtr record = blockRecord(node, "walk");
    record->setCamBlock(true);
    record->setAnimatedType(200);
    record->setFliped(true);
    record->setRepeated(true);
    record->setMotionBlur(true);
    record->setActivity(true);
    record->setStart(-1.0F); // not looked at
    record->setEnd(-2.0F);
    record->addCurve(curveRecord(node, "translateX", {10.0F, 20.0F}));
    record->addCurve(curveRecord(NullFC, "translateY", {5.0F, 15.0F}));
    attachment(node)->addBlock(record);
    attachment(node)->addBlock(blockRecord(NullFC, "homeless"));
    I::loadBlocksFromAnimAttachment(node, &manager(), false);
    ASSERT_THAT(*manager().getBlocks(), SizeIs(2));
    const kvAnimationBlock* const b = block(0);
    EXPECT_EQ(b->getBlockName(), "walk");
    EXPECT_EQ(b->getAppropriateNode(), node);
    EXPECT_TRUE(b->isCameraBlock());
    EXPECT_EQ(b->getAnimatedType(), 200);
    EXPECT_TRUE(b->getFliped());
    EXPECT_TRUE(b->getRepeat());
    EXPECT_TRUE(b->getMotionBlur());
    EXPECT_TRUE(b->getActive());
    EXPECT_EQ(b->getStartFrame(), 5.0F);
    EXPECT_EQ(b->getEndFrame(), 20.0F);
    ASSERT_THAT(b->getBlockCurves(), SizeIs(2));
    EXPECT_EQ(b->getBlockCurves()[0]->getAppropriateNode(), node) << "never re-targeted here";
    EXPECT_EQ(b->getBlockCurves()[1]->getAppropriateNode(), NullFC);
    EXPECT_EQ(b->getBlockCurves()[0]->getCPs()[0].getPoint().x, 10.0)
        << "the keys are not mirrored";

    EXPECT_EQ(block(1)->getBlockName(), "homeless") << "a null node is accepted at this level";
    EXPECT_FALSE(block(1)->getActive());
    EXPECT_EQ(block(1)->getStartFrame(), 99999.0F) << "no curves: the range of a new block";
}

TEST_F(Import, blocksForTheCallerAreNotRegistered) {
    const osg::AnimationBlockPtr record = blockRecord(node, "a");
    record->addCurve(curveRecord(node, "translateX", {10.0F, 20.0F}));
    attachment(node)->addBlock(record);
    attachment(node)->addBlock(blockRecord(NullFC, "b"));
    attachment(node)->addCurve(curveRecord(node, "loose", {1.0F}));
    const std::vector<kvAnimationBlock*> blocks = I::getBlocksFromAttachment(attachment(node));
    for (kvAnimationBlock* b : blocks)
        keep(b);
    EXPECT_THAT(names(blocks), ElementsAre("a", "b"));
    EXPECT_EQ(blocks[0]->getEndFrame(), 20.0F);
    EXPECT_THAT(*manager().getBlocks(), IsEmpty());
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 0U);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
}

TEST_F(Import, anAttachmentThatHangsNowhereSurvivesBeingRead) {
    osg::AnimationAttachmentPtr loose = osg::AnimationAttachmentBase::create();
    loose->addBlock(blockRecord(node, "a"));
    const osg::UInt32 id = osg::getContainerId(loose);
    for (kvAnimationBlock* b : I::getBlocksFromAttachment(loose))
        keep(b);
    EXPECT_NE(osg::FieldContainerFactory::the()->getContainer(id), NullFC);
    osg::addRefCP(loose);
    osg::subRefCP(loose);
}

TEST_F(Import, aNodeHeldOnlyByItsOwnRecordsGoesWithThem) {
    osg::NodePtr alone = osg::Node::create();
    const osg::UInt32 id = osg::getContainerId(alone);
    attachment(alone)->addCurve(curveRecord(alone, "translateX", {1.0F}));
    attachment(alone)->addCurve(curveRecord(node, "translateY", {1.0F}));
    I::loadCurvesFromAnimAttachment(alone, &manager(), false);
    ASSERT_THAT(*manager().getAnimCurves(), SizeIs(2));
    EXPECT_EQ(osg::FieldContainerFactory::the()->getContainer(id), NullFC);
    EXPECT_EQ(curve(0)->getAppropriateNode(), NullFC);
}

} // namespace
