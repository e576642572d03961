// Adding, removing and clearing: what enters and leaves which list, and what ids do meanwhile.

#include "manager/fixture.h"
#include "manager/identifiers.h"

#include <memory>

using namespace kv::test;

namespace {

using Registry = ManagerTest;

std::size_t issuedCount() {
    return kv::detail::identifierStore().issued().size();
}

TEST_F(Registry, aFreshManagerIsEmptyAndDirty) {
    kvAnimationManager2 fresh;
    EXPECT_TRUE(fresh.getAnimCurves()->empty());
    EXPECT_TRUE(fresh.getSelectedCurves()->empty());
    EXPECT_TRUE(fresh.getBlocks()->empty());
    EXPECT_TRUE(fresh.getClips()->empty());
    EXPECT_TRUE(fresh.getEmptyCPList()->empty());
    EXPECT_TRUE(fresh.isDirty());
    EXPECT_TRUE(fresh.getActualNode() == osg::NullFC);
}

TEST_F(Registry, theDirtyMarkIsWhatWasSetLast) {
    manager.setDirty(false);
    EXPECT_FALSE(manager.isDirty());
    manager.setDirty(true);
    EXPECT_TRUE(manager.isDirty());
}

TEST_F(Registry, theActiveClipIsNullUntilSet) {
    EXPECT_EQ(kvAnimationManager2::getActiveClip(), nullptr);
    kvAnimationClip* active = clip("c");
    kvAnimationManager2::setActiveClip(active);
    EXPECT_EQ(kvAnimationManager2::getActiveClip(), active);
}

TEST_F(Registry, addingAppendsAndGivesOneFreshId) {
    kvAnimationCurve* first = curve("a", {});
    kvAnimationCurve* second = curve("b", {});
    const std::size_t before = issuedCount();
    manager.addCurve(first);
    manager.addCurve(second);
    EXPECT_GE(issuedCount(), before + 2);
    EXPECT_EQ(*manager.getAnimCurves(), (std::vector<kvAnimationCurve*>{first, second}));
    EXPECT_TRUE(kvAnimationManager2::checkId(first->getId()));
    EXPECT_EQ(second->getId(), kv::detail::identifierStore().issued().back());
    EXPECT_EQ(manager.getLastInsertedCurve(), second);
}

TEST_F(Registry, blocksAndClipsGetTheIdThatWasDrawnLast) {
    kvAnimationBlock* aBlock = block("b", 0, 1);
    manager.addAnimationBlock(aBlock);
    EXPECT_EQ(aBlock->getId(), kv::detail::identifierStore().issued().back());
    EXPECT_EQ(manager.getLastInsertedBlock(), aBlock);

    kvAnimationClip* aClip = clip("c");
    manager.addClip(aClip);
    EXPECT_EQ(aClip->getId(), kv::detail::identifierStore().issued().back());
    EXPECT_EQ(manager.getLastInsertedClip(), aClip);
}

TEST_F(Registry, addingNullDrawsNothing) {
    const std::size_t before = issuedCount();
    manager.addCurve(nullptr);
    manager.addAnimationBlock(nullptr);
    manager.addClip(nullptr);
    EXPECT_EQ(issuedCount(), before);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_TRUE(manager.getClips()->empty());
}

TEST_F(Registry, addCurveReplacesAnIdAndTheOldOneStaysIssued) {
    kvAnimationCurve* aCurve = curve("a", {});
    manager.addCurve(aCurve);
    const unsigned int old = aCurve->getId();
    aCurve->setId(77777777); // out of reach of the generator
    manager.addCurve(aCurve);
    EXPECT_NE(aCurve->getId(), 77777777U);
    EXPECT_TRUE(kvAnimationManager2::checkId(old));
    EXPECT_EQ(manager.getAnimCurves()->size(), 2U); // nothing checks for duplicates
}

TEST_F(Registry, theLastInsertedOfAnEmptyListIsNull) {
    EXPECT_EQ(manager.getLastInsertedCurve(), nullptr);
    EXPECT_EQ(manager.getLastInsertedBlock(), nullptr);
    EXPECT_EQ(manager.getLastInsertedClip(), nullptr);
}

TEST_F(Registry, subCurveByIdRemovesEveryCurveWithThatId) {
    kvAnimationCurve* first = registeredCurve("a", {});
    kvAnimationCurve* other = registeredCurve("b", {});
    kvAnimationCurve* second = registeredCurve("c", {});
    first->setId(7);
    second->setId(7);
    other->setId(8);
    manager.subCurve(7UL);
    EXPECT_EQ(*manager.getAnimCurves(), (std::vector<kvAnimationCurve*>{other}));
}

TEST_F(Registry, subCurveByPointerGoesByIdToo) {
    kvAnimationCurve* listed = registeredCurve("a", {});
    listed->setId(7);
    kvAnimationCurve stranger;
    stranger.setId(7);
    manager.subCurve(&stranger);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
}

TEST_F(Registry, idsAreCutToThirtyTwoBits) {
    registeredCurve("a", {})->setId(7);
    manager.subCurve(0x100000007UL);
    EXPECT_TRUE(manager.getAnimCurves()->empty());

    kvAnimationClip* walk = clip("walk");
    manager.addClip(walk);
    walk->setId(8);
    manager.subClip(0x100000008UL);
    EXPECT_TRUE(manager.getClips()->empty());
}

TEST_F(Registry, idsOfBlocksAreCutToThirtyTwoBitsInEveryList) {
    kvAnimationBlock* listed = block("listed", 0, 10);
    manager.addAnimationBlock(listed);
    kvAnimationBlock* onScene = block("onScene", 0, 10);
    kvAnimationManager2::_animationBlocks.push_back(onScene);
    kvAnimationClip* walk = clip("walk");
    manager.addClip(walk);
    kvAnimationBlock* inClip = keep(newBlock("inClip", 0, 10));
    walk->addBlock(inClip);
    for (kvAnimationBlock* any : {listed, onScene, inClip})
        any->setId(7);
    manager.subAnimationBlock(0x100000007UL, true);
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_TRUE(kvAnimationManager2::_animationBlocks.empty());
    EXPECT_TRUE(walk->getBlocks(false, false).empty());
}

TEST_F(Registry, removingWhatIsAbsentOrNullChangesNothing) {
    kvAnimationCurve* listed = registeredCurve("a", {});
    listed->setId(7);
    manager.subCurve(8UL);
    manager.subCurve(nullptr);
    manager.subClip(8UL);
    manager.subClip(nullptr);
    manager.subAnimationBlock(8UL, true);
    manager.subAnimationBlock(nullptr, true);
    EXPECT_EQ(manager.getAnimCurves()->size(), 1U);
}

TEST_F(Registry, removalKeepsTheIdIssuedAndTheObjectAlive) {
    kvAnimationCurve* listed = registeredCurve("a", {{0, 1}});
    const unsigned int id = listed->getId();
    manager.subCurve(listed);
    EXPECT_TRUE(kvAnimationManager2::checkId(id));
    EXPECT_EQ(listed->getAnimatedAttribute(), "a");
}

TEST_F(Registry, subClipRemovesEveryClipWithThatId) {
    kvAnimationClip* first = clip("a");
    kvAnimationClip* other = clip("b");
    kvAnimationClip* second = clip("c");
    for (kvAnimationClip* each : {first, other, second})
        manager.addClip(each);
    first->setId(5);
    second->setId(5);
    other->setId(6);
    manager.subClip(second);
    EXPECT_EQ(*manager.getClips(), (std::vector<kvAnimationClip*>{other}));
    manager.subClip(6UL);
    EXPECT_TRUE(manager.getClips()->empty());
}

TEST_F(Registry, subAnimationBlockRemovesOnlyTheFirstOfEqualIds) {
    kvAnimationBlock* first = block("a", 0, 1);
    kvAnimationBlock* second = block("b", 0, 1);
    manager.addAnimationBlock(first);
    manager.addAnimationBlock(second);
    first->setId(9);
    second->setId(9);
    manager.subAnimationBlock(second, false); // by id: the first one goes
    EXPECT_EQ(*manager.getBlocks(), (std::vector<kvAnimationBlock*>{second}));
}

TEST_F(Registry, subAnimationBlockTakesTheBlockOffTheSceneBlocksToo) {
    kvAnimationBlock* first = block("a", 0, 1);
    kvAnimationBlock* second = block("b", 0, 1);
    first->setId(9);
    second->setId(9);
    kvAnimationManager2::_animationBlocks = {first, second};
    manager.subAnimationBlock(9UL, false);
    EXPECT_EQ(manager.getSceneBlocks(), (std::vector<kvAnimationBlock*>{second}));
}

TEST_F(Registry, subAnimationBlockWithoutClipsLeavesTheBlockOnItsTrack) {
    kvAnimationBlock* shared = newBlock("a", 0, 1);
    kvAnimationClip* holder = clip("c");
    holder->addBlock(shared);
    manager.addClip(holder);
    manager.addAnimationBlock(shared);
    manager.subAnimationBlock(shared, false);
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_EQ(holder->getBlocks(false, false).size(), 1U);
}

TEST_F(Registry, subAnimationBlockWithClipsTakesItFromTheFirstClipThatHoldsIt) {
    kvAnimationClip* empty = clip("empty");
    kvAnimationClip* outer = clip("outer");
    kvAnimationClip* last = clip("last");
    kvAnimationClip* inner = outer->newSubclip();
    std::unique_ptr<kvAnimationBlock> removed(newBlock("a", 0, 1));
    kvAnimationBlock* kept = newBlock("b", 0, 1);
    inner->addBlock(removed.get());
    last->addBlock(kept);
    for (kvAnimationClip* each : {empty, outer, last})
        manager.addClip(each);
    removed->setId(9);
    kept->setId(9);
    manager.subAnimationBlock(9UL, true);
    EXPECT_TRUE(inner->getBlocks(false, false).empty());
    EXPECT_EQ(last->getBlocks(false, false).size(), 1U);
}

TEST_F(Registry, subSequenceAnswersForTheClipsOwnItemsAndLeavesThemThere) {
    kvAnimationClip* holder = clip("c");
    kvAnimationSequence2* own = newSequence("own", 0, 1);
    holder->addSequence(own);
    kvAnimationSequence2* nested = newSequence("nested", 0, 1);
    holder->newSubclip()->addSequence(nested);

    EXPECT_TRUE(manager.subSequence(holder, own));
    EXPECT_FALSE(manager.subSequence(holder, nested)) << "what sub-clips answer is ignored";
    EXPECT_FALSE(manager.subSequence(holder, nullptr));
    EXPECT_FALSE(manager.subSequence(nullptr, own));
    EXPECT_EQ(holder->getSequences(false, true).size(), 2U);

    manager.addClip(holder);
    manager.subSequence(own);
    manager.subSequence(static_cast<kvAnimationSequence2*>(nullptr));
    EXPECT_EQ(holder->getSequences(false, true).size(), 2U);
}

TEST_F(Registry, subSequenceAnswersByPointerNotById) {
    kvAnimationClip* holder = clip("c");
    kvAnimationSequence2* own = newSequence("own", 0, 1);
    holder->addSequence(own);
    kvAnimationSequence2 stranger;
    stranger.setId(own->getId());
    EXPECT_FALSE(manager.subSequence(holder, &stranger));
}

TEST_F(Registry, theTwoRetiredQuestionsAreAlwaysAnsweredNo) {
    kvAnimationClip* holder = clip("c");
    kvAnimationSequence2* own = newSequence("own", 0, 1);
    holder->addSequence(own);
    kvAnimationCurve* visible = registeredCurve("a", {});
    EXPECT_FALSE(manager.subSequenceFromTracks(holder, own));
    EXPECT_FALSE(manager.subSequenceFromTracks(nullptr, nullptr));
    EXPECT_FALSE(manager.getCurveVisibility(visible));
    EXPECT_FALSE(manager.getCurveVisibility(nullptr));
    EXPECT_EQ(holder->getSequences(false, false).size(), 1U);
}

TEST_F(Registry, eraseEmptyCurvesKeepsThoseWithKeys) {
    registeredCurve("a", {});
    kvAnimationCurve* keyed = registeredCurve("b", {{0, 1}});
    registeredCurve("c", {});
    manager.eraseEmptyCurves();
    EXPECT_EQ(*manager.getAnimCurves(), (std::vector<kvAnimationCurve*>{keyed}));
}

TEST_F(Registry, eraseEmptyCurvesOnKeylessCurvesOnlyEmptiesTheListAndDeletesNothing) {
    kvAnimationCurve* first = registeredCurve("a", {});
    kvAnimationCurve* second = registeredCurve("b", {});
    manager.eraseEmptyCurves();
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_EQ(first->getAnimatedAttribute(), "a");
    EXPECT_EQ(second->getAnimatedAttribute(), "b");
}

class Clearing : public ManagerTest {
  protected:
    Clearing() {
        registeredCurve("a", {});
        manager.setSelectedCurves(*manager.getAnimCurves());
        manager.addAnimationBlock(block("b", 0, 1));
        manager.addClip(clip("c"));
        kvAnimationManager2::_animationBlocks.push_back(block("d", 0, 1));
        kvAnimationManager2::setActiveClip(manager.getLastInsertedClip());
    }
};

TEST_F(Clearing, clearFalseKeepsClipsAndSceneBlocks) {
    const std::size_t issued = issuedCount();
    manager.clear(false);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getSelectedCurves()->empty());
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_EQ(manager.getClips()->size(), 1U);
    EXPECT_EQ(manager.getSceneBlocks().size(), 1U);
    EXPECT_EQ(issuedCount(), issued);
}

TEST_F(Clearing, clearTrueEmptiesClipsAndSceneBlocksButNotTheActiveClip) {
    kvAnimationClip* active = manager.getLastInsertedClip();
    manager.clear(true);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getClips()->empty());
    EXPECT_TRUE(manager.getSceneBlocks().empty());
    EXPECT_EQ(kvAnimationManager2::getActiveClip(), active);
}

TEST_F(Clearing, clearCurveListsTouchesNoOtherList) {
    manager.clearCurveLists();
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getSelectedCurves()->empty());
    EXPECT_EQ(manager.getBlocks()->size(), 1U);
    EXPECT_EQ(manager.getClips()->size(), 1U);
}

TEST_F(Clearing, clearBlockListAndClearClipListEmptyOneListEach) {
    manager.clearBlockList();
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_EQ(manager.getClips()->size(), 1U);
    EXPECT_EQ(manager.getSceneBlocks().size(), 1U);
    manager.clearClipList();
    EXPECT_TRUE(manager.getClips()->empty());
    EXPECT_EQ(manager.getAnimCurves()->size(), 1U);
}

TEST_F(Registry, aGeneratedIdCanBeZeroAndIsFoundLikeAnyOther) {
    kvAnimationCurve* zero = registeredCurve("a", {});
    zero->setId(0);
    EXPECT_EQ(manager.getAnimationCurve(0UL), zero);
    manager.subCurve(0UL);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
}

TEST_F(Registry, nullEntriesOfTheListsAreSteppedOver) {
    manager.getAnimCurves()->push_back(nullptr);
    manager.getBlocks()->push_back(nullptr);
    manager.getClips()->push_back(nullptr);
    kvAnimationManager2::_animationBlocks.push_back(nullptr);
    manager.getSelectedCurves()->push_back(nullptr);

    manager.subCurve(1UL);
    manager.subClip(1UL);
    manager.subAnimationBlock(1UL, true);
    kvAnimationSequence2 item;
    manager.subSequence(&item);
    manager.eraseEmptyCurves();
    EXPECT_EQ(manager.getAnimationCurve(1UL), nullptr);
    EXPECT_EQ(manager.getAnimationCurve("x"), nullptr);
    EXPECT_EQ(manager.getBlock(1UL, false), nullptr);
    EXPECT_EQ(manager.getBlock(1UL, true), nullptr);
    EXPECT_EQ(manager.getClip(1UL), nullptr);
    EXPECT_EQ(manager.getAnimCurves()->size(), 1U);
    EXPECT_EQ(manager.getClips()->size(), 1U);
}

} // namespace
