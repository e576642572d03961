// Upkeep of stored records: what is taken out, what is emptied, what is shared, and who counts.

#include "persistence/persistenceFixture.h"

#include <OpenSG/OSGFieldContainerFactory.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using osg::NullFC;

class Maintenance : public kv::test::PersistenceFixture {
  protected:
    using I = kvAnimationAttachmentInteraction;

    static bool lives(osg::UInt32 id) {
        return osg::FieldContainerFactory::the()->getContainer(id) != NullFC;
    }

    static osg::AnimationClipPtr clipRecord(const std::string& name) {
        const osg::AnimationClipPtr record = osg::AnimationClipBase::create();
        record->setName(name);
        return record;
    }
};

// --- removal

TEST_F(Maintenance, removingACurveTakesTheFirstOfItsAttributeOnly) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    for (const char* attribute : {"translateY", "translateX", "translateX", "translatex"}) {
        stored->addCurve(curveRecord(node, attribute, {1.0F}));
    }
    const osg::UInt32 first = osg::getContainerId(stored->getCurves(1));
    const osg::UInt32 second = osg::getContainerId(stored->getCurves(2));
    I::subFromAnimationAttachment(node, keep(new kvAnimationCurve("translateX")), false);
    ASSERT_EQ(stored->getMFCurves()->getSize(), 3U);
    EXPECT_EQ(stored->getCurves(0)->getBelongs2Attribute(), "translateY");
    EXPECT_EQ(osg::getContainerId(stored->getCurves(1)), second);
    EXPECT_EQ(stored->getCurves(2)->getBelongs2Attribute(), "translatex");
    EXPECT_FALSE(lives(first)) << "the list held the only reference";
}

TEST_F(Maintenance, curvesOfBlocksAreNotRemoved) {
    const osg::AnimationBlockPtr block = blockRecord(node, "b");
    block->addCurve(curveRecord(node, "translateX", {1.0F}));
    attachment(node)->addBlock(block);
    I::subFromAnimationAttachment(node, keep(new kvAnimationCurve("translateX")), false);
    EXPECT_EQ(block->getMFCurves()->getSize(), 1U);
}

TEST_F(Maintenance, removingABlockTakesTheFirstOfItsNameOnly) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    for (const char* name : {"a", "b", "b"})
        stored->addBlock(blockRecord(node, name));
    const osg::UInt32 second = osg::getContainerId(stored->getBlocks(2));
    I::subBlockFromAnimAttachment(node, keep(new kvAnimationBlock("b")), false);
    ASSERT_EQ(stored->getMFBlocks()->getSize(), 2U);
    EXPECT_EQ(stored->getBlocks(0)->getName(), "a");
    EXPECT_EQ(osg::getContainerId(stored->getBlocks(1)), second);
}

TEST_F(Maintenance, removingAClipTakesTheFirstOfItsNameOnly) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    for (const char* name : {"a", "b", "b"})
        stored->addClip(clipRecord(name));
    I::subClipFromAnimAttachment(node, keep(new kvAnimationClip("b")), false);
    ASSERT_EQ(stored->getMFClips()->getSize(), 2U);
    EXPECT_EQ(stored->getClips(0)->getName(), "a");
    EXPECT_EQ(stored->getClips(1)->getName(), "b");
}

TEST_F(Maintenance, removingWhatWasNeverStoredChangesNothing) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    stored->addCurve(curveRecord(node, "a", {1.0F}));
    stored->addBlock(blockRecord(node, "a"));
    stored->addClip(clipRecord("a"));
    I::subFromAnimationAttachment(node, keep(new kvAnimationCurve("x")), false);
    I::subBlockFromAnimAttachment(node, keep(new kvAnimationBlock("x")), false);
    I::subClipFromAnimAttachment(node, keep(new kvAnimationClip("x")), false);
    I::subFromAnimationAttachment(node, nullptr, false);
    I::subBlockFromAnimAttachment(node, nullptr, false);
    I::subClipFromAnimAttachment(node, nullptr, false);
    I::subFromAnimationAttachment(NullFC, keep(new kvAnimationCurve("a")), false);
    EXPECT_EQ(stored->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(stored->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(stored->getMFClips()->getSize(), 1U);
}

TEST_F(Maintenance, removalWithoutAttachmentMakesNone) {
    I::subFromAnimationAttachment(node, keep(new kvAnimationCurve("a")), false);
    I::cleanAnimationAttachment(node, false);
    I::eraseExistingAttachmentClips(node);
    EXPECT_EQ(I::getAnimationAttachment(node, false), NullFC);
}

TEST_F(Maintenance, removalResolvesTheTransformNodeOnDemand) {
    const osg::NodePtr child = makeGroup(node);
    attachment(node)->addBlock(blockRecord(child, "b"));
    kvAnimationBlock* const block = keep(new kvAnimationBlock("b"));
    I::subBlockFromAnimAttachment(child, block, false);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 1U);
    I::subBlockFromAnimAttachment(child, block, true);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 0U);
}

TEST_F(Maintenance, removedRecordsThatSomeoneHoldsLiveOn) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    osg::AnimationBlockPtr held = blockRecord(node, "b");
    osg::addRefCP(held);
    stored->addBlock(held);
    EXPECT_EQ(held.getRefCount(), 2);
    I::subBlockFromAnimAttachment(node, keep(new kvAnimationBlock("b")), false);
    EXPECT_EQ(held.getRefCount(), 1);
    osg::subRefCP(held);
}

TEST_F(Maintenance, removingTheRecordThatHeldItsOwnNodeIsSafe) {
    osg::NodePtr alone = osg::Node::create();
    const osg::UInt32 id = osg::getContainerId(alone);
    attachment(alone)->addCurve(curveRecord(alone, "translateX", {1.0F}));
    I::subFromAnimationAttachment(alone, keep(new kvAnimationCurve("translateX")), false);
    EXPECT_FALSE(lives(id));

    alone = osg::Node::create();
    attachment(alone)->addBlock(blockRecord(alone, "b"));
    attachment(alone)->addClip(clipRecord("c"));
    I::cleanAnimationAttachment(alone, false);

    alone = osg::Node::create();
    attachment(alone)->addCurve(curveRecord(alone, "translateX", {1.0F}));
    kvAnimationCurve* const again = keep(makeCurve(node, "translateX", {1.0F, 2.0F}));
    I::addToAnimationAttachment(alone, again, false); // replaces what held the node
}

// --- emptying

TEST_F(Maintenance, cleaningEmptiesAllThreeListsAndKeepsTheAttachment) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    stored->addCurve(curveRecord(node, "a", {1.0F}));
    stored->addBlock(blockRecord(node, "a"));
    stored->addClip(clipRecord("a"));
    const osg::NodePtr child = makeGroup(node);
    I::cleanAnimationAttachment(child, false);
    EXPECT_EQ(stored->getMFClips()->getSize(), 1U);
    I::cleanAnimationAttachment(child, true);
    EXPECT_EQ(stored->getMFCurves()->getSize(), 0U);
    EXPECT_EQ(stored->getMFBlocks()->getSize(), 0U);
    EXPECT_EQ(stored->getMFClips()->getSize(), 0U);
    EXPECT_EQ(I::getAnimationAttachment(node, false), stored);
}

TEST_F(Maintenance, erasingClipsNeverLooksAtTheTransformParent) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    stored->addClip(clipRecord("a"));
    stored->addBlock(blockRecord(node, "b"));
    const osg::NodePtr child = makeGroup(node);
    I::eraseExistingAttachmentClips(child);
    EXPECT_EQ(stored->getMFClips()->getSize(), 1U);
    I::eraseExistingAttachmentClips(NullFC);
    I::eraseExistingAttachmentClips(node);
    EXPECT_EQ(stored->getMFClips()->getSize(), 0U);
    EXPECT_EQ(stored->getMFBlocks()->getSize(), 1U);
}

// --- transfers

TEST_F(Maintenance, transferredCurvesAreSharedAndCountTheirNewNode) {
    const osg::NodePtr to = makeTransform();
    attachment(node)->addCurve(curveRecord(node, "a", {1.0F}));
    attachment(node)->addCurve(curveRecord(NullFC, "b", {1.0F}));
    const osg::Int32 nodeCount = node.getRefCount();
    const osg::Int32 toCount = to.getRefCount();
    I::transferCurves(node, to);
    const osg::AnimationAttachmentPtr source = attachment(node);
    const osg::AnimationAttachmentPtr target = attachment(to);
    ASSERT_EQ(source->getMFCurves()->getSize(), 2U) << "the source keeps its list";
    ASSERT_EQ(target->getMFCurves()->getSize(), 2U);
    for (osg::UInt32 i = 0; i < 2; ++i) {
        EXPECT_EQ(source->getCurves(i), target->getCurves(i));
        EXPECT_EQ(target->getCurves(i)->getAppropriateNode(), to);
        EXPECT_EQ(target->getCurves(i).getRefCount(), 2);
    }
    EXPECT_EQ(to.getRefCount(), toCount + 2);
    EXPECT_EQ(node.getRefCount(), nodeCount) << "the former node's reference is not given back";

    I::cleanAnimationAttachment(to, false);
    EXPECT_EQ(to.getRefCount(), toCount + 2) << "the records still live in the source";
    I::cleanAnimationAttachment(node, false);
    EXPECT_EQ(to.getRefCount(), toCount);
    osg::NodePtr surplus = node;
    osg::subRefCP(surplus); // the reference that was left over
}

TEST_F(Maintenance, transferredBlocksTakeTheirCurvesAlong) {
    const osg::NodePtr to = makeTransform();
    const osg::AnimationBlockPtr block = blockRecord(NullFC, "b");
    block->addCurve(curveRecord(NullFC, "x", {1.0F}));
    block->addCurve(curveRecord(NullFC, "y", {1.0F}));
    attachment(node)->addBlock(block);
    const osg::Int32 toCount = to.getRefCount();
    I::transferBlocks(node, to);
    ASSERT_EQ(attachment(to)->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(attachment(to)->getBlocks(0), block);
    EXPECT_EQ(block->getAppropriateNode(), to);
    EXPECT_EQ(block->getCurves(0)->getAppropriateNode(), to);
    EXPECT_EQ(block->getCurves(1)->getAppropriateNode(), to);
    EXPECT_EQ(to.getRefCount(), toCount + 3);
    EXPECT_EQ(block.getRefCount(), 2);
    EXPECT_EQ(attachment(to)->getMFCurves()->getSize(), 0U);
}

TEST_F(Maintenance, transferredClipsStayAsTheyAre) {
    const osg::NodePtr to = makeTransform();
    const osg::AnimationClipPtr clip = clipRecord("c");
    const osg::AnimationTrackPtr track = osg::AnimationTrackBase::create();
    track->addBlock(blockRecord(node, "b"));
    clip->addTrack(track);
    attachment(node)->addClip(clip);
    const osg::Int32 toCount = to.getRefCount();
    I::transferClips(node, to);
    ASSERT_EQ(attachment(to)->getMFClips()->getSize(), 1U);
    EXPECT_EQ(attachment(to)->getClips(0), clip);
    EXPECT_EQ(clip.getRefCount(), 2);
    EXPECT_EQ(track->getBlocks(0)->getAppropriateNode(), node);
    EXPECT_EQ(to.getRefCount(), toCount);
}

TEST_F(Maintenance, transfersAddBehindWhatTheTargetHolds) {
    const osg::NodePtr to = makeTransform();
    attachment(to)->addCurve(curveRecord(NullFC, "first", {}));
    attachment(node)->addCurve(curveRecord(NullFC, "second", {}));
    I::transferCurves(node, to);
    ASSERT_EQ(attachment(to)->getMFCurves()->getSize(), 2U);
    EXPECT_EQ(attachment(to)->getCurves(1)->getBelongs2Attribute(), "second");
}

TEST_F(Maintenance, transfersFromOrToNullDoNothing) {
    attachment(node)->addCurve(curveRecord(NullFC, "a", {}));
    attachment(node)->addBlock(blockRecord(NullFC, "a"));
    attachment(node)->addClip(clipRecord("a"));
    for (const auto transfer : {&I::transferCurves, &I::transferBlocks, &I::transferClips}) {
        transfer(node, NullFC);
        transfer(NullFC, node);
        transfer(NullFC, NullFC);
    }
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getCurves(0)->getAppropriateNode(), NullFC);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 1U);
}

TEST_F(Maintenance, transfersFromANodeWithoutAttachmentMakeNoneOnTheTarget) {
    const osg::NodePtr to = makeTransform();
    I::transferCurves(node, to);
    I::transferBlocks(node, to);
    I::transferClips(node, to);
    EXPECT_EQ(I::getAnimationAttachment(to, false), NullFC);
}

TEST_F(Maintenance, transfersUseTheNodesThemselves) {
    const osg::NodePtr child = makeGroup(node);
    const osg::NodePtr to = makeTransform();
    attachment(node)->addCurve(curveRecord(NullFC, "a", {}));
    I::transferCurves(child, to);
    EXPECT_EQ(I::getAnimationAttachment(to, false), NullFC);
    I::transferCurves(node, child);
    EXPECT_NE(I::getAnimationAttachment(child, false), NullFC);
}

TEST_F(Maintenance, aTransferOntoTheSameNodeDoublesItsListOnce) {
    attachment(node)->addCurve(curveRecord(NullFC, "a", {}));
    attachment(node)->addBlock(blockRecord(NullFC, "a"));
    attachment(node)->addClip(clipRecord("a"));
    I::transferCurves(node, node);
    I::transferBlocks(node, node);
    I::transferClips(node, node);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 2U);
    EXPECT_EQ(attachment(node)->getMFBlocks()->getSize(), 2U);
    EXPECT_EQ(attachment(node)->getMFClips()->getSize(), 2U);
}

} // namespace
