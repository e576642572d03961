// Look-ups: where each one looks, in which order, and what counts as a match.

#include "manager/fixture.h"

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>

#include <OSGTransform3D.h>

using namespace kv::test;

namespace {

using Finding = SceneTest;

TEST_F(Finding, aCurveIsFoundByIdInTheCurveListBeforeTheBlocks) {
    kvAnimationBlock* holder = block("b", 0, 1);
    manager.addAnimationBlock(holder);
    kvAnimationCurve* inBlock = holder->getLastInsertedCurve();
    kvAnimationCurve* listed = registeredCurve("a", {});
    inBlock->setId(7);
    listed->setId(7);
    EXPECT_EQ(manager.getAnimationCurve(7UL), listed);
    EXPECT_EQ(Access::findCurve(manager, 7UL), listed);
}

TEST_F(Finding, aCurveThatOnlyABlockHoldsIsFoundById) {
    manager.addAnimationBlock(block("first", 0, 1));
    kvAnimationBlock* holder = block("second", 0, 1);
    manager.addAnimationBlock(holder);
    holder->addCurve(nullptr);
    kvAnimationCurve* inBlock = newCurve("x", {});
    inBlock->setId(70000001);
    holder->addCurve(inBlock);
    EXPECT_EQ(manager.getAnimationCurve(70000001UL), inBlock);
    EXPECT_EQ(manager.getAnimationCurve(0x100000000UL + 70000001UL), inBlock);
}

TEST_F(Finding, curvesOfSceneBlocksAndClipsAreNotFoundById) {
    kvAnimationBlock* sceneBlock = block("s", 0, 1);
    sceneBlock->getLastInsertedCurve()->setId(70000001);
    kvAnimationManager2::_animationBlocks.push_back(sceneBlock);
    kvAnimationClip* holder = clip("c");
    kvAnimationBlock* inClip = newBlock("k", 0, 1);
    inClip->getLastInsertedCurve()->setId(70000001);
    holder->addBlock(inClip);
    manager.addClip(holder);
    EXPECT_EQ(manager.getAnimationCurve(70000001UL), nullptr);
}

TEST_F(Finding, byAttributeOnlyTheCurveListIsSearchedAndTheWholeNameCounts) {
    manager.addAnimationBlock(block("translateX", 0, 1));
    EXPECT_EQ(manager.getAnimationCurve("translateX"), nullptr);
    registeredCurve("translate", {});
    registeredCurve("TranslateX", {});
    kvAnimationCurve* first = registeredCurve("translateX", {});
    registeredCurve("translateX", {});
    EXPECT_EQ(manager.getAnimationCurve("translateX"), first);
    EXPECT_EQ(Access::findCurve(manager, std::string("translateX")), first);
    EXPECT_EQ(manager.getAnimationCurve(std::string("translateX\0", 11)), nullptr);
}

TEST_F(Finding, byAttributeAndNodeAGeometryStandsForItsTransform) {
    const osg::NodePtr transform = addNode(root, osg::Transform3D::create());
    const osg::NodePtr geometry = addNode(transform, osg::Geometry::create());
    kvAnimationCurve* elsewhere = registeredCurve("translateX", {});
    elsewhere->setAppropriateNode(root);
    kvAnimationCurve* wrongAttribute = registeredCurve("translateY", {});
    wrongAttribute->setAppropriateNode(transform);
    kvAnimationCurve* wanted = registeredCurve("translateX", {});
    wanted->setAppropriateNode(geometry);

    EXPECT_EQ(manager.getAnimationCurve("translateX", transform), wanted);
    EXPECT_EQ(manager.getAnimationCurve("translateX", geometry), wanted);
    EXPECT_EQ(manager.getAnimationCurve("translateX", root), elsewhere);
    EXPECT_EQ(manager.getAnimationCurve("scaleX", root), nullptr);
}

TEST_F(Finding, byAttributeAndNodeACurveOfADestroyedNodeIsNotFound) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    registeredCurve("translateX", {})->setAppropriateNode(node);
    removeNode(root, node);
    EXPECT_EQ(manager.getAnimationCurve("translateX", root), nullptr);
}

TEST_F(Finding, byKeyTheFirstCurveWithAKeyOfThatIdIsFoundAndRemembersTheKey) {
    registeredCurve("a", {{0, 1}});
    kvAnimationCurve* wanted = registeredCurve("b", {{0, 1}, {5, 2}, {9, 3}});
    // Imported keys are numbered from 1 in each curve, so only the second curve has a key 3.
    kvControlPoint probe(0, 0, 5);
    probe.setId(3);
    EXPECT_EQ(manager.getAnimationCurve(probe), wanted);
    probe.setId(1);
    EXPECT_EQ(manager.getAnimationCurve(probe), manager.getAnimCurves()->front());
    probe.setId(4);
    EXPECT_EQ(manager.getAnimationCurve(probe), nullptr);
}

class FindingBlocks : public ManagerTest {
  protected:
    FindingBlocks() {
        listed = block("listed", 0, 1);
        scene = block("scene", 0, 1);
        inClip = newBlock("inClip", 0, 1);
        nested = newBlock("nested", 0, 1);
        holder = clip("holder");
        holder->addBlock(inClip);
        holder->newSubclip()->newSubclip()->addBlock(nested);
        manager.addAnimationBlock(listed);
        kvAnimationManager2::_animationBlocks.push_back(scene);
        manager.addClip(clip("empty"));
        manager.addClip(holder);
        listed->setId(81);
        scene->setId(82);
        inClip->setId(83);
        nested->setId(84);
    }

    kvAnimationBlock* listed;
    kvAnimationBlock* scene;
    kvAnimationBlock* inClip;
    kvAnimationBlock* nested;
    kvAnimationClip* holder;
};

TEST_F(FindingBlocks, byIdTheFlagChoosesTheListAndClipsFollowEitherWay) {
    EXPECT_EQ(manager.getBlock(81UL, false), listed);
    EXPECT_EQ(manager.getBlock(81UL, true), nullptr);
    EXPECT_EQ(manager.getBlock(82UL, true), scene);
    EXPECT_EQ(manager.getBlock(82UL, false), nullptr);
    for (const bool flag : {false, true}) {
        EXPECT_EQ(manager.getBlock(83UL, flag), inClip);
        EXPECT_EQ(manager.getBlock(84UL, flag), nested);
        EXPECT_EQ(manager.getBlock(85UL, flag), nullptr);
        EXPECT_EQ(manager.getBlock(0x100000053UL, flag), inClip);
    }
}

TEST_F(FindingBlocks, byNameTheFlagChoosesTheListAndClipsFollowEitherWay) {
    EXPECT_EQ(manager.getBlock("listed", false), listed);
    EXPECT_EQ(manager.getBlock("listed", true), nullptr);
    EXPECT_EQ(manager.getBlock("scene", true), scene);
    EXPECT_EQ(manager.getBlock("nested", true), nested);
    EXPECT_EQ(manager.getBlock("nested", false), nested);
    EXPECT_EQ(manager.getBlock("neste", false), nullptr);
    EXPECT_EQ(Access::findBlock(manager, std::string("nested"), false), nested);
}

TEST_F(FindingBlocks, byCurveListsCompareIdsAndClipsComparePointers) {
    kvAnimationCurve probe("probe");
    probe.setId(listed->getLastInsertedCurve()->getId());
    EXPECT_EQ(manager.getBlock(&probe, false), listed);
    probe.setId(scene->getLastInsertedCurve()->getId());
    EXPECT_EQ(manager.getBlock(&probe, true), scene);
    probe.setId(nested->getLastInsertedCurve()->getId());
    EXPECT_EQ(manager.getBlock(&probe, false), nullptr);
    EXPECT_EQ(manager.getBlock(nested->getLastInsertedCurve(), false), nested);
    EXPECT_EQ(Access::findBlock(manager, nested->getLastInsertedCurve(), true), nested);
}

TEST_F(FindingBlocks, byCurveANullCurveIsInNoBlock) {
    listed->addCurve(nullptr);
    inClip->addCurve(nullptr);
    kvAnimationCurve* none = nullptr;
    EXPECT_EQ(manager.getBlock(none, false), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(none, true), nullptr);
    EXPECT_EQ(manager.getBlock(listed->getBlockCurves().front(), false), listed);
}

TEST_F(FindingBlocks, getAnimationBlockSearchesSceneBlocksAndClipsOnlyWhenAsked) {
    EXPECT_EQ(manager.getAnimationBlock(81UL, true), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(82UL, false), scene);
    EXPECT_EQ(manager.getAnimationBlock(84UL, false), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(84UL, true), nested);
    EXPECT_EQ(manager.getAnimationBlock(0x100000052UL, false), scene) << "the low 32 bits count";
    EXPECT_EQ(manager.getAnimationBlock(0x100000054UL, true), nested);

    EXPECT_EQ(manager.getAnimationBlock("listed", true), nullptr);
    EXPECT_EQ(manager.getAnimationBlock("scene", false), scene);
    EXPECT_EQ(manager.getAnimationBlock("inClip", false), nullptr);
    EXPECT_EQ(manager.getAnimationBlock("inClip", true), inClip);

    EXPECT_EQ(manager.getAnimationBlock(listed->getLastInsertedCurve(), true), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(scene->getLastInsertedCurve(), false), scene);
    EXPECT_EQ(manager.getAnimationBlock(inClip->getLastInsertedCurve(), false), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(inClip->getLastInsertedCurve(), true), inClip);
}

TEST_F(FindingBlocks, theFirstOfTwoEqualBlocksWins) {
    kvAnimationBlock* second = block("listed", 0, 1);
    manager.addAnimationBlock(second);
    second->setId(81);
    EXPECT_EQ(manager.getBlock(81UL, false), listed);
    EXPECT_EQ(manager.getBlock("listed", false), listed);
}

class FindingClips : public ManagerTest {
  protected:
    FindingClips() {
        top = clip("top");
        sub = top->newSubclip();
        sub->setName("sub");
        deep = sub->newSubclip();
        deep->setName("deep");
        other = clip("other");
        manager.addClip(top);
        manager.addClip(other);
        top->setId(91);
        sub->setId(92);
        deep->setId(93);
        other->setId(94);
    }

    kvAnimationClip* top;
    kvAnimationClip* sub;
    kvAnimationClip* deep;
    kvAnimationClip* other;
};

TEST_F(FindingClips, getClipLooksOneLevelBelowTheList) {
    EXPECT_EQ(manager.getClip(91UL), top);
    EXPECT_EQ(manager.getClip(92UL), sub);
    EXPECT_EQ(manager.getClip(93UL), nullptr);
    EXPECT_EQ(manager.getClip(94UL), other);
    EXPECT_EQ(manager.getClip(0x10000005CUL), sub);
    EXPECT_EQ(Access::findClip(manager, 92UL), sub);

    EXPECT_EQ(manager.getClip("sub"), sub);
    EXPECT_EQ(manager.getClip("deep"), nullptr);
    EXPECT_EQ(manager.getClip("other"), other);
    EXPECT_EQ(Access::findClip(manager, std::string("top")), top);
}

TEST_F(FindingClips, aSubclipOfAnEarlierClipComesBeforeALaterClip) {
    other->setId(92);
    other->setName("sub");
    EXPECT_EQ(manager.getClip(92UL), sub);
    EXPECT_EQ(manager.getClip("sub"), sub);
}

TEST_F(FindingClips, ofTwoSubclipsTheOneThatStartsFirstIsFoundAlthoughItEndsLast) {
    sub->addBlock(newBlock("long", 0, 90));
    kvAnimationClip* ended = top->newSubclip();
    ended->addBlock(newBlock("short", 10, 20));
    ended->setId(92);
    ended->setName("sub");
    EXPECT_EQ(manager.getClip(92UL), sub);
    EXPECT_EQ(manager.getClip("sub"), sub);
    EXPECT_EQ(manager.findSubClip(92UL, top), sub);
}

TEST_F(FindingClips, findSubClipDescendsToAnyDepthButNotToTheParentItself) {
    EXPECT_EQ(manager.findSubClip(93UL, top), deep);
    EXPECT_EQ(manager.findSubClip(92UL, top), sub);
    EXPECT_EQ(manager.findSubClip(91UL, top), nullptr);
    EXPECT_EQ(manager.findSubClip(94UL, top), nullptr);
    EXPECT_EQ(manager.findSubClip(93UL, nullptr), nullptr);
    EXPECT_EQ(manager.findSubClip(0x10000005DUL, top), deep) << "the low 32 bits count";
}

TEST_F(FindingClips, findSubClipFindsADeepCloneOfTheFirstBranchBeforeTheSecondBranch) {
    kvAnimationClip* second = top->newSubclip();
    second->addBlock(newBlock("late", 50, 60));
    sub->addBlock(newBlock("early", 0, 10));
    second->setId(93);
    EXPECT_EQ(manager.findSubClip(93UL, top), deep);
}

} // namespace
