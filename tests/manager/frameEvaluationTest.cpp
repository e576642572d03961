// Values at a frame for curves and blocks: what is dropped, what is kept, and the hold rule just
// inside and just outside of each of its limits.

#include "manager/frameEvaluation.h"
#include "manager/fixture.h"

#include <OpenSG/OSGGroup.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace kv::test;

namespace {

using Fields = std::vector<kvAnimationUtils2::AnimationField>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class Evaluation : public SceneTest {
  protected:
    /// Binds the curve under a name of its own, by which its records are recognised.
    static kvAnimationCurve* bound(kvAnimationCurve* curve, const std::string& name) {
        kvAnimationUtils2::AnimationField field;
        field.fieldName = name;
        curve->setAnimationField(field);
        return curve;
    }

    static std::vector<std::string> names(const Fields& fields) {
        std::vector<std::string> result;
        for (const auto& field : fields)
            result.push_back(field.fieldName);
        return result;
    }

    using Names = std::vector<std::string>;
};

// --- one curve --------------------------------------------------------------------------------

TEST_F(Evaluation, aCurveWithFewerThanTwoKeysHasNoValue) {
    EXPECT_EQ(kvAnimationManager2::computeCurveValue(nullptr, 0), -1.0e23F);
    EXPECT_EQ(kvAnimationManager2::computeCurveValue(curve("a", {}), 0), -1.0e23F);
    EXPECT_EQ(kvAnimationManager2::computeCurveValue(curve("a", {{0, 1}}), 0), -1.0e23F);
    EXPECT_EQ(kvAnimationManager2::computeCurveValue(curve("a", {{0, 1}, {5, 2}}), 4.5F), 1.0F);
}

TEST_F(Evaluation, theSentinelIsDroppedAndNaNIsKept) {
    kvAnimationCurve* keyless = bound(curve("none", {}), "none");
    kvAnimationCurve* single = bound(curve("single", {{0, 1}}), "single");
    kvAnimationCurve* sentinel = bound(curve("sentinel", {{0, 1}, {9, -1.0e23F}}), "sentinel");
    kvAnimationCurve* below = bound(curve("below", {{0, 1}, {9, -1.00001e23F}}), "below");
    kvAnimationCurve* nan = bound(curve("nan", {{0, 1}, {9, kNaN}}), "nan");
    manager.setSelectedCurves({keyless, single, sentinel, below, nan, nullptr});

    const Fields fields = manager.getUpdatedAnimationFields(9.0F);
    EXPECT_EQ(names(fields), (Names{"below", "nan"}));
    EXPECT_EQ(fields[0].value, -1.00001e23F);
    EXPECT_TRUE(std::isnan(fields[1].value));

    const auto maps = manager.computeCurveValues(9.0F);
    ASSERT_EQ(maps.size(), 2U);
    EXPECT_EQ(maps[0].attribute, "below");
    EXPECT_EQ(maps[1].attribute, "nan");
    EXPECT_TRUE(std::isnan(maps[1].value));
}

TEST_F(Evaluation, aMapHoldsTheCurvesNodeAttributeAndValue) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    kvAnimationCurve* made = curve("translateX", {{0, 3}, {5, 4}});
    made->setAppropriateNode(node);
    manager.setSelectedCurves({made});
    const auto maps = manager.computeCurveValues(2.0F);
    ASSERT_EQ(maps.size(), 1U);
    EXPECT_TRUE(maps[0].node == node);
    EXPECT_EQ(maps[0].attribute, "translateX");
    EXPECT_EQ(maps[0].value, 3.0F);
}

TEST_F(Evaluation, aCurveWhoseNodeIsGoneStillMakesAMapWithANullNode) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    kvAnimationCurve* made = curve("translateX", {{0, 3}, {5, 4}});
    made->setAppropriateNode(node);
    removeNode(root, node);
    manager.setSelectedCurves({made});
    const auto maps = manager.computeCurveValues(2.0F);
    ASSERT_EQ(maps.size(), 1U);
    EXPECT_TRUE(maps[0].node == osg::NullFC);
}

TEST_F(Evaluation, mapsOfABlockIgnoreItsFlagsAndRange) {
    kvAnimationBlock* made = block("b", 10, 20);
    made->setActive(false);
    EXPECT_EQ(manager.computeCurveValues(made, 0.0F).size(), 1U);
    EXPECT_EQ(manager.computeCurveValues(made, 99.0F).size(), 1U);
    EXPECT_TRUE(manager.computeCurveValues(static_cast<kvAnimationBlock*>(nullptr), 0.0F).empty());
}

TEST_F(Evaluation, onlyTheValueOfTheCopiedRecordChanges) {
    kvAnimationUtils2::AnimationField field;
    field.node = root;
    field.fcId = 4711;
    field.coreTypeId = 12;
    field.fieldName = "from a rather long name that lives on the heap";
    field.globalFieldName = "translation";
    field.value = 99.0F;
    field.valuePosition = 2;
    field.componentCount = 3;
    field.dirty = false;
    kvAnimationCurve* made = curve("a", {{0, 1}, {9, 2}});
    made->setAnimationField(field);
    manager.setSelectedCurves({made});
    const Fields fields = manager.getUpdatedAnimationFields(9.0F);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_TRUE(fields[0].node == root);
    EXPECT_EQ(fields[0].fcId, 4711U);
    EXPECT_EQ(fields[0].coreTypeId, 12U);
    EXPECT_EQ(fields[0].fieldName, field.fieldName);
    EXPECT_EQ(fields[0].globalFieldName, "translation");
    EXPECT_EQ(fields[0].valuePosition, 2);
    EXPECT_EQ(fields[0].componentCount, 3);
    EXPECT_FALSE(fields[0].dirty);
    EXPECT_EQ(fields[0].value, 2.0F);
    EXPECT_EQ(made->getAnimationField().value, 99.0F) << "the curve's own record is only read";
}

// --- the hold rule ----------------------------------------------------------------------------

class HoldRule : public Evaluation {
  protected:
    HoldRule() {
        // Together they cover -10 to 20. "early" starts first, "late" ends last, "inner" touches
        // neither end, "whole" both.
        manager.setSelectedCurves({bound(curve("", {{-10, 1}, {5, 2}}), "early"),
                                   bound(curve("", {{0, 3}, {20, 4}}), "late"),
                                   bound(curve("", {{0, 5}, {10, 6}}), "inner"),
                                   bound(curve("", {{-10, 7}, {20, 8}}), "whole")});
    }

    Names at(float frame) { return names(manager.getUpdatedAnimationFields(frame)); }

    static float after(float frame) { return std::nextafterf(frame, 1000.0F); }
    static float before(float frame) { return std::nextafterf(frame, -1000.0F); }
};

TEST_F(HoldRule, insideItsOwnRangeAChildAlwaysCountsBothEndsIncluded) {
    EXPECT_EQ(at(0), (Names{"early", "late", "inner", "whole"}));
    EXPECT_EQ(at(before(0)), (Names{"early", "whole"}));
    EXPECT_EQ(at(5), (Names{"early", "late", "inner", "whole"}));
    EXPECT_EQ(at(after(5)), (Names{"late", "inner", "whole"}));
    EXPECT_EQ(at(10), (Names{"late", "inner", "whole"}));
    EXPECT_EQ(at(after(10)), (Names{"late", "whole"}));
    EXPECT_EQ(at(before(20)), (Names{"late", "whole"}));
}

TEST_F(HoldRule, atExactlyTheEndEveryChildCounts) {
    EXPECT_EQ(at(20), (Names{"early", "late", "inner", "whole"}));
}

TEST_F(HoldRule, pastTheEndOnlyThoseThatEndThereHoldTheirLastValue) {
    const Fields fields = manager.getUpdatedAnimationFields(after(20));
    EXPECT_EQ(names(fields), (Names{"late", "whole"}));
    EXPECT_EQ(fields[0].value, 4.0F);
    EXPECT_EQ(fields[1].value, 8.0F);
    EXPECT_EQ(at(1.0e30F), (Names{"late", "whole"}));
    EXPECT_EQ(at(std::numeric_limits<float>::infinity()), (Names{"late", "whole"}));
}

TEST_F(HoldRule, atExactlyTheStartEveryChildCounts) {
    EXPECT_EQ(at(-10), (Names{"early", "late", "inner", "whole"}));
    EXPECT_EQ(at(after(-10)), (Names{"early", "whole"}));
}

TEST_F(HoldRule, beforeTheStartOnlyThoseThatStartThereHoldTheirFirstValue) {
    const Fields fields = manager.getUpdatedAnimationFields(before(-10));
    EXPECT_EQ(names(fields), (Names{"early", "whole"}));
    EXPECT_EQ(fields[0].value, 1.0F);
    EXPECT_EQ(fields[1].value, 7.0F);
    EXPECT_EQ(at(-std::numeric_limits<float>::infinity()), (Names{"early", "whole"}));
}

TEST_F(HoldRule, noChildCountsAtANaNFrame) {
    EXPECT_TRUE(at(kNaN).empty());
}

TEST_F(Evaluation, theBlockOfTwoCurvesHoldsOnlyTheOneThatEndsLast) {
    auto* made = keep(new kvAnimationBlock("b"));
    made->addCurve(bound(newCurve("", {{0, 1}, {10, 2}}), "short"));
    made->addCurve(bound(newCurve("", {{0, 3}, {20, 4}}), "long"));
    const auto at = [&](float frame) {
        return names(manager.getUpdatedAnimationFields(made, frame, false, false));
    };
    EXPECT_EQ(at(15), (Names{"long"}));
    EXPECT_EQ(at(25), (Names{"long"}));
    EXPECT_EQ(at(20), (Names{"short", "long"}));
    EXPECT_EQ(manager.getUpdatedAnimationFields(made, 20.0F, false, false)[0].value, 2.0F);
    EXPECT_EQ(manager.getUpdatedAnimationFields(made, 25.0F, false, false)[0].value, 4.0F);
}

TEST_F(Evaluation, aKeylessCurveEntersTheRangeWithItsInvertedPair) {
    // 99999 as start and -99999 as end never widen a range of ordinary frames, but they do widen
    // one that lies beyond them: here the end is -99999, so the keyed curve ends before it.
    kvAnimationCurve* keyed = bound(curve("", {{-300000, 1}, {-200000, 2}}), "keyed");
    manager.setSelectedCurves({keyed});
    EXPECT_EQ(names(manager.getUpdatedAnimationFields(0)), (Names{"keyed"}));
    manager.setSelectedCurves({keyed, curve("", {})});
    EXPECT_TRUE(manager.getUpdatedAnimationFields(0).empty());
    EXPECT_EQ(names(manager.getUpdatedAnimationFields(-99999)), (Names{"keyed"}));
}

TEST_F(Evaluation, rangesAreComparedInSinglePrecision) {
    // The keys end at 0.1 as a double above float(0.1); as floats the two ends are one.
    kvAnimationCurve* first = bound(curve("", {}), "first");
    first->insertCP(-1.0, 1.0);
    first->insertCP(0.1 + 1e-12, 2.0);
    kvAnimationCurve* second = bound(curve("", {}), "second");
    second->insertCP(-1.0, 1.0);
    second->insertCP(0.1, 2.0);
    manager.setSelectedCurves({first, second});
    EXPECT_EQ(names(manager.getUpdatedAnimationFields(5.0F)), (Names{"first", "second"}));
}

TEST_F(Evaluation, aBlockCountsOnlyWhenItsFlagsAllow) {
    kvAnimationBlock* made = block("b", 0, 10);
    const auto count = [&](bool motionBlurOnly, bool ignoreActivity) {
        return manager.getUpdatedAnimationFields(made, 5.0F, motionBlurOnly, ignoreActivity).size();
    };
    EXPECT_EQ(count(false, false), 1U);
    EXPECT_EQ(count(true, false), 0U);
    EXPECT_EQ(count(true, true), 0U) << "ignoring activity does not ignore motion blur";
    made->setMotionBlur(true);
    EXPECT_EQ(count(true, false), 1U);
    made->setActive(false);
    EXPECT_EQ(count(false, false), 0U);
    EXPECT_EQ(count(true, false), 0U);
    EXPECT_EQ(count(false, true), 1U);
    EXPECT_EQ(count(true, true), 1U);
}

TEST_F(Evaluation, aNullBlockOrClipGivesNothing) {
    kvAnimationBlock* noBlock = nullptr;
    kvAnimationClip* noClip = nullptr;
    EXPECT_TRUE(manager.getUpdatedAnimationFields(noBlock, 0, false, true).empty());
    EXPECT_TRUE(manager.getUpdatedAnimationFields(noClip, 0, false, true).empty());
    EXPECT_TRUE(manager.computeCurveValues(noClip, 0, false).empty());
    EXPECT_TRUE(manager.computeSequences(nullptr, 0).empty());
    manager.checkAndExecSkippedSequences(nullptr, 0);
}

TEST_F(Evaluation, aBlocksOwnRangeIsNotAsked) {
    kvAnimationBlock* made = block("b", 0, 10);
    made->getBlockCurves()[0]->stretchRight(50); // the cached range still ends at 10
    EXPECT_EQ(made->getEndFrame(), 10.0F);
    EXPECT_EQ(manager.getUpdatedAnimationFields(made, 30.0F, false, false).size(), 1U);
}

TEST_F(Evaluation, appendingKeepsWhatTheVectorHolds) {
    kvAnimationBlock* made = block("b", 0, 10);
    Fields kept(2);
    kv::detail::appendUpdatedFields(kept, made, 5.0F, false, false);
    kv::detail::appendUpdatedFields(kept, made->getBlockCurves(), 5.0F);
    EXPECT_EQ(kept.size(), 4U);
    EXPECT_EQ(kept[0].value, 0.0F);
    EXPECT_EQ(kept[3].value, 1.0F);
}

// --- ranges and numbers -----------------------------------------------------------------------

TEST_F(Evaluation, theRangeOfNoCurvesIsTheInvertedPair) {
    EXPECT_EQ(manager.getStartEndOfCurves({}), (std::pair<float, float>(1.0e23F, -1.0e23F)));
    EXPECT_EQ(manager.getStartEndOfCurves({nullptr}), (std::pair<float, float>(1.0e23F, -1.0e23F)));
}

TEST_F(Evaluation, theRangeOfCurvesIsTheirEarliestStartAndLatestEnd) {
    kvAnimationCurve* a = curve("a", {{3, 0}, {7, 0}});
    kvAnimationCurve* b = curve("b", {{-2, 0}, {5, 0}});
    kvAnimationCurve* none = curve("c", {});
    EXPECT_EQ(manager.getStartEndOfCurves({a, b}), (std::pair<float, float>(-2.0F, 7.0F)));
    EXPECT_EQ(manager.getStartEndOfCurves({a, none, b}), (std::pair<float, float>(-2.0F, 7.0F)));
    EXPECT_EQ(manager.getStartEndOfCurves({none}), (std::pair<float, float>(99999.0F, -99999.0F)));
}

TEST_F(Evaluation, setPrecisionCutsTowardMinusInfinity) {
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(2.999F, 2), 2.99F);
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(1.239F, 2), 1.23F);
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(-1.231F, 2), -1.24F);
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(-1.5F, 0), -2.0F);
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(1.2345F, 3), 1.234F);
    EXPECT_FLOAT_EQ(kvAnimationManager2::setPrecision(1234.5F, -2), 1200.0F);
    EXPECT_TRUE(std::isnan(kvAnimationManager2::setPrecision(kNaN, 2)));
}

TEST_F(Evaluation, setPrecisionWorksInSinglePrecision) {
    // 0.29 as a float times 100 is 28.999999 in double but 29 when rounded to float.
    EXPECT_EQ(kvAnimationManager2::setPrecision(0.29F, 2), 29.0F / 100.0F);
}

} // namespace
