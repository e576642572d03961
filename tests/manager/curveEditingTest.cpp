// The curve editor's operations: which list each one walks, the asymmetries of selection, the
// clean-up after deletion, the view range and snapping.

#include "manager/fixture.h"

#include <cmath>
#include <cstring>
#include <limits>

using namespace kv::test;

namespace {

class Editing : public ManagerTest {
  protected:
    static int selectedKeys(kvAnimationCurve* curve) {
        return static_cast<int>(curve->getSelectedCPs().size());
    }

    static void select(kvAnimationCurve* curve, std::size_t index) {
        curve->selectCP(curve->getCPs()[index]);
    }

    static std::vector<float> frames(const kvAnimationCurve* curve) {
        std::vector<float> result;
        for (const kvControlPoint& key : curve->getCPs())
            result.push_back(static_cast<float>(key.getPoint().x));
        return result;
    }

    static std::vector<float> values(const kvAnimationCurve* curve) {
        std::vector<float> result;
        for (const kvControlPoint& key : curve->getCPs())
            result.push_back(static_cast<float>(key.getPoint().y));
        return result;
    }

    using Floats = std::vector<float>;
    using Curves = std::vector<kvAnimationCurve*>;
};

// --- what is shown ----------------------------------------------------------------------------

TEST_F(Editing, theSelectedCurvesAreACopyOfWhatIsGiven) {
    kvAnimationCurve* a = curve("a", {});
    Curves given{a, nullptr};
    manager.setSelectedCurves(given);
    given.clear();
    EXPECT_EQ(*manager.getSelectedCurves(), (Curves{a, nullptr}));
    manager.setSelectedCurves(*manager.getSelectedCurves());
    EXPECT_EQ(manager.getSelectedCurves()->size(), 2U) << "given its own list it changes nothing";
}

TEST_F(Editing, showInEditorTakesTheBlocksCurves) {
    manager.setSelectedCurves({curve("old", {})});
    kvAnimationBlock* made = block("b", 0, 1);
    manager.showInEditor(made);
    EXPECT_EQ(*manager.getSelectedCurves(), made->getBlockCurves());
    manager.showInEditor(nullptr);
    EXPECT_EQ(manager.getSelectedCurves()->size(), 1U);
}

TEST_F(Editing, visibilityIsSetOnTheRegisteredCurveOfThatId) {
    kvAnimationCurve* registered = registeredCurve("a", {});
    kvAnimationCurve twin("twin");
    twin.setId(registered->getId());
    manager.setCurveVisibility(&twin, false);
    EXPECT_FALSE(registered->isVisible());
    EXPECT_TRUE(twin.isVisible());
    manager.setCurveVisibility(&twin, true);
    EXPECT_TRUE(registered->isVisible());
}

TEST_F(Editing, visibilityReachesACurveThatOnlyABlockHolds) {
    kvAnimationBlock* made = block("b", 0, 1);
    manager.addAnimationBlock(made);
    kvAnimationCurve* inBlock = made->getLastInsertedCurve();
    inBlock->setId(70000001);
    manager.setCurveVisibility(inBlock, false);
    EXPECT_FALSE(inBlock->isVisible());
}

TEST_F(Editing, visibilityOfAnUnregisteredCurveDoesNothing) {
    kvAnimationCurve* stranger = curve("a", {});
    stranger->setId(70000001);
    manager.setCurveVisibility(stranger, false);
    EXPECT_TRUE(stranger->isVisible());
    manager.setCurveVisibility(nullptr, false);
}

// --- selecting --------------------------------------------------------------------------------

TEST_F(Editing, selectingWorksOnKeysAndDeselectingOnTheCurvesFlag) {
    kvAnimationCurve* made = registeredCurve("a", {{0, 1}, {5, 2}});
    made->setSelected(true);
    manager.selectCurve(made);
    EXPECT_EQ(selectedKeys(made), 2);
    EXPECT_TRUE(made->isSelected());
    manager.deselectCurve(made);
    EXPECT_EQ(selectedKeys(made), 2) << "its keys keep their selection";
    EXPECT_FALSE(made->isSelected());
    manager.selectCurve(made);
    EXPECT_FALSE(made->isSelected()) << "selecting does not touch the flag";
    manager.deselectCurveCPs(made);
    EXPECT_EQ(selectedKeys(made), 0);
}

TEST_F(Editing, selectAllAndDeselectAllWalkTheCurveList) {
    kvAnimationCurve* listed = registeredCurve("a", {{0, 1}});
    kvAnimationCurve* shown = curve("b", {{0, 1}});
    manager.setSelectedCurves({shown});
    listed->setSelected(true);
    shown->setSelected(true);
    manager.selectAllCurves();
    EXPECT_EQ(selectedKeys(listed), 1);
    EXPECT_EQ(selectedKeys(shown), 0);
    manager.deselectAllCurves();
    EXPECT_FALSE(listed->isSelected());
    EXPECT_TRUE(shown->isSelected());
    EXPECT_EQ(selectedKeys(listed), 1) << "its keys keep their selection";
}

TEST_F(Editing, deselectingAllKeysWalksTheSelectedCurves) {
    kvAnimationCurve* listed = registeredCurve("a", {{0, 1}});
    kvAnimationCurve* shown = curve("b", {{0, 1}});
    manager.setSelectedCurves({shown});
    listed->selectAllCPs();
    shown->selectAllCPs();
    manager.deselectAllCurvesCPs();
    EXPECT_EQ(selectedKeys(listed), 1);
    EXPECT_EQ(selectedKeys(shown), 0);
}

TEST_F(Editing, selectionOfUnregisteredOrNullCurvesDoesNothing) {
    kvAnimationCurve* stranger = curve("a", {{0, 1}});
    stranger->setId(70000001);
    stranger->setSelected(true);
    manager.selectCurve(stranger);
    EXPECT_EQ(selectedKeys(stranger), 0);
    manager.deselectCurve(stranger);
    EXPECT_TRUE(stranger->isSelected());
    stranger->selectAllCPs();
    manager.deselectCurveCPs(stranger);
    EXPECT_EQ(selectedKeys(stranger), 1);
    manager.selectCurve(nullptr);
    manager.deselectCurve(nullptr);
    manager.deselectCurveCPs(nullptr);
}

// --- operations on all selected curves --------------------------------------------------------

TEST_F(Editing, operationsReachSelectedCurvesOnly) {
    kvAnimationCurve* shown = curve("a", {{0, 1}, {10, 5}});
    kvAnimationCurve* listed = registeredCurve("b", {{0, 1}, {10, 5}});
    manager.setSelectedCurves({nullptr, shown});
    shown->selectAllCPs();
    listed->selectAllCPs();

    manager.computeTangentsOfSelectedCPs(4); // flat
    EXPECT_EQ(shown->getCPs()[0].getTangentType(), 4);
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().x, 5.0) << "half of the frames to the neighbour";
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().y, 1.0);
    EXPECT_EQ(listed->getCPs()[0].getTangentType(), 6);

    manager.computeDistancesToMouseOfAllSelected(3, 4);
    double dx = 0;
    double dy = 0;
    shown->getCPs()[1].getDistance2Mouse(dx, dy);
    EXPECT_EQ(dx, 7.0);
    EXPECT_EQ(dy, 1.0);
    listed->getCPs()[1].getDistance2Mouse(dx, dy);
    EXPECT_EQ(dx, 0.0);

    manager.constantCurveBetweenSelected();
    EXPECT_EQ(shown->getCPs()[0].getTangentType(), 1);
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().x, 0.0);
    EXPECT_EQ(listed->getCPs()[0].getTangentType(), 6);
}

TEST_F(Editing, theTangentLengthIsStoredAndTakesEffectWithTheNextComputation) {
    kvAnimationCurve* shown = curve("a", {});
    for (const float frame : {0.0F, 12.0F})
        shown->insertCP(frame, 0.0);
    manager.setSelectedCurves({shown});
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().x, 6.0);
    manager.setTangentLength(1);
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().x, 6.0) << "setting recomputes nothing";
    manager.computeTangents();
    EXPECT_EQ(shown->getCPs()[0].getOutTangent().x, 2.0);
}

TEST_F(Editing, valuesOfSelectedKeysChangeAndTheirFramesStay) {
    kvAnimationCurve* a = curve("a", {{0, 1}, {5, 2}, {9, 3}});
    kvAnimationCurve* b = curve("b", {{1, 1}});
    select(a, 0);
    select(a, 2);
    select(b, 0);
    manager.setSelectedCurves({a, b});
    manager.changeValueOfSelectedCPs(7.5F);
    EXPECT_EQ(frames(a), (Floats{0, 5, 9}));
    EXPECT_EQ(values(a), (Floats{7.5F, 2, 7.5F}));
    EXPECT_EQ(values(b), (Floats{7.5F}));
}

TEST_F(Editing, theFrameOfOneSelectedKeyChangesAndTheListIsSorted) {
    kvAnimationCurve* a = curve("a", {{0, 1}, {5, 2}, {9, 3}});
    select(a, 0);
    manager.setSelectedCurves({a});
    manager.changeFrameOfSelectedCPs(7);
    EXPECT_EQ(frames(a), (Floats{5, 7, 9}));
    EXPECT_EQ(values(a), (Floats{2, 1, 3}));
}

TEST_F(Editing, severalSelectedKeysAreMovedByTheirPlacesNotByTheirIdentity) {
    // Places 0 and 1 are picked. Moving the first key to 7 brings the second key to place 0 and the
    // first to place 1, which is moved again: the second key stays where it was.
    kvAnimationCurve* a = curve("a", {{0, 1}, {5, 2}, {9, 3}});
    select(a, 0);
    select(a, 1);
    manager.setSelectedCurves({a});
    manager.changeFrameOfSelectedCPs(7);
    EXPECT_EQ(frames(a), (Floats{5, 7, 9}));
    EXPECT_EQ(values(a), (Floats{2, 1, 3}));
}

TEST_F(Editing, keysMovedFromTheRightKeepTheirOrderAtTheFrame) {
    kvAnimationCurve* a = curve("a", {{0, 1}, {5, 2}, {9, 3}});
    select(a, 1);
    select(a, 2);
    manager.setSelectedCurves({a});
    manager.changeFrameOfSelectedCPs(2);
    EXPECT_EQ(frames(a), (Floats{0, 2, 2}));
    EXPECT_EQ(values(a), (Floats{1, 2, 3}));
}

/// changeFrameOfSelectedCPs as it is told, with nothing but public operations.
void changeFrameLiterally(kvAnimationCurve& curve, float frame) {
    for (kvControlPoint* key : curve.getSelectedCPs())
        curve.moveCPTo(key, frame, static_cast<float>(key->getPoint().y));
}

/// Bit by bit, so that NaN equals itself.
void expectSamePoint(kvControlPoint::Point a, kvControlPoint::Point b) {
    EXPECT_TRUE(std::memcmp(&a.x, &b.x, sizeof a.x) == 0) << a.x << " and " << b.x;
    EXPECT_TRUE(std::memcmp(&a.y, &b.y, sizeof a.y) == 0) << a.y << " and " << b.y;
}

TEST_F(Editing, changingFramesEqualsTheLiteralLoopKeyByKeyAndHandleByHandle) {
    unsigned random = 12345;
    const auto next = [&random](unsigned limit) {
        random = random * 1664525U + 1013904223U;
        return (random >> 16) % limit;
    };
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        kvAnimationCurve edited("edited");
        edited.setTangentLength(static_cast<int>(next(5)));
        const unsigned count = next(14);
        for (unsigned i = 0; i != count; ++i) {
            const auto frame = static_cast<float>(next(30));
            const auto type = static_cast<int>(next(8));
            edited.importControlPoint(frame, static_cast<float>(next(9)), frame - 1, 2, frame + 3,
                                      4, type);
        }
        for (unsigned i = 0; i != edited.getCPs().size(); ++i) {
            if (next(2) == 0) edited.selectCP(edited.getCPs()[i]);
        }
        // Now and then keys share a frame or have none, or nobody has sorted the list yet.
        if (next(4) == 0) {
            for (kvControlPoint& key : edited.getCPs()) {
                if (next(3) == 0) key.setPoint({static_cast<double>(next(8)), 5.1});
                if (next(12) == 0) key.setPoint({std::nan(""), 1.0});
            }
            if (next(2) == 0) edited.sortCPs();
        }
        edited.computeLinkedList();
        kvAnimationCurve literal(edited);
        literal.computeLinkedList();
        const float frame = static_cast<float>(next(34)) - 2;
        manager.setSelectedCurves({&edited});
        manager.changeFrameOfSelectedCPs(frame);
        changeFrameLiterally(literal, frame);
        ASSERT_EQ(edited.getCPs().size(), literal.getCPs().size());
        for (std::size_t i = 0; i != edited.getCPs().size(); ++i) {
            const kvControlPoint& a = std::as_const(edited).getCPs()[i];
            const kvControlPoint& b = std::as_const(literal).getCPs()[i];
            ASSERT_EQ(a.getId(), b.getId());
            expectSamePoint(a.getPoint(), b.getPoint());
            expectSamePoint(a.getInTangent(), b.getInTangent());
            expectSamePoint(a.getOutTangent(), b.getOutTangent());
            EXPECT_EQ(a.isSelected(), b.isSelected());
        }
        // Both are known to be sorted and linked again: the next insertion recomputes neighbours.
        edited.insertCP(3.25, 1.0);
        literal.insertCP(3.25, 1.0);
        ASSERT_EQ(frames(&edited).size(), frames(&literal).size());
        for (std::size_t i = 0; i != edited.getCPs().size(); ++i)
            expectSamePoint(std::as_const(edited).getCPs()[i].getOutTangent(),
                            std::as_const(literal).getCPs()[i].getOutTangent());
    }
}

// --- deleting ---------------------------------------------------------------------------------

TEST_F(Editing, deletingLeavesCurvesThatKeepAKeyWhereTheyAre) {
    kvAnimationCurve* a = registeredCurve("a", {{0, 1}, {5, 2}});
    select(a, 0);
    manager.setSelectedCurves({a});
    manager.deleteSelectedCPs();
    EXPECT_EQ(frames(a), (Floats{5}));
    EXPECT_EQ(*manager.getSelectedCurves(), (Curves{a}));
    EXPECT_EQ(*manager.getAnimCurves(), (Curves{a}));
}

TEST_F(Editing, adjacentCurvesThatLoseAllKeysBothLeaveBothLists) {
    kvAnimationCurve* first = registeredCurve("a", {{0, 1}});
    kvAnimationCurve* second = registeredCurve("b", {{0, 1}, {5, 2}});
    kvAnimationCurve* kept = registeredCurve("c", {{0, 1}});
    first->selectAllCPs();
    second->selectAllCPs();
    manager.setSelectedCurves({first, second, kept});
    manager.deleteSelectedCPs();
    EXPECT_EQ(*manager.getSelectedCurves(), (Curves{kept}));
    EXPECT_EQ(*manager.getAnimCurves(), (Curves{kept}));
    EXPECT_EQ(first->getAnimatedAttribute(), "a") << "the emptied curves live on";
}

TEST_F(Editing, everyCurveWithTheEmptiedOnesIdLeavesTheCurveList) {
    kvAnimationCurve* emptied = registeredCurve("a", {{0, 1}});
    kvAnimationCurve* namesake = registeredCurve("b", {{0, 1}});
    kvAnimationCurve* other = registeredCurve("c", {{0, 1}});
    emptied->setId(7);
    namesake->setId(7);
    other->setId(8);
    emptied->selectAllCPs();
    manager.setSelectedCurves({emptied, namesake});
    manager.deleteSelectedCPs();
    EXPECT_EQ(*manager.getAnimCurves(), (Curves{other}));
    EXPECT_EQ(*manager.getSelectedCurves(), (Curves{namesake})) << "only the entry itself leaves";
}

TEST_F(Editing, anEmptiedCurveStaysInItsBlock) {
    kvAnimationBlock* made = block("b", 0, 1);
    manager.showInEditor(made);
    made->getLastInsertedCurve()->selectAllCPs();
    manager.deleteSelectedCPs();
    EXPECT_TRUE(manager.getSelectedCurves()->empty());
    EXPECT_EQ(made->getBlockCurves().size(), 1U);
}

TEST_F(Editing, aCurveThatNeverHadKeysLeavesOnDeletionToo) {
    kvAnimationCurve* keyless = registeredCurve("a", {});
    manager.setSelectedCurves({keyless, nullptr, keyless});
    manager.deleteSelectedCPs();
    EXPECT_EQ(*manager.getSelectedCurves(), (Curves{nullptr}));
    EXPECT_TRUE(manager.getAnimCurves()->empty());
}

// --- queries ----------------------------------------------------------------------------------

TEST_F(Editing, theFirstSelectedCurveThatIsHitIsAnswered) {
    kvAnimationCurve* far = curve("far", {{100, 100}});
    kvAnimationCurve* first = curve("first", {{10, 10}});
    kvAnimationCurve* second = curve("second", {{10, 10}});
    manager.setSelectedCurves({nullptr, far, first, second});
    EXPECT_EQ(manager.checkForHitWithCurveCP(15.9, 10, 1, 1), first);
    EXPECT_EQ(manager.checkForHitWithCurveCP(16.0, 10, 1, 1), nullptr);
    EXPECT_EQ(manager.checkForHitWithCurveCP(100, 100, 1, 1), far);
}

class ViewRange : public Editing {
  protected:
    struct Range {
        double maxFrame = 1;
        double maxValue = 2;
        double minFrame = 3;
        double minValue = 4;
    };

    Range of(const Curves& curves) {
        manager.setSelectedCurves(curves);
        Range range;
        manager.getMaxMinValues(range.maxFrame, range.maxValue, range.minFrame, range.minValue);
        return range;
    }

    static void expect(const Range& range, double maxFrame, double maxValue, double minFrame,
                       double minValue) {
        EXPECT_EQ(range.maxFrame, maxFrame);
        EXPECT_EQ(range.maxValue, maxValue);
        EXPECT_EQ(range.minFrame, minFrame);
        EXPECT_EQ(range.minValue, minValue);
    }
};

TEST_F(ViewRange, withoutSelectedCurvesItHasItsDefaults) {
    expect(of({}), 30, 15, -10, -5);
}

TEST_F(ViewRange, itSpansTheKeysOfAllSelectedCurves) {
    expect(of({curve("a", {{0, 1}, {5, 9}}), curve("b", {{-3, 4}, {2, -8}})}), 5, 9, -3, -8);
}

TEST_F(ViewRange, aSingleKeyIsGivenRoomOnAllSides) {
    expect(of({curve("a", {{12, 3}})}), 42, 18, 2, -2);
}

TEST_F(ViewRange, onlyTheAxisThatIsAPointIsWidened) {
    expect(of({curve("a", {{0, 3}, {8, 3}})}), 8, 18, 0, -2);
    expect(of({curve("a", {{4, 1}}), curve("b", {{4, 6}})}), 34, 6, -6, 1);
}

TEST_F(ViewRange, keylessCurvesAloneLeaveTheStartOfTheSearch) {
    expect(of({curve("a", {})}), -9999, -9999, 9999, 9999);
    expect(of({nullptr}), -9999, -9999, 9999, 9999);
}

TEST_F(ViewRange, keylessCurvesBesideOthersDoNotCount) {
    expect(of({curve("a", {{20, 30}, {40, 50}}), curve("b", {})}), 40, 50, 20, 30);
}

TEST_F(ViewRange, theSearchStartsAtPlusAndMinus9999) {
    expect(of({curve("a", {{20000, 0}, {30000, 1}})}), 30000, 1, 9999, 0);
}

TEST_F(Editing, neighboursOfAFrameComeFromTheKeyList) {
    kvAnimationCurve* a = curve("a", {{0, 1}, {5, 2}, {9, 3}});
    const std::vector<kvControlPoint*> pair = manager.getPrevAndNextCP(5.0, a);
    ASSERT_EQ(pair.size(), 2U);
    EXPECT_EQ(pair[0]->getPoint().x, 0.0);
    EXPECT_EQ(pair[1]->getPoint().x, 9.0);
    EXPECT_TRUE(manager.getPrevAndNextCP(5.0, nullptr).empty());
    EXPECT_TRUE(manager.getPrevAndNextCP(5.0, curve("b", {{0, 1}})).empty());
}

TEST_F(Editing, theEmptyKeyListIsOneAndEmpty) {
    EXPECT_TRUE(manager.getEmptyCPList()->empty());
    EXPECT_EQ(manager.getEmptyCPList(), manager.getEmptyCPList());
}

TEST_F(Editing, snappingRoundsTheChosenCoordinatesHalvesAwayFromZero) {
    const auto snapped = [&](float x, float y, bool frame, bool value) {
        const osg::Vec2f result = manager.snap(osg::Vec2f(x, y), frame, value);
        return std::pair<float, float>(result[0], result[1]);
    };
    using Pair = std::pair<float, float>;
    EXPECT_EQ(snapped(2.5F, -2.5F, true, true), Pair(3, -3));
    EXPECT_EQ(snapped(2.49F, 7.7F, true, false), Pair(2, 7.7F));
    EXPECT_EQ(snapped(2.49F, 7.7F, false, true), Pair(2.49F, 8));
    EXPECT_EQ(snapped(2.49F, 7.7F, false, false), Pair(2.49F, 7.7F));
    EXPECT_EQ(snapped(0.49999997F, -0.49999997F, true, true), Pair(0, 0))
        << "half is added in double precision";
    EXPECT_EQ(snapped(1.0e20F, -3.0e9F, true, true), Pair(1.0e20F, -3.0e9F));
    EXPECT_TRUE(std::isnan(snapped(std::numeric_limits<float>::quiet_NaN(), 0, true, true).first));
}

} // namespace
