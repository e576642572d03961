// Ids are kept in 32 bits and asked for in a long, which has 64 on some platforms: everything that
// takes an id looks at its low 32 bits, so that a host that passes a wide one finds the same object
// everywhere. Only the question whether an id was issued compares all 64.

#include "manager/fixture.h"

#include <cstdint>
#include <limits>
#include <type_traits>

using namespace kv::test;

namespace {

constexpr unsigned int kBlock = 3000000001U;
constexpr unsigned int kCurve = 3000000002U;
constexpr unsigned int kSequence = 3000000003U;
constexpr unsigned int kOuter = 3000000004U;
constexpr unsigned int kInner = 3000000005U;
constexpr unsigned int kTop = 3000000006U;
constexpr unsigned int kStranger = 3000000007U;

// The same id with other bits above the low 32, where there is room for them.
unsigned long wide(unsigned int id) {
    constexpr int kShift = std::numeric_limits<unsigned long>::digits > 32 ? 32 : 0;
    return kShift == 0 ? id : (0x5A5AUL << kShift) + id;
}

// A clip with a sub-clip that has a sub-clip, and a block and a sequence in the innermost one.
class IdNarrowing : public ManagerTest {
  protected:
    IdNarrowing() : top(clip("top")), outer(top->newSubclip()), inner(outer->newSubclip()) {
        manager.addClip(top);
        top->setId(kTop);
        outer->setId(kOuter);
        inner->setId(kInner);
        item = place(newBlock("door", 0, 10));
        sequence = newSequence("open", 2, 3);
        sequence->setId(kSequence);
        inner->addSequence(sequence);
    }

    kvAnimationBlock* place(kvAnimationBlock* made) {
        made->setId(kBlock);
        inner->addBlock(made);
        return made;
    }

    kvAnimationTrack& trackOf(kvAnimationClip* owner) { return *owner->getTrack(0); }

    kvAnimationClip* top;
    kvAnimationClip* outer;
    kvAnimationClip* inner;
    kvAnimationBlock* item;
    kvAnimationSequence2* sequence;
};

TEST_F(IdNarrowing, gettersTell32Bits) {
    EXPECT_TRUE((std::is_same_v<decltype(item->getId()), unsigned int>));
    EXPECT_TRUE((std::is_same_v<decltype(top->getId()), unsigned int>));
    const kvAnimationCurve made;
    EXPECT_TRUE((std::is_same_v<decltype(made.getId()), unsigned int>));
    EXPECT_TRUE((std::is_same_v<decltype(made.getAppBlockId()), unsigned int>));
}

TEST_F(IdNarrowing, ofEverySetter) {
    constexpr unsigned long long kWide = 0x5A5A00000000ULL + kStranger;
    kvAnimationCurve made;
    made.setId(kWide);
    made.setAppBlockId(kWide);
    EXPECT_EQ(made.getId(), kStranger);
    EXPECT_EQ(made.getAppBlockId(), kStranger);
    item->setId(kWide);
    EXPECT_EQ(item->getId(), kStranger);
    sequence->setId(kWide);
    EXPECT_EQ(sequence->getId(), kStranger);
    top->setId(wide(kStranger));
    EXPECT_EQ(top->getId(), kStranger);
}

TEST_F(IdNarrowing, ofEverySearchOnATrack) {
    kvAnimationTrack& own = trackOf(inner);
    EXPECT_EQ(own.getBlock(wide(kBlock), false), item);
    EXPECT_EQ(trackOf(outer).getClip(wide(kInner), false), inner);
    EXPECT_EQ(inner->getTrack(1)->getSequence(wide(kSequence), false), sequence);

    kvAnimationTrack& above = trackOf(top);
    EXPECT_EQ(above.getBlock(wide(kBlock), true), item);
    EXPECT_EQ(above.getClip(wide(kInner), true), inner);
    EXPECT_EQ(above.getSequence(wide(kSequence), true), sequence);
    EXPECT_EQ(above.getBlock(wide(kStranger), true), nullptr);
    EXPECT_EQ(above.getClip(wide(kStranger), true), nullptr);
    EXPECT_EQ(above.getSequence(wide(kStranger), true), nullptr);
}

TEST_F(IdNarrowing, ofEverySearchInAClip) {
    EXPECT_EQ(inner->getBlock(wide(kBlock), false), item);
    EXPECT_EQ(outer->getSubclip(wide(kInner), false), inner);
    EXPECT_EQ(inner->getSequence(wide(kSequence), false), sequence);
    EXPECT_EQ(top->getBlock(wide(kBlock), true), item);
    EXPECT_EQ(top->getSubclip(wide(kInner), true), inner);
    EXPECT_EQ(top->getSequence(wide(kSequence), true), sequence);
}

TEST_F(IdNarrowing, ofEveryRemovalFromATrack) {
    kvAnimationTrack& own = trackOf(inner);
    EXPECT_FALSE(own.subBlock(wide(kStranger), false));
    ASSERT_TRUE(own.subBlock(wide(kBlock), false));
    keep(item);
    ASSERT_TRUE(inner->getTrack(1)->subSequence(wide(kSequence), false));
    const std::unique_ptr<kvAnimationSequence2> removed(sequence);
    ASSERT_TRUE(trackOf(outer).subClip(wide(kInner), false));
    keep(inner);
}

TEST_F(IdNarrowing, ofEveryRemovalBelowATrack) {
    kvAnimationTrack& above = trackOf(top);
    ASSERT_TRUE(above.subBlock(wide(kBlock), true));
    keep(item);
    ASSERT_TRUE(above.subSequence(wide(kSequence), true));
    const std::unique_ptr<kvAnimationSequence2> removed(sequence);
    ASSERT_TRUE(above.subClip(wide(kInner), true));
    keep(inner);
}

TEST_F(IdNarrowing, ofEveryRemovalFromAClip) {
    ASSERT_TRUE(inner->subBlock(wide(kBlock), false));
    keep(item);
    ASSERT_TRUE(top->subSequence(wide(kSequence), true));
    const std::unique_ptr<kvAnimationSequence2> removed(sequence);
    ASSERT_TRUE(top->subSubclip(wide(kInner), true));
    keep(inner);
    ASSERT_TRUE(top->subSubclip(wide(kOuter), false));
    keep(outer);
}

TEST_F(IdNarrowing, ofEverySearchInTheRegistry) {
    kvAnimationBlock* listed = block("listed", 0, 1);
    manager.addAnimationBlock(listed);
    listed->setId(kStranger);
    listed->getBlockCurves().front()->setId(kCurve);
    EXPECT_EQ(manager.getAnimationCurve(wide(kCurve)), listed->getBlockCurves().front());
    EXPECT_EQ(manager.getBlock(wide(kStranger), false), listed);
    EXPECT_EQ(manager.getBlock(wide(kStranger), true), nullptr) << "it is no scene block";
    EXPECT_EQ(manager.getBlock(wide(kBlock), true), item);
    EXPECT_EQ(Access::findCurve(manager, wide(kCurve)), listed->getBlockCurves().front());
    EXPECT_EQ(Access::findClip(manager, wide(kOuter)), outer);

    kvAnimationManager2::_animationBlocks.push_back(listed);
    EXPECT_EQ(manager.getAnimationBlock(wide(kStranger), false), listed);
    EXPECT_EQ(manager.getAnimationBlock(wide(kBlock), false), nullptr);
    EXPECT_EQ(manager.getAnimationBlock(wide(kBlock), true), item);

    EXPECT_EQ(manager.getClip(wide(kTop)), top);
    EXPECT_EQ(manager.getClip(wide(kOuter)), outer);
    EXPECT_EQ(manager.findSubClip(wide(kOuter), top), outer);
    EXPECT_EQ(manager.findSubClip(wide(kInner), top), inner);
    EXPECT_EQ(manager.findSubClip(wide(kTop), top), nullptr);
}

TEST_F(IdNarrowing, ofEveryRemovalFromTheRegistry) {
    registeredCurve("a", {})->setId(kCurve);
    manager.subCurve(wide(kStranger));
    EXPECT_EQ(manager.getAnimCurves()->size(), 1U);
    manager.subCurve(wide(kCurve));
    EXPECT_TRUE(manager.getAnimCurves()->empty());

    kvAnimationBlock* listed = block("listed", 0, 1);
    manager.addAnimationBlock(listed);
    kvAnimationManager2::_animationBlocks.push_back(listed);
    listed->setId(kStranger);
    manager.subAnimationBlock(wide(kStranger), false);
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_TRUE(manager.getSceneBlocks().empty());
    manager.subAnimationBlock(wide(kBlock), false);
    EXPECT_EQ(top->getBlock(wide(kBlock), true), item) << "clips were not asked";
    manager.subAnimationBlock(wide(kBlock), true);
    ASSERT_EQ(top->getBlock(kBlock, true), nullptr);
    keep(item);

    manager.subClip(wide(kOuter));
    EXPECT_EQ(manager.getClips()->size(), 1U) << "a sub-clip is in no list";
    manager.subClip(wide(kTop));
    EXPECT_TRUE(manager.getClips()->empty());
}

TEST_F(IdNarrowing, isNotDoneByTheQuestionWhetherAnIdWasIssued) {
    const unsigned long long issued = kvAnimationManager2::createUniqueId();
    EXPECT_TRUE(kvAnimationManager2::checkId(issued));
    EXPECT_FALSE(kvAnimationManager2::checkId(issued + 0x100000000ULL));
}

} // namespace
