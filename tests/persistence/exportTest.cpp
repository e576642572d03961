// Writing: which record is written where, and every field of it.

#include "persistence/persistenceFixture.h"
#include "support/access/kvAnimationAttachmentInteraction.h"

#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Access = kvTestAccess<kvAnimationAttachmentInteraction>;
using osg::NullFC;

class Export : public kv::test::PersistenceFixture {
  protected:
    using I = kvAnimationAttachmentInteraction;
};

// --- the attachment

TEST_F(Export, newAttachmentIsMadeOnceAndFoundAgain) {
    EXPECT_EQ(I::getAnimationAttachment(node, false), NullFC);
    I::createNewAnimationAttachment(node, false);
    const osg::AnimationAttachmentPtr made = I::getAnimationAttachment(node, false);
    ASSERT_NE(made, NullFC);
    EXPECT_EQ(made.getRefCount(), 1);
    I::createNewAnimationAttachment(node, false);
    EXPECT_EQ(I::getAnimationAttachment(node, false), made);
}

TEST_F(Export, nullNodesHaveNoAttachmentAndGetNone) {
    for (const bool resolve : {false, true}) {
        I::createNewAnimationAttachment(NullFC, resolve);
        EXPECT_EQ(I::getAnimationAttachment(NullFC, resolve), NullFC);
    }
}

TEST_F(Export, otherAttachmentsDoNotCount) {
    osg::setName(node, "named");
    EXPECT_EQ(I::getAnimationAttachment(node, false), NullFC);
}

TEST_F(Export, resolvingGoesToTheTransformOneLevelUpAtMost) {
    const osg::NodePtr child = makeGroup(node);
    const osg::NodePtr grandchild = makeGroup(child);
    EXPECT_EQ(Access::resolveTransformNode(node), node);
    EXPECT_EQ(Access::resolveTransformNode(child), node);
    EXPECT_EQ(Access::resolveTransformNode(grandchild), NullFC);
    EXPECT_EQ(Access::resolveTransformNode(NullFC), NullFC);

    I::createNewAnimationAttachment(grandchild, true);
    EXPECT_EQ(I::getAnimationAttachment(grandchild, false), NullFC);
    I::createNewAnimationAttachment(child, true);
    EXPECT_EQ(I::getAnimationAttachment(child, false), NullFC);
    EXPECT_NE(I::getAnimationAttachment(node, false), NullFC);
    EXPECT_EQ(I::getAnimationAttachment(child, true), I::getAnimationAttachment(node, false));

    kvAnimationCurve* const curve = keep(makeCurve(child, "translateX", {1.0F}));
    I::addToAnimationAttachment(grandchild, curve, true);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 0U);
    I::addToAnimationAttachment(child, curve, true);
    EXPECT_EQ(attachment(node)->getMFCurves()->getSize(), 1U);
}

TEST_F(Export, withoutAnAttachmentNothingIsStored) {
    I::addToAnimationAttachment(node, keep(makeCurve(node, "a", {1.0F})), false);
    I::addBlockToAnimAttachment(node, keep(makeBlock(node, "b", {1.0F})), false);
    I::addClipToAnimAttachment(node, keep(new kvAnimationClip("c")), false);
    EXPECT_EQ(I::getAnimationAttachment(node, false), NullFC);
}

TEST_F(Export, nullObjectsAreNotStored) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    I::addToAnimationAttachment(node, nullptr, false);
    I::addBlockToAnimAttachment(node, nullptr, false);
    I::addClipToAnimAttachment(node, nullptr, false);
    I::addToAnimationAttachment(NullFC, keep(makeCurve(node, "a", {1.0F})), false);
    EXPECT_EQ(stored->getMFCurves()->getSize(), 0U);
    EXPECT_EQ(stored->getMFBlocks()->getSize(), 0U);
    EXPECT_EQ(stored->getMFClips()->getSize(), 0U);
}

// --- curves

TEST_F(Export, savingACurveTwiceLeavesOneCopy) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationCurve* const curve = keep(makeCurve(node, "translateX", {1.0F}));
    I::addToAnimationAttachment(node, curve, false);
    curve->insertCP(5.0, 6.0);
    I::addToAnimationAttachment(node, curve, false);
    ASSERT_EQ(stored->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(stored->getCurves(0)->getMFControlPoints()->getSize(), 2U);
    EXPECT_EQ(stored->getCurves(0).getRefCount(), 1);
}

TEST_F(Export, aCurveWithoutKeysRemovesItsOlderCopyAndLeavesNone) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationCurve* const curve = keep(makeCurve(node, "translateX", {1.0F}));
    kvAnimationCurve* const other = keep(makeCurve(node, "translateY", {1.0F}));
    I::addToAnimationAttachment(node, curve, false);
    I::addToAnimationAttachment(node, other, false);
    curve->deleteExistingKey(1.0);
    I::addToAnimationAttachment(node, curve, false);
    ASSERT_EQ(stored->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(stored->getCurves(0)->getBelongs2Attribute(), "translateY");
}

TEST_F(Export, aCurveIsStoredFieldByField) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationCurve* const curve = keep(new kvAnimationCurve("rotateZ"));
    curve->setAppropriateNode(node);
    curve->setId(77);
    kvAnimationUtils2::AnimationField field;
    field.node = node;
    field.fcId = osg::getContainerId(node->getCore());
    field.fieldName = "name";
    field.globalFieldName = "global";
    field.value = 0.1F;
    field.valuePosition = 65535;
    field.dirty = false;
    curve->setAnimationField(field);
    curve->importControlPoint(1.5F, 0.1F, 1.0F, 0.2F, 2.0F, 0.3F, 6);
    curve->importControlPoint(9.5F, 1.1F, 9.0F, 1.2F, 10.0F, 1.3F, 6);

    I::addToAnimationAttachment(node, curve, false);
    const osg::AnimationCurvePtr record = stored->getCurves(0);
    EXPECT_EQ(record->getBelongs2Attribute(), "rotateZ");
    EXPECT_EQ(record->getId(), 77U);
    EXPECT_EQ(record->getAppropriateNode(), node);
    EXPECT_EQ(record->getAFAppNode(), node);
    EXPECT_EQ(record->getAFFcId(), field.fcId);
    EXPECT_EQ(record->getAFFieldName(), "name");
    EXPECT_EQ(record->getAFGlobalFieldName(), "global");
    EXPECT_EQ(record->getAFValue(), 0.1F);
    EXPECT_EQ(record->getAFValuePosition(), 65535);
    EXPECT_FALSE(record->getAFDirty());
    ASSERT_EQ(record->getMFControlPoints()->getSize(), 2U);
    const osg::AnimationControlPointPtr first = record->getControlPoints(0);
    EXPECT_EQ(first->getControlPoint()[0], 1.5F);
    EXPECT_EQ(first->getControlPoint()[1], 0.1F);
    EXPECT_EQ(first->getInTangent()[0], 1.0F);
    EXPECT_EQ(first->getInTangent()[1], 0.2F);
    EXPECT_EQ(first->getOutTangent()[0], 2.0F);
    EXPECT_EQ(first->getOutTangent()[1], 0.3F);
    EXPECT_EQ(first->getTangentType(), 6);
    EXPECT_EQ(first.getRefCount(), 1);
    EXPECT_EQ(record->getControlPoints(1)->getControlPoint()[0], 9.5F);
}

TEST_F(Export, keysAreRoundedToSinglePrecision) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationCurve* const curve = keep(new kvAnimationCurve("a"));
    curve->insertCP(0.1, 0.2);
    curve->getCPs()[0].setTangentType(3);
    I::addToAnimationAttachment(node, curve, false);
    const osg::AnimationControlPointPtr key = stored->getCurves(0)->getControlPoints(0);
    EXPECT_EQ(key->getControlPoint()[0], 0.1F);
    EXPECT_EQ(key->getControlPoint()[1], 0.2F);
    EXPECT_EQ(key->getTangentType(), 3);
}

TEST_F(Export, aCurveWhoseNodeIsGoneIsStoredWithoutNode) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    osg::NodePtr gone = osg::Node::create();
    osg::addRefCP(gone);
    kvAnimationCurve* const curve = keep(makeCurve(gone, "translateX", {1.0F}));
    kvAnimationUtils2::AnimationField field;
    field.node = gone;
    curve->setAnimationField(field);
    osg::subRefCP(gone);
    I::addToAnimationAttachment(node, curve, false);
    ASSERT_EQ(stored->getMFCurves()->getSize(), 1U);
    EXPECT_EQ(stored->getCurves(0)->getAppropriateNode(), NullFC);
    EXPECT_EQ(stored->getCurves(0)->getAFAppNode(), NullFC) << "a stale pointer is not followed";
}

TEST_F(Export, aCurveOnSomethingThatIsNoNodeIsStoredWithoutNode) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationCurve* const curve = keep(makeCurve(NullFC, "translateX", {1.0F}));
    I::addToAnimationAttachment(node, curve, false);
    EXPECT_EQ(stored->getCurves(0)->getAppropriateNode(), NullFC);
}

TEST_F(Export, theNodeOfABindingIsStoredWhenItIsCertainToLive) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    const osg::NodePtr child = makeGroup(node);
    const osg::NodePtr far = makeTransform();
    const auto boundNodeOf = [&](const osg::NodePtr& own, const osg::NodePtr& bound,
                                 std::uint32_t fcId) {
        kvAnimationCurve* const curve = keep(makeCurve(own, "a", {1.0F}));
        kvAnimationUtils2::AnimationField field;
        field.node = bound;
        field.fcId = fcId;
        curve->setAnimationField(field);
        I::addToAnimationAttachment(node, curve, false);
        return stored->getCurves(0)->getAFAppNode();
    };
    EXPECT_EQ(boundNodeOf(child, child, 0), child) << "the curve's own node";
    EXPECT_EQ(boundNodeOf(child, node, 0), node) << "its parent";
    EXPECT_EQ(boundNodeOf(node, child, 0), child) << "its child";
    EXPECT_EQ(boundNodeOf(child, far, osg::getContainerId(far)), far) << "the container itself";
    EXPECT_EQ(boundNodeOf(child, far, osg::getContainerId(far->getCore())), far) << "a core";
    EXPECT_EQ(boundNodeOf(NullFC, far, osg::getContainerId(attachment(far))), far)
        << "an attachment";
    EXPECT_EQ(boundNodeOf(child, NullFC, 0), NullFC);
    EXPECT_EQ(boundNodeOf(child, far, 0), NullFC) << "nothing leads there";
}

// --- blocks

TEST_F(Export, aBlockIsStoredFieldByField) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationBlock* const block = keep(makeBlock(node, "walk", {1.0F, 2.0F}));
    block->addCurve(makeCurve(node, "translateY", {}));
    block->setId(88);
    block->setCameraBlock(true);
    block->setAnimatedType(200);
    block->setFliped(true);
    block->setRepeat(true);
    block->setMotionBlur(true);
    I::addBlockToAnimAttachment(node, block, false);
    ASSERT_EQ(stored->getMFBlocks()->getSize(), 1U);
    const osg::AnimationBlockPtr record = stored->getBlocks(0);
    EXPECT_EQ(record->getName(), "walk");
    EXPECT_EQ(record->getAppropriateNode(), node);
    EXPECT_EQ(record->getId(), 88U);
    EXPECT_TRUE(record->getCamBlock());
    EXPECT_EQ(record->getAnimatedType(), 200);
    EXPECT_TRUE(record->getFliped());
    EXPECT_TRUE(record->getRepeated());
    EXPECT_TRUE(record->getMotionBlur());
    EXPECT_TRUE(record->getActivity());
    EXPECT_EQ(record->getStart(), 0.0F) << "not written for blocks";
    EXPECT_EQ(record->getEnd(), 0.0F);
    ASSERT_EQ(record->getMFCurves()->getSize(), 2U);
    EXPECT_EQ(record->getCurves(0)->getBelongs2Attribute(), "translateX");
    EXPECT_EQ(record->getCurves(1)->getMFControlPoints()->getSize(), 0U) << "stored without keys";
    EXPECT_EQ(record.getRefCount(), 1);

    block->setActive(false);
    block->setCameraBlock(false);
    I::addBlockToAnimAttachment(node, block, false);
    ASSERT_EQ(stored->getMFBlocks()->getSize(), 1U) << "replaces the block of the same name";
    EXPECT_FALSE(stored->getBlocks(0)->getActivity());
    EXPECT_FALSE(stored->getBlocks(0)->getCamBlock());
}

TEST_F(Export, aBlockWithoutCurvesIsStored) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationBlock* const block = keep(new kvAnimationBlock("empty"));
    block->addCurve(nullptr); // passed over
    I::addBlockToAnimAttachment(node, block, false);
    ASSERT_EQ(stored->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(stored->getBlocks(0)->getAppropriateNode(), NullFC);
    EXPECT_EQ(stored->getBlocks(0)->getMFCurves()->getSize(), 0U);
}

// --- clips

TEST_F(Export, aClipIsStoredWithTracksInOrderAndEverythingOnThem) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationClip* const clip = keep(new kvAnimationClip("scene"));
    clip->createTrack();
    clip->createTrack();
    clip->insertBlock(makeBlock(node, "walk", {1.0F, 2.0F}), 1);
    auto* const item = new kvAnimationSequence2("run script");
    item->setStartFrame(3.0F);
    item->setEndFrame(4.5F);
    item->setId(99);
    clip->insertSequence(item, 1);
    auto* const nested = new kvAnimationClip("nested");
    nested->addBlock(makeBlock(node, "deep", {5.0F, 6.0F}));
    clip->insertSubclip(nested, 1);
    clip->getTrack(1)->setNumber(12);
    clip->getTrack(1)->setActive(false);
    clip->getTrack(0)->setMotionBlur(true);
    clip->getTrack(0)->setFliped(true);
    clip->setId(55);
    clip->setRepeat(true);
    clip->setMotionBlur(true);
    clip->getTrack(1)->setMotionBlur(false);

    I::addClipToAnimAttachment(node, clip, false);
    ASSERT_EQ(stored->getMFClips()->getSize(), 1U);
    const osg::AnimationClipPtr record = stored->getClips(0);
    EXPECT_EQ(record->getName(), "scene");
    EXPECT_EQ(record->getId(), 55U);
    EXPECT_TRUE(record->getRepeated());
    EXPECT_TRUE(record->getMotionBlur());
    EXPECT_FALSE(record->getFliped());
    EXPECT_EQ(record->getMFBlocks()->getSize(), 0U) << "the older lists stay empty";
    EXPECT_EQ(record->getMFSubclips()->getSize(), 0U);
    ASSERT_EQ(record->getMFTracks()->getSize(), 2U);

    const osg::AnimationTrackPtr empty = record->getTracks(0);
    EXPECT_EQ(empty->getNumber(), 0);
    EXPECT_TRUE(empty->getActive());
    EXPECT_TRUE(empty->getMotionBlur());
    EXPECT_TRUE(empty->getFliped());

    const osg::AnimationTrackPtr full = record->getTracks(1);
    EXPECT_EQ(full->getNumber(), 12);
    EXPECT_FALSE(full->getActive());
    EXPECT_FALSE(full->getMotionBlur());
    ASSERT_EQ(full->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(full->getBlocks(0)->getName(), "walk");
    EXPECT_EQ(full->getBlocks(0)->getMFCurves()->getSize(), 1U);
    ASSERT_EQ(full->getMFSequences()->getSize(), 1U);
    const osg::AnimationBlockPtr sequence = full->getSequences(0);
    EXPECT_EQ(sequence->getName(), "run script");
    EXPECT_EQ(sequence->getId(), 99U);
    EXPECT_EQ(sequence->getStart(), 3.0F);
    EXPECT_EQ(sequence->getEnd(), 4.5F);
    EXPECT_EQ(sequence->getAppropriateNode(), NullFC);
    ASSERT_EQ(full->getMFClips()->getSize(), 1U);
    const osg::AnimationClipPtr deep = osg::AnimationClipPtr::dcast(full->getClips(0));
    ASSERT_NE(deep, NullFC);
    EXPECT_EQ(deep->getName(), "nested");
    ASSERT_EQ(deep->getMFTracks()->getSize(), 1U);
    EXPECT_EQ(deep->getTracks(0)->getBlocks(0)->getName(), "deep");
}

TEST_F(Export, blocksOnTracksNeverCarryActivity) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationClip* const clip = keep(new kvAnimationClip("c"));
    clip->addBlock(makeBlock(node, "active", {1.0F}));
    I::addClipToAnimAttachment(node, clip, false);
    EXPECT_FALSE(stored->getClips(0)->getTracks(0)->getBlocks(0)->getActivity());
}

TEST_F(Export, aClipNestedTwiceIsStoredTwiceInFull) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationClip* const clip = keep(new kvAnimationClip("outer"));
    auto* const nested = new kvAnimationClip("nested");
    nested->addBlock(makeBlock(node, "deep", {5.0F, 6.0F}));
    clip->addSubclip(nested);
    clip->addSubclip(nested);
    I::addClipToAnimAttachment(node, clip, false);
    const osg::AnimationClipPtr record = stored->getClips(0);
    ASSERT_EQ(record->getMFTracks()->getSize(), 2U);
    const auto a = osg::AnimationClipPtr::dcast(record->getTracks(0)->getClips(0));
    const auto b = osg::AnimationClipPtr::dcast(record->getTracks(1)->getClips(0));
    EXPECT_NE(a, b);
    EXPECT_EQ(a->getTracks(0)->getBlocks(0)->getName(), "deep");
    EXPECT_EQ(b->getTracks(0)->getBlocks(0)->getName(), "deep");
    clip->getTrack(1)->clear(); // the sharing ends before both tracks delete the clip
}

TEST_F(Export, clipsOfTheSameNameAreAddedNotReplaced) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    kvAnimationClip* const clip = keep(new kvAnimationClip("same"));
    I::addClipToAnimAttachment(node, clip, false);
    I::addClipToAnimAttachment(node, clip, false);
    EXPECT_EQ(stored->getMFClips()->getSize(), 2U);
}

TEST_F(Export, theOlderLayoutHoldsBlocksAndSubclipsDirectly) {
    kvAnimationClip* const clip = keep(new kvAnimationClip("outer"));
    clip->addBlock(makeBlock(node, "b", {1.0F}));
    auto* const nested = new kvAnimationClip("nested");
    nested->setRepeat(true);
    nested->setId(66);
    nested->addBlock(makeBlock(node, "deep", {5.0F}));
    clip->addSubclip(nested);
    osg::AnimationClipPtr record = osg::AnimationClipBase::create();
    osg::addRefCP(record);
    Access::addSubClip(record, clip);
    EXPECT_EQ(record->getName(), "") << "the clip's own fields are not written here";
    ASSERT_EQ(record->getMFBlocks()->getSize(), 1U);
    EXPECT_EQ(record->getBlocks(0)->getName(), "b");
    EXPECT_FALSE(record->getBlocks(0)->getActivity());
    EXPECT_EQ(record->getMFTracks()->getSize(), 0U);
    ASSERT_EQ(record->getMFSubclips()->getSize(), 1U);
    const auto deep = osg::AnimationClipPtr::dcast(record->getSubclips(0));
    ASSERT_NE(deep, NullFC);
    EXPECT_EQ(deep->getName(), "nested");
    EXPECT_EQ(deep->getId(), 66U);
    EXPECT_TRUE(deep->getRepeated());
    EXPECT_EQ(deep->getBlocks(0)->getName(), "deep");
    osg::subRefCP(record);
}

TEST_F(Export, theOlderLayoutIsInOrderOfStartAndNestsAsTheClipsDo) {
    kvAnimationClip* const clip = keep(new kvAnimationClip("outer"));
    clip->addBlock(makeBlock(node, "short", {5.0F, 6.0F}));
    clip->addBlock(makeBlock(node, "long", {1.0F, 90.0F}));
    auto* const late = new kvAnimationClip("late");
    late->addBlock(makeBlock(node, "b", {20.0F, 30.0F}));
    clip->addSubclip(late);
    auto* const early = new kvAnimationClip("early");
    early->addBlock(makeBlock(node, "b", {10.0F, 99.0F}));
    auto* const inside = new kvAnimationClip("inside");
    inside->addBlock(makeBlock(node, "b", {40.0F, 41.0F}));
    early->addSubclip(inside);
    clip->addSubclip(early);

    osg::AnimationClipPtr record = osg::AnimationClipBase::create();
    osg::addRefCP(record);
    Access::addSubClip(record, clip);
    ASSERT_EQ(record->getMFBlocks()->getSize(), 2U);
    EXPECT_EQ(record->getBlocks(0)->getName(), "long");
    EXPECT_EQ(record->getBlocks(1)->getName(), "short");
    ASSERT_EQ(record->getMFSubclips()->getSize(), 2U) << "direct sub-clips only";
    const auto first = osg::AnimationClipPtr::dcast(record->getSubclips(0));
    EXPECT_EQ(first->getName(), "early");
    EXPECT_EQ(osg::AnimationClipPtr::dcast(record->getSubclips(1))->getName(), "late");
    ASSERT_EQ(first->getMFSubclips()->getSize(), 1U);
    EXPECT_EQ(osg::AnimationClipPtr::dcast(first->getSubclips(0))->getName(), "inside");
    osg::subRefCP(record);
}

TEST_F(Export, singleStepsPassOverNull) {
    osg::AnimationClipPtr clip = osg::AnimationClipBase::create();
    osg::addRefCP(clip);
    Access::addSubClip(clip, nullptr);
    Access::addSubClip(NullFC, keep(new kvAnimationClip));
    Access::exportTrackToClip(nullptr, clip);
    Access::exportBlockToTrack(keep(makeBlock(node, "b", {})), NullFC);
    Access::exportSequenceToTrack(nullptr, NullFC);
    Access::exportClipToTrack(nullptr, NullFC);
    Access::exportCurveToBlock(nullptr, NullFC);
    EXPECT_EQ(clip->getMFTracks()->getSize(), 0U);
    osg::subRefCP(clip);
}

TEST_F(Export, assigningTheClassChangesNothing) {
    I a;
    I b;
    EXPECT_EQ(&(a = b), &a);
    EXPECT_EQ(&(a = std::move(b)), &a);
}

} // namespace
