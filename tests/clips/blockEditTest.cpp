// Blocks: the gestures that move, stretch and mirror them, copies and assignment.

#include "support/access/kvAnimationBlock.h"
#include "support/access/kvControlPoint.h"
#include "support/clipBuilders.h"

#include <kvAnimationManager2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

using kvtest::newBlock;
using kvtest::newCurve;
using Access = kvTestAccess<kvAnimationBlock>;
using Links = kvTestAccess<kvControlPoint>;

const float kNaN = std::numeric_limits<float>::quiet_NaN();

double frameOf(const kvAnimationCurve& curve, std::size_t key) {
    return curve.getCPs().at(key).getPoint().x;
}

} // namespace

TEST(BlockMove, shiftsRangeKeysAndHandles) {
    const kvtest::BlockOwner block(newBlock(10, 20));
    block->moveBlock(2.5F);
    EXPECT_EQ(block->getStartFrame(), 12.5F);
    EXPECT_EQ(block->getEndFrame(), 22.5F);
    const kvControlPoint key = block->getBlockCurves().front()->getCPs().front();
    EXPECT_EQ(key.getPoint().x, 12.5);
    EXPECT_EQ(key.getPoint().y, 100.0);
    EXPECT_EQ(key.getInTangent().x, 12.25);
    EXPECT_EQ(key.getInTangent().y, 99.0);
    EXPECT_EQ(key.getOutTangent().x, 12.75);
    EXPECT_EQ(key.getOutTangent().y, 101.0);
}

TEST(BlockMove, byNothingRoundsAllSixCoordinates) {
    kvAnimationBlock block;
    auto* curve = new kvAnimationCurve("x");
    curve->insertCP(0.1, 0.2);
    kvControlPoint& key = curve->getCPs().front();
    key.setInTangent({0.3, 0.4});
    key.setOutTangent({0.6, 0.7});
    block.addCurve(curve);
    block.moveBlock(0);
    const kvControlPoint moved = std::as_const(*curve).getCPs().front();
    EXPECT_EQ(moved.getPoint().x, static_cast<double>(0.1F));
    EXPECT_EQ(moved.getPoint().y, static_cast<double>(0.2F));
    EXPECT_EQ(moved.getInTangent().x, static_cast<double>(0.3F));
    EXPECT_EQ(moved.getInTangent().y, static_cast<double>(0.4F));
    EXPECT_EQ(moved.getOutTangent().x, static_cast<double>(0.6F));
    EXPECT_EQ(moved.getOutTangent().y, static_cast<double>(0.7F));
}

TEST(BlockMove, addsInSinglePrecision) {
    // 16777216 is the first float after which odd numbers are missing.
    kvAnimationBlock block;
    auto* curve = new kvAnimationCurve("x");
    curve->insertCP(16777216.0, 0.0);
    block.addCurve(curve);
    block.moveBlock(1);
    EXPECT_EQ(frameOf(*curve, 0), 16777216.0);
}

TEST(BlockMove, withoutCurvesMovesNothing) {
    kvAnimationBlock block;
    block.moveBlock(10);
    EXPECT_EQ(block.getStartFrame(), 99999.0F);
    EXPECT_EQ(block.getEndFrame(), -99999.0F);
}

TEST(BlockMove, shiftsTheRangeAndDoesNotComputeIt) {
    const kvtest::BlockOwner block(newBlock(10, 20));
    block->getBlockCurves().front()->deleteExistingKey(20);
    block->moveBlock(1);
    EXPECT_EQ(block->getEndFrame(), 21.0F);
}

TEST(BlockMove, byNaNGivesNaN) {
    const kvtest::BlockOwner block(newBlock(10, 20));
    block->moveBlock(kNaN);
    EXPECT_TRUE(std::isnan(block->getStartFrame()));
    EXPECT_TRUE(std::isnan(frameOf(*block->getBlockCurves().front(), 1)));
    EXPECT_FALSE(block->frameInBlockRange(10));
}

TEST(BlockStretch, leftMapsEachCurveOverItsOwnRange) {
    kvAnimationBlock block;
    block.addCurve(newCurve({5, 10, 15}));
    block.addCurve(newCurve({10, 15}));
    block.stretchLeft(0);
    const kvAnimationCurve& first = *block.getBlockCurves()[0];
    const kvAnimationCurve& second = *block.getBlockCurves()[1];
    EXPECT_EQ(frameOf(first, 0), 0.0);
    EXPECT_EQ(frameOf(first, 1), 7.5);
    EXPECT_EQ(frameOf(first, 2), 15.0);
    EXPECT_EQ(frameOf(second, 0), 0.0);
    EXPECT_EQ(frameOf(second, 1), 15.0);
    EXPECT_EQ(block.getStartFrame(), 0.0F);
    EXPECT_EQ(block.getEndFrame(), 15.0F);
}

TEST(BlockStretch, rightMapsEachCurveOverItsOwnRange) {
    kvAnimationBlock block;
    block.addCurve(newCurve({5, 10, 15}));
    block.addCurve(newCurve({5, 10}));
    block.stretchRight(20);
    const kvAnimationCurve& first = *block.getBlockCurves()[0];
    const kvAnimationCurve& second = *block.getBlockCurves()[1];
    EXPECT_EQ(frameOf(first, 0), 5.0);
    EXPECT_EQ(frameOf(first, 1), 12.5);
    EXPECT_EQ(frameOf(first, 2), 20.0);
    EXPECT_EQ(frameOf(second, 0), 5.0);
    EXPECT_EQ(frameOf(second, 1), 20.0);
    EXPECT_EQ(block.getStartFrame(), 5.0F);
    EXPECT_EQ(block.getEndFrame(), 20.0F);
}

TEST(BlockStretch, withoutCurvesChangesNothing) {
    kvAnimationBlock block;
    block.stretchLeft(1);
    block.stretchRight(2);
    EXPECT_EQ(block.getStartFrame(), 99999.0F);
    EXPECT_EQ(block.getEndFrame(), -99999.0F);
}

TEST(BlockEdit, linksTheKeysOfEveryCurve) {
    // A copy has the links of its source until it is edited.
    const kvtest::BlockOwner source(newBlock(10, 20));
    source->addCurve(new kvAnimationCurve("keyless"));
    source->addCurve(nullptr);
    const auto isLinked = [](kvAnimationBlock& block) {
        const std::vector<kvControlPoint>& keys =
            std::as_const(*block.getBlockCurves().front()).getCPs();
        return Links::previous(keys[0]) == nullptr && Links::next(keys[0]) == &keys[1] &&
               Links::previous(keys[1]) == &keys[0] && Links::next(keys[1]) == nullptr;
    };
    kvAnimationBlock moved(*source);
    EXPECT_FALSE(isLinked(moved));
    moved.moveBlock(0);
    EXPECT_TRUE(isLinked(moved));
    kvAnimationBlock left(*source);
    left.stretchLeft(0);
    EXPECT_TRUE(isLinked(left));
    kvAnimationBlock right(*source);
    right.stretchRight(40);
    EXPECT_TRUE(isLinked(right));
    kvAnimationBlock mirrored(*source);
    mirrored.flip();
    EXPECT_TRUE(isLinked(mirrored));
}

TEST(BlockFlip, mirrorsCurvesAndTogglesTheMark) {
    kvAnimationBlock block;
    block.addCurve(newCurve({0, 5, 15}));
    block.flip();
    EXPECT_TRUE(block.getFliped());
    EXPECT_EQ(frameOf(*block.getBlockCurves()[0], 0), 0.0);
    EXPECT_EQ(frameOf(*block.getBlockCurves()[0], 1), 10.0);
    EXPECT_EQ(frameOf(*block.getBlockCurves()[0], 2), 15.0);
    EXPECT_EQ(block.getBlockCurves()[0]->getCPs()[0].getPoint().y, 150.0);
    block.flip();
    EXPECT_FALSE(block.getFliped());
    EXPECT_EQ(frameOf(*block.getBlockCurves()[0], 1), 5.0);
    EXPECT_EQ(block.getBlockCurves()[0]->getCPs()[0].getPoint().y, 0.0);
}

TEST(BlockFlip, withoutCurvesLeavesTheMark) {
    kvAnimationBlock block;
    block.flip();
    EXPECT_FALSE(block.getFliped());
}

TEST(BlockCopy, hasItsOwnCurvesAndFreshIds) {
    kvAnimationBlock source(std::string("door"));
    source.setActive(false);
    source.setRepeat(true);
    source.setFliped(true);
    source.setMotionBlur(true);
    source.setCameraBlock(true);
    source.setAnimatedType(5);
    source.addCurve(newCurve({1, 2}, "x"));
    source.addCurve(nullptr);
    source.addCurve(newCurve({0, 4}, "y"));
    const std::uint32_t counter = Access::nextId();
    const kvAnimationBlock copy(source);
    EXPECT_EQ(Access::nextId(), counter) << "the id is not taken from the counter";
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getId()));
    ASSERT_EQ(copy.getBlockCurves().size(), 2U) << "the null curve is left out";
    EXPECT_NE(copy.getBlockCurves()[0], source.getBlockCurves()[0]);
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getBlockCurves()[0]->getId()));
    EXPECT_TRUE(kvAnimationManager2::checkId(copy.getBlockCurves()[1]->getId()));
    EXPECT_EQ(copy.getBlockCurves()[1]->getAnimatedAttribute(), "y");
    EXPECT_EQ(frameOf(*copy.getBlockCurves()[1], 1), 4.0);
    EXPECT_EQ(copy.getStartFrame(), 0.0F);
    EXPECT_EQ(copy.getEndFrame(), 4.0F);
    EXPECT_EQ(copy.getBlockName(), "door");
    EXPECT_FALSE(copy.getActive());
    EXPECT_TRUE(copy.getRepeat());
    EXPECT_TRUE(copy.getFliped());
    EXPECT_TRUE(copy.getMotionBlur());
    EXPECT_TRUE(copy.isCameraBlock());
    EXPECT_EQ(copy.getAnimatedType(), 5);
}

TEST(BlockCopy, editsOfTheCopyLeaveTheSource) {
    const kvtest::BlockOwner source(newBlock(1, 2));
    kvAnimationBlock copy(*source);
    copy.moveBlock(10);
    EXPECT_EQ(frameOf(*source->getBlockCurves()[0], 0), 1.0);
    EXPECT_EQ(frameOf(*copy.getBlockCurves()[0], 0), 11.0);
}

TEST(BlockCopy, outlivesItsSource) {
    kvtest::BlockOwner source(newBlock(1, 5));
    kvAnimationBlock copy(*source);
    source.reset();
    copy.stretchLeft(0);
    copy.flip();
    EXPECT_EQ(copy.getStartFrame(), 0.0F);
    EXPECT_EQ(copy.getEndFrame(), 5.0F);
}

TEST(BlockAssignment, sharesCurvesAndId) {
    const kvtest::BlockOwner source(newBlock(1, 2, "door"));
    kvAnimationBlock target;
    target = *source;
    EXPECT_EQ(target.getId(), source->getId());
    EXPECT_EQ(target.getBlockName(), "door");
    EXPECT_EQ(target.getBlockCurves(), source->getBlockCurves());
    target.getBlockCurves().clear();
}

TEST(BlockPrint, tellsTheNumberOfCurves) {
    kvAnimationBlock block;
    block.addCurve(newCurve({1, 2}));
    block.addCurve(nullptr);
    testing::internal::CaptureStdout();
    block.printInfo();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "#AnimBlockCurves: 2\n");
}
