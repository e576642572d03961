// The block: its range, its curves and its node.

#include "support/access/kvAnimationBlock.h"
#include "support/clipBuilders.h"

#include <kvAnimationManager2.h>

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

using kvtest::newBlock;
using kvtest::newCurve;
using Access = kvTestAccess<kvAnimationBlock>;

const float kNaN = std::numeric_limits<float>::quiet_NaN();

std::uint32_t bitsOf(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

TEST(BlockDefault, coversNothing) {
    const kvAnimationBlock block;
    EXPECT_EQ(block.getStartFrame(), 99999.0F);
    EXPECT_EQ(block.getEndFrame(), -99999.0F);
    EXPECT_EQ(block.getDuration(), -199998.0F);
    for (const float frame : {-99999.0F, 0.0F, 1.0F, 99999.0F, kNaN})
        EXPECT_FALSE(block.frameInBlockRange(frame)) << frame;
}

TEST(BlockDefault, isActiveAndNothingElse) {
    const kvAnimationBlock block;
    EXPECT_TRUE(block.getActive());
    EXPECT_FALSE(block.getFliped());
    EXPECT_FALSE(block.getRepeat());
    EXPECT_FALSE(block.getMotionBlur());
    EXPECT_FALSE(block.isCameraBlock());
    EXPECT_EQ(block.getAnimatedType(), 0);
    EXPECT_EQ(block.getBlockName(), "");
    EXPECT_TRUE(block.getAppropriateNode() == osg::NullFC);
    EXPECT_TRUE(block.getBlockCurves().empty());
    EXPECT_EQ(block.getLastInsertedCurve(), nullptr);
}

TEST(Block, constructorsTakeConsecutiveIds) {
    const std::uint32_t next = Access::nextId();
    const kvAnimationBlock unnamed;
    const kvAnimationBlock named(std::string("door"));
    const kvAnimationBlock placed((osg::NodePtr()));
    const kvAnimationBlock both(osg::NodePtr(), "door");
    EXPECT_EQ(unnamed.getId(), next);
    EXPECT_EQ(named.getId(), next + 1);
    EXPECT_EQ(placed.getId(), next + 2);
    EXPECT_EQ(both.getId(), next + 3);
    EXPECT_EQ(Access::nextId(), next + 4);
    EXPECT_EQ(named.getBlockName(), "door");
    EXPECT_EQ(both.getBlockName(), "door");
}

TEST(Block, standingBlockIsADefaultOne) {
    EXPECT_EQ(Access::the().getStartFrame(), 99999.0F);
    EXPECT_TRUE(Access::the().getBlockCurves().empty());
}

TEST(Block, keepsTheLow32BitsOfAnId) {
    kvAnimationBlock block;
    block.setId(0x100000007ULL);
    EXPECT_EQ(block.getId(), 7U);
}

TEST(Block, settersReadBack) {
    kvAnimationBlock block;
    block.setCameraBlock(true);
    block.setAnimatedType(255);
    block.setActive(false);
    block.setRepeat(true);
    block.setFliped(true);
    block.setMotionBlur(true);
    EXPECT_TRUE(block.isCameraBlock());
    EXPECT_EQ(block.getAnimatedType(), 255);
    EXPECT_FALSE(block.getActive());
    EXPECT_TRUE(block.getRepeat());
    EXPECT_TRUE(block.getFliped());
    EXPECT_TRUE(block.getMotionBlur());
}

TEST(BlockNode, isFoundAgainByItsId) {
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    kvAnimationBlock block;
    block.setAppropriateNode(node);
    EXPECT_TRUE(block.getAppropriateNode() == node);
    EXPECT_EQ(Access::nodeId(block), osg::getContainerId(node));
    osg::subRefCP(node);
    EXPECT_TRUE(block.getAppropriateNode() == osg::NullFC);
}

TEST(BlockNode, isTakenByBothConstructorsThatNameOne) {
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    const kvAnimationBlock placed(node);
    const kvAnimationBlock named(node, "door");
    EXPECT_TRUE(placed.getAppropriateNode() == node);
    EXPECT_TRUE(named.getAppropriateNode() == node);
    EXPECT_EQ(named.getBlockName(), "door");
    EXPECT_EQ(placed.getBlockName(), "");
    EXPECT_EQ(node.getRefCount(), 1) << "a block holds no reference";
    osg::subRefCP(node);
}

TEST(BlockNode, nullIsIdZero) {
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    kvAnimationBlock block(node);
    block.setAppropriateNode(osg::NullFC);
    EXPECT_EQ(Access::nodeId(block), 0U);
    EXPECT_TRUE(block.getAppropriateNode() == osg::NullFC);
    osg::subRefCP(node);
}

TEST(BlockNode, idOfAContainerThatIsNoNodeGivesNull) {
    osg::GroupPtr core = osg::Group::create();
    osg::addRefCP(core);
    kvAnimationBlock block;
    Access::nodeId(block) = osg::getContainerId(core);
    EXPECT_TRUE(block.getAppropriateNode() == osg::NullFC);
    osg::subRefCP(core);
}

TEST(BlockCurves, addingWidensTheRange) {
    kvAnimationBlock block;
    block.addCurve(newCurve({10, 20}));
    EXPECT_EQ(block.getStartFrame(), 10.0F);
    EXPECT_EQ(block.getEndFrame(), 20.0F);
    block.addCurve(newCurve({12, 18}));
    EXPECT_EQ(block.getStartFrame(), 10.0F);
    EXPECT_EQ(block.getEndFrame(), 20.0F);
    block.addCurve(newCurve({5, 25}));
    EXPECT_EQ(block.getStartFrame(), 5.0F);
    EXPECT_EQ(block.getEndFrame(), 25.0F);
}

TEST(BlockCurves, addingACurveWithoutKeysWidensNothing) {
    kvAnimationBlock block;
    block.addCurve(newCurve({10, 20}));
    block.addCurve(newCurve({}));
    EXPECT_EQ(block.getStartFrame(), 10.0F);
    EXPECT_EQ(block.getEndFrame(), 20.0F);
}

TEST(BlockCurves, nullIsStoredAndSkipped) {
    kvAnimationBlock block;
    block.addCurve(nullptr);
    ASSERT_EQ(block.getBlockCurves().size(), 1U);
    EXPECT_EQ(block.getLastInsertedCurve(), nullptr);
    EXPECT_EQ(block.getStartFrame(), 99999.0F);
    EXPECT_EQ(block.getBlockCurve("x"), nullptr);
    block.stretchLeft(1);
    block.stretchRight(2);
    block.flip();
    EXPECT_TRUE(block.getFliped());
}

TEST(BlockCurves, areFoundByAttributeIfTheFirstHasKeys) {
    kvAnimationBlock block;
    kvAnimationCurve* y = newCurve({0, 1}, "y");
    block.addCurve(newCurve({}, "x"));
    block.addCurve(newCurve({0, 1}, "x"));
    block.addCurve(nullptr);
    block.addCurve(y);
    EXPECT_EQ(block.getBlockCurve("x"), nullptr) << "the second x is not considered";
    EXPECT_EQ(block.getBlockCurve("y"), y);
    EXPECT_EQ(block.getBlockCurve("Y"), nullptr);
    EXPECT_EQ(block.getBlockCurve(""), nullptr);
    EXPECT_EQ(block.getLastInsertedCurve(), y);
}

TEST(BlockBounds, withoutCurvesStay) {
    kvAnimationBlock block;
    block.addCurve(newCurve({3, 4}));
    kvAnimationCurve* curve = block.getBlockCurves().back();
    block.getBlockCurves().clear();
    block.updateBlockBounds();
    EXPECT_EQ(block.getStartFrame(), 3.0F);
    EXPECT_EQ(block.getEndFrame(), 4.0F);
    delete curve;
}

TEST(BlockBounds, ofNullCurvesAreTheSentinels) {
    kvAnimationBlock block;
    block.addCurve(nullptr);
    block.updateBlockBounds();
    EXPECT_EQ(bitsOf(block.getStartFrame()), 0x65A96816U);
    EXPECT_EQ(bitsOf(block.getEndFrame()), 0xE5A96816U);
}

TEST(BlockBounds, ofKeylessCurvesAreTheInvertedPair) {
    kvAnimationBlock block;
    block.addCurve(newCurve({}));
    block.updateBlockBounds();
    EXPECT_EQ(block.getStartFrame(), 99999.0F);
    EXPECT_EQ(block.getEndFrame(), -99999.0F);
}

TEST(BlockBounds, shrinkToTheKeys) {
    kvAnimationBlock block;
    block.addCurve(newCurve({0, 50}));
    block.addCurve(newCurve({10, 20}));
    block.getBlockCurves().front()->deleteExistingKey(0);
    block.getBlockCurves().front()->deleteExistingKey(50);
    block.updateBlockBounds();
    EXPECT_EQ(block.getStartFrame(), 10.0F);
    EXPECT_EQ(block.getEndFrame(), 20.0F);
}

TEST(BlockRange, containsBothEnds) {
    const kvtest::BlockOwner block(newBlock(10, 20));
    EXPECT_TRUE(block->frameInBlockRange(10));
    EXPECT_TRUE(block->frameInBlockRange(20));
    EXPECT_FALSE(block->frameInBlockRange(std::nextafter(10.0F, 0.0F)));
    EXPECT_FALSE(block->frameInBlockRange(std::nextafter(20.0F, 30.0F)));
    EXPECT_FALSE(block->frameInBlockRange(kNaN));
}

TEST(BlockRange, ordersByStart) {
    const kvtest::BlockOwner early(newBlock(1, 20));
    const kvtest::BlockOwner late(newBlock(2, 3));
    EXPECT_TRUE(*early < *late);
    EXPECT_FALSE(*late < *early);
    EXPECT_FALSE(*early < *early);
}
