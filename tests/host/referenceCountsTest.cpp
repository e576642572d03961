// Who counts references to what, in every situation in which a pointer gets into a field.
#include <OSGAnimationAttachment.h>

#include <OpenSG/OSGGroup.h>

#include "held.h"

#include <gtest/gtest.h>

using kvtest::idOf;
using kvtest::isAlive;
using kvtest::Made;
using osg::NullFC;

namespace {

const osg::UInt32 kFromAsciiReader = osg::ChangedOrigin::Abstract |
                                     osg::ChangedOrigin::AbstrIgnoreCore |
                                     osg::ChangedOrigin::AbstrIgnoreChild;
const osg::UInt32 kFromBinReader =
    osg::ChangedOrigin::Abstract | osg::ChangedOrigin::AbstrIncRefCount;

TEST(ReferenceCounts, aNewContainerHasNone) {
    osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
    EXPECT_EQ(curve.getRefCount(), 0);
    osg::addRefCP(curve);
    osg::subRefCP(curve);
    EXPECT_TRUE(curve == NullFC);
}

TEST(ReferenceCounts, aSetterCountsTheNewNodeAndReleasesTheOld) {
    const Made<osg::Node> a, b;
    const Made<osg::AnimationBlock> block;
    block->setAppropriateNode(a);
    EXPECT_EQ(a.get().getRefCount(), 2);
    block->setAppropriateNode(b);
    EXPECT_EQ(a.get().getRefCount(), 1);
    EXPECT_EQ(b.get().getRefCount(), 2);
    block->setAppropriateNode(b);
    EXPECT_EQ(b.get().getRefCount(), 2);
    block->setAppropriateNode(NullFC);
    EXPECT_EQ(b.get().getRefCount(), 1);
}

TEST(ReferenceCounts, settingTheOnlyHolderAgainKeepsTheNodeAlive) {
    const Made<osg::AnimationBlock> block;
    block->setAppropriateNode(osg::Node::create());
    const osg::UInt32 id = idOf(block->getAppropriateNode());
    block->setAppropriateNode(block->getAppropriateNode());
    ASSERT_TRUE(isAlive(id));
    EXPECT_EQ(block->getAppropriateNode().getRefCount(), 1);
}

TEST(ReferenceCounts, bothNodesOfACurveCount) {
    const Made<osg::Node> node;
    const Made<osg::AnimationCurve> curve;
    curve->setAppropriateNode(node);
    curve->setAFAppNode(node);
    EXPECT_EQ(node.get().getRefCount(), 3);
}

TEST(ReferenceCounts, settingWithoutCountingOnlyStores) {
    const Made<osg::Node> a, b;
    const Made<osg::AnimationCurve> curve;
    curve->setAppropriateNode(a);
    curve->setAppropriateNodeNoRefCount(b);
    EXPECT_EQ(a.get().getRefCount(), 2);
    EXPECT_EQ(b.get().getRefCount(), 1);
    // The caller settles both counts.
    osg::addRefCP(b.get());
    osg::NodePtr released = a;
    osg::subRefCP(released);
    EXPECT_TRUE(curve->getAppropriateNode() == b.get());
}

TEST(ReferenceCounts, addingAndRemovingCount) {
    const Made<osg::AnimationAttachment> attachment;
    const Made<osg::AnimationCurve> curve;
    const Made<osg::AnimationBlock> block;
    const Made<osg::AnimationClip> clip;
    attachment->addCurve(curve);
    attachment->addBlock(block);
    attachment->addClip(clip);
    EXPECT_EQ(curve.get().getRefCount(), 2);
    EXPECT_EQ(block.get().getRefCount(), 2);
    EXPECT_EQ(clip.get().getRefCount(), 2);
    EXPECT_TRUE(attachment->subCurve(curve.get()));
    attachment->clearBlocks();
    attachment->clearClips();
    EXPECT_EQ(curve.get().getRefCount(), 1);
    EXPECT_EQ(block.get().getRefCount(), 1);
    EXPECT_EQ(clip.get().getRefCount(), 1);
}

TEST(ReferenceCounts, plainElementListsCountToo) {
    const Made<osg::AnimationTrack> track;
    const Made<osg::AnimationClip> outer, inner;
    track->addClip(inner.get());
    outer->addSubclip(inner.get());
    outer->addTrack(track);
    track->addSequence(osg::AnimationBlock::create());
    EXPECT_EQ(inner.get().getRefCount(), 3);
    EXPECT_EQ(track.get().getRefCount(), 2);
    EXPECT_EQ(track->getSequences(0).getRefCount(), 1);
    outer->clearSubclips();
    track->clearClips();
    EXPECT_EQ(inner.get().getRefCount(), 1);
}

TEST(ReferenceCounts, clearEmptiesAllListsOfAnAttachment) {
    const Made<osg::AnimationAttachment> attachment;
    attachment->addCurve(osg::AnimationCurve::create());
    attachment->addBlock(osg::AnimationBlock::create());
    attachment->addClip(osg::AnimationClip::create());
    const osg::UInt32 curve = idOf(attachment->getCurves(0));
    const osg::UInt32 block = idOf(attachment->getBlocks(0));
    const osg::UInt32 clip = idOf(attachment->getClips(0));
    attachment->clear();
    EXPECT_EQ(attachment->getCurves().getSize(), 0u);
    EXPECT_EQ(attachment->getBlocks().getSize(), 0u);
    EXPECT_EQ(attachment->getClips().getSize(), 0u);
    EXPECT_FALSE(isAlive(curve));
    EXPECT_FALSE(isAlive(block));
    EXPECT_FALSE(isAlive(clip));
}

TEST(ReferenceCounts, destroyingReleasesEverythingBelow) {
    Made<osg::Node> node;
    osg::UInt32 ids[5];
    {
        const osg::AnimationClipPtr clip = osg::AnimationClip::create();
        const osg::AnimationTrackPtr track = osg::AnimationTrack::create();
        const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
        const osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
        const osg::AnimationControlPointPtr point = osg::AnimationControlPoint::create();
        const osg::UInt32 made[] = {idOf(clip), idOf(track), idOf(block), idOf(curve), idOf(point)};
        std::copy(made, made + 5, ids);
        const kvtest::Held<osg::AnimationClipPtr> held(clip);
        clip->addTrack(track);
        track->addBlock(block);
        block->addCurve(curve);
        block->setAppropriateNode(node);
        curve->addCurvePoint(point);
        curve->setAppropriateNode(node);
        curve->setAFAppNode(node);
        EXPECT_EQ(node.get().getRefCount(), 4);
        for (const osg::UInt32 id : ids)
            EXPECT_TRUE(isAlive(id));
    }
    for (const osg::UInt32 id : ids)
        EXPECT_FALSE(isAlive(id));
    EXPECT_EQ(node.get().getRefCount(), 1);
}

TEST(ReferenceCounts, whatTheAsciiReaderFillsIsCountedWhenItsEditEnds) {
    const Made<osg::Node> node;
    const Made<osg::AnimationCurve> curve;
    const Made<osg::AnimationBlock> block;
    block->getSFAppropriateNode()->setValue(node);
    block->getMFCurves()->push_back(curve);
    EXPECT_EQ(node.get().getRefCount(), 1);
    EXPECT_EQ(curve.get().getRefCount(), 1);
    osg::endEditCP(block.get(), osg::FieldBits::AllFields, kFromAsciiReader);
    EXPECT_EQ(node.get().getRefCount(), 2);
    EXPECT_EQ(curve.get().getRefCount(), 2);
}

TEST(ReferenceCounts, onlyTheFieldsOfTheEditAreCounted) {
    const Made<osg::Node> node;
    const Made<osg::AnimationCurve> curve;
    const Made<osg::AnimationBlock> block;
    block->getSFAppropriateNode()->setValue(node);
    block->getMFCurves()->push_back(curve);
    osg::endEditCP(block.get(), osg::AnimationBlock::CurvesFieldMask, kFromBinReader);
    EXPECT_EQ(node.get().getRefCount(), 1);
    EXPECT_EQ(curve.get().getRefCount(), 2);
    block->setAppropriateNodeNoRefCount(NullFC);
}

TEST(ReferenceCounts, aReaderThatCountsForItselfIsNotCountedAgain) {
    const Made<osg::Node> node;
    const Made<osg::AnimationBlock> block;
    block->getSFAppropriateNode()->setValue(node);
    osg::addRefCP(node.get());
    osg::endEditCP(block.get(), osg::FieldBits::AllFields, osg::ChangedOrigin::External);
    EXPECT_EQ(node.get().getRefCount(), 2);
}

TEST(ReferenceCounts, nullElementsThatAReaderLeftAreSurvived) {
    const Made<osg::AnimationBlock> block;
    block->getMFCurves()->push_back(NullFC);
    osg::endEditCP(block.get(), osg::FieldBits::AllFields, kFromAsciiReader);
    EXPECT_EQ(block->getCurves().getSize(), 1u);
    block->clearCurves();
    EXPECT_EQ(block->getCurves().getSize(), 0u);
}

TEST(ReferenceCounts, aCopyCountsOnce) {
    const Made<osg::Node> node;
    const Made<osg::AnimationCurve> curve;
    {
        const Made<osg::AnimationBlock> block;
        block->setName("walk");
        block->setAppropriateNode(node);
        block->addCurve(curve);
        const kvtest::Held<osg::AnimationBlockPtr> copy(
            osg::AnimationBlockPtr::dcast(block->shallowCopy()));
        ASSERT_TRUE(copy.get() != NullFC);
        EXPECT_EQ(copy->getName(), "walk");
        EXPECT_TRUE(copy->getAppropriateNode() == node.get());
        EXPECT_TRUE(copy->getCurves(0) == curve.get());
        EXPECT_EQ(node.get().getRefCount(), 3);
        EXPECT_EQ(curve.get().getRefCount(), 3);
    }
    EXPECT_EQ(node.get().getRefCount(), 1);
    EXPECT_EQ(curve.get().getRefCount(), 1);
}

TEST(ReferenceCounts, clipsNestedVeryDeepAreDestroyed) {
    osg::UInt32 innermost = 0;
    {
        osg::AnimationClipPtr clip = osg::AnimationClip::create();
        innermost = idOf(clip);
        for (int i = 0; i < 100000; ++i) {
            const osg::AnimationTrackPtr track = osg::AnimationTrack::create();
            track->addClip(clip);
            clip = osg::AnimationClip::create();
            clip->addTrack(track);
        }
        const kvtest::Held<osg::AnimationClipPtr> held(clip);
        EXPECT_TRUE(isAlive(innermost));
    }
    EXPECT_FALSE(isAlive(innermost));
}

/// A node that carries a curve which names that node: a cycle.
osg::NodePtr makeCycle() {
    const osg::NodePtr node = osg::Node::create();
    const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
    const osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
    node->addAttachment(attachment);
    attachment->addCurve(curve);
    curve->setAppropriateNode(node);
    return node;
}

osg::AnimationAttachmentPtr attachmentOf(const osg::NodePtr& node) {
    return osg::AnimationAttachmentPtr::dcast(
        node->findAttachment(osg::AnimationAttachment::getClassType().getGroupId()));
}

TEST(ReferenceCounts, aNodeNamedByItsOwnCurveLivesUntilTheListIsCleared) {
    osg::NodePtr node = makeCycle();
    const osg::UInt32 id = idOf(node);
    {
        const kvtest::Held<osg::NodePtr> held(node);
        EXPECT_EQ(node.getRefCount(), 2);
    }
    ASSERT_TRUE(isAlive(id));
    // The list holds the curve, the curve the node, the node the attachment with the list: all of
    // it goes while the list is being cleared.
    attachmentOf(node)->clearCurves();
    EXPECT_FALSE(isAlive(id));
}

TEST(ReferenceCounts, clearSurvivesTheEndOfItsOwnNode) {
    const osg::NodePtr node = makeCycle();
    const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
    block->setAppropriateNode(node);
    attachmentOf(node)->addBlock(block);
    const osg::UInt32 ids[] = {idOf(node), idOf(block), idOf(attachmentOf(node))};
    attachmentOf(node)->clear();
    for (const osg::UInt32 id : ids)
        EXPECT_FALSE(isAlive(id));
}

TEST(ReferenceCounts, anAttachmentEndsWithItsNode) {
    osg::UInt32 ids[2];
    {
        const Made<osg::Node> node;
        const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
        const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
        ids[0] = idOf(attachment);
        ids[1] = idOf(block);
        node->addAttachment(attachment);
        attachment->addBlock(block);
        EXPECT_EQ(attachment.getRefCount(), 1);
    }
    EXPECT_FALSE(isAlive(ids[0]));
    EXPECT_FALSE(isAlive(ids[1]));
}

} // namespace
