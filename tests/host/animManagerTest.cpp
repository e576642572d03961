// The channels of nodes, animation nodes and their curves.
#include <kvAnimManager.h>
#include <kvNodeUtils.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGTransform.h>

#include <OSGAnimBlock.h>
#include <OSGAnimClip.h>
#include <OSGAnimCurve.h>
#include <OSGCameraSetting.h>
#include <OSGTransform3D.h>

#include "held.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using kvtest::Held;
using kvtest::Made;
using kvtest::makeNode;

namespace {

typedef std::vector<std::string> Names;

std::vector<kvOSGChannelData> channelsOf(const osg::NodePtr& node) {
    std::vector<kvOSGChannelData> channels(3); // what was there is dropped
    kvAnimManager::the().getKeyableChannels(node, channels);
    return channels;
}

Names fullNamesOf(const osg::NodePtr& node) {
    Names names;
    for (const kvOSGChannelData& channel : channelsOf(node))
        names.push_back(channel.fullName());
    return names;
}

const Names kTransformChannels{"translationX", "translationY", "translationZ", "eulerRX",
                               "eulerRY",      "eulerRZ",      "scaleX",       "scaleY",
                               "scaleZ",       "visible"};

TEST(Channels, ofEveryTransform) {
    const Held<osg::NodePtr> plain(makeNode(osg::Transform::create()));
    const Held<osg::NodePtr> component(makeNode(osg::ComponentTransform::create()));
    const Held<osg::NodePtr> angles(makeNode(osg::Transform3D::create()));
    EXPECT_EQ(fullNamesOf(plain), kTransformChannels);
    EXPECT_EQ(fullNamesOf(component), kTransformChannels);
    EXPECT_EQ(fullNamesOf(angles), kTransformChannels);
}

TEST(Channels, haveNameLabelSuffixAndIndex) {
    const Held<osg::NodePtr> node(makeNode(osg::Transform3D::create()));
    const std::vector<kvOSGChannelData> channels = channelsOf(node);
    ASSERT_EQ(channels.size(), 10u);
    EXPECT_EQ(channels[4].name, "eulerR");
    EXPECT_EQ(channels[4].label, "Rotate");
    EXPECT_EQ(channels[4].suffix, "Y");
    EXPECT_EQ(channels[4].valueIndex, 1u);
    EXPECT_EQ(channels[0].label, "Translate");
    EXPECT_EQ(channels[8].label, "Scale");
    EXPECT_EQ(channels[8].valueIndex, 2u);
    EXPECT_EQ(channels[9].suffix, "");
    EXPECT_EQ(channels[9].valueIndex, 0u);
}

TEST(Channels, ofACamera) {
    const Held<osg::NodePtr> node(makeNode(osg::CameraSetting::create()));
    EXPECT_EQ(fullNamesOf(node), (Names{"fromX", "fromY", "fromZ", "atX", "atY", "atZ", "upX",
                                        "upY", "upZ", "fieldOfView", "fStop", "focalLength",
                                        "height", "distance", "turnTableAngle", "visible"}));
}

TEST(Channels, ofALight) {
    const Held<osg::NodePtr> node(makeNode(osg::DirectionalLight::create()));
    EXPECT_EQ(fullNamesOf(node), (Names{"ambientR", "ambientG", "ambientB", "ambientA", "diffuseR",
                                        "diffuseG", "diffuseB", "diffuseA", "specularR",
                                        "specularG", "specularB", "specularA", "visible"}));
}

TEST(Channels, ofOtherNodes) {
    const Held<osg::NodePtr> group(makeNode(osg::Group::create()));
    const Made<osg::Node> bare;
    EXPECT_EQ(fullNamesOf(group), Names{"visible"});
    EXPECT_EQ(fullNamesOf(bare), Names{"visible"});
    EXPECT_TRUE(fullNamesOf(osg::NullFC).empty());
}

TEST(Channels, canBeGivenToANode) {
    const Made<osg::Node> node, other;
    kvAnimManager::setKeyableChannels(node, {{"gain", "Gain", "L", 7}});
    kvAnimManager::setKeyableChannels(osg::NullFC, {{"x", "", "", 0}});
    EXPECT_EQ(fullNamesOf(node), Names{"gainL"});
    EXPECT_EQ(fullNamesOf(other), Names{"visible"});
    kvAnimManager::resetKeyableChannels();
    EXPECT_EQ(fullNamesOf(node), Names{"visible"});
}

TEST(AnimManager, allCallFormsAreOne) {
    kvAnimManager::the().setFps(30.0);
    EXPECT_EQ(kvAnimManager::fps(), 30.0);
    EXPECT_EQ(kvAnimManager::the()->fps(), 30.0);
    kvAnimManager::setFps(25.0);
}

TEST(AnimManager, runsAt25FramesASecondUnlessSetToANumberAboveZero) {
    EXPECT_EQ(kvAnimManager::fps(), 25.0);
    for (const double useless : {0.0, -24.0, std::nan(""), std::numeric_limits<double>::infinity()})
        kvAnimManager::setFps(useless);
    EXPECT_EQ(kvAnimManager::fps(), 25.0);
}

TEST(AnimManager, colorsGoByTheLastCharacter) {
    const auto expectColor = [](const char* suffix, float r, float g, float b) {
        const osg::Color3f color = kvAnimManager::getDefaultColor(suffix);
        EXPECT_FLOAT_EQ(color[0] * 255.0f, r) << suffix;
        EXPECT_FLOAT_EQ(color[1] * 255.0f, g) << suffix;
        EXPECT_FLOAT_EQ(color[2] * 255.0f, b) << suffix;
    };
    for (const char* red : {"R", "X", "colorR"})
        expectColor(red, 229, 76, 76);
    for (const char* green : {"G", "Y"})
        expectColor(green, 76, 229, 76);
    for (const char* blue : {"B", "Z"})
        expectColor(blue, 102, 159, 208);
    for (const char* yellow : {"A", "I", "W"})
        expectColor(yellow, 229, 211, 76);
    for (const char* orange : {"", "x", "Q"})
        expectColor(orange, 243, 142, 69);
}

class CurveNodes : public ::testing::Test {
  protected:
    CurveNodes() { node->addAttachment(attachment); }

    Made<osg::Node> node;
    osg::AnimAttachmentPtr attachment = osg::AnimAttachment::create();
    kvOSGChannelData channel{"translation", "Translate", "Y", 1};
};

TEST_F(CurveNodes, attachmentIsFoundOnItsNodeOnly) {
    const Made<osg::Node> other;
    EXPECT_TRUE(kvAnimManager::getAnimAttachment(node.get()) == attachment);
    EXPECT_TRUE(kvAnimManager::getAnimAttachment(other.get()) == osg::NullFC);
    EXPECT_TRUE(kvAnimManager::getAnimAttachment(osg::NullFC) == osg::NullFC);
}

TEST_F(CurveNodes, createdOnesHaveTheChannelItsColorAndTheNodesName) {
    kvNodeUtils::setName(node, "arm");
    const osg::AnimNodePtr made = kvAnimManager::createChannelCurveNode(channel, attachment);
    ASSERT_TRUE(made != osg::NullFC);
    EXPECT_EQ(made.getRefCount(), 1);
    ASSERT_EQ(attachment->getAnimations().getSize(), 1u);
    EXPECT_TRUE(attachment->getAnimations(0) == made);
    EXPECT_EQ(kvNodeUtils::getName(made), "arm.TranslateY");
    const osg::AnimCurvePtr curve = osg::AnimCurvePtr::dcast(made->getCore());
    ASSERT_TRUE(curve != osg::NullFC);
    EXPECT_EQ(curve->getName(), "translation");
    EXPECT_EQ(curve->getSuffix(), "Y");
    EXPECT_EQ(curve->getValueIndex(), 1u);
    EXPECT_FLOAT_EQ(curve->getColor()[1], 229.0f / 255.0f);
    EXPECT_EQ(curve->getNPoints(), 0u);
    EXPECT_TRUE(kvAnimManager::findChannelCurveNode(channel, attachment) == made);
}

TEST_F(CurveNodes, areFoundByNameSuffixAndIndexTogether) {
    kvAnimManager::createChannelCurveNode(channel, attachment);
    for (const kvOSGChannelData& other : {kvOSGChannelData{"scale", "Translate", "Y", 1},
                                          kvOSGChannelData{"translation", "Translate", "X", 1},
                                          kvOSGChannelData{"translation", "Translate", "Y", 0}})
        EXPECT_TRUE(kvAnimManager::findChannelCurveNode(other, attachment) == osg::NullFC);
    channel.label = "another";
    EXPECT_TRUE(kvAnimManager::findChannelCurveNode(channel, attachment) != osg::NullFC);
}

TEST_F(CurveNodes, belowBlocksAndOtherNodesAreNotFound) {
    const osg::AnimNodePtr block = osg::AnimNode::create();
    block->setCore(osg::AnimBlock::create());
    attachment->addAnimation(block);
    const osg::AnimNodePtr bare = osg::AnimNode::create();
    attachment->addAnimation(bare);
    attachment->addAnimation(osg::Node::create());
    attachment->getMFAnimations()->push_back(osg::NullFC);
    const osg::AnimNodePtr below = osg::AnimNode::create();
    const osg::AnimCurvePtr core = osg::AnimCurve::create();
    core->setName(channel.name);
    core->setSuffix(channel.suffix);
    core->setValueIndex(channel.valueIndex);
    below->setCore(core);
    block->addChild(below);
    EXPECT_TRUE(kvAnimManager::findChannelCurveNode(channel, attachment) == osg::NullFC);
    EXPECT_TRUE(kvAnimManager::findChannelCurveNode(channel, osg::NullFC) == osg::NullFC);
    EXPECT_TRUE(kvAnimManager::createChannelCurveNode(channel, osg::NullFC) == osg::NullFC);
}

TEST_F(CurveNodes, endWithTheirAttachment) {
    const osg::UInt32 id = kvtest::idOf(kvAnimManager::createChannelCurveNode(channel, attachment));
    ASSERT_TRUE(kvtest::isAlive(id));
    node.release();
    EXPECT_FALSE(kvtest::isAlive(id));
}

TEST(AnimNodes, areNodesOfAnimationObjects) {
    EXPECT_TRUE(osg::AnimNode::getClassType().isDerivedFrom(osg::Node::getClassType()));
    EXPECT_TRUE(osg::AnimCurve::getClassType().isDerivedFrom(osg::AnimObject::getClassType()));
    EXPECT_TRUE(osg::AnimBlock::getClassType().isDerivedFrom(osg::AnimObject::getClassType()));
    EXPECT_TRUE(osg::AnimClip::getClassType().isDerivedFrom(osg::AnimObject::getClassType()));
    EXPECT_TRUE(osg::AnimObject::getClassType().isNodeCore());
    const Held<osg::AnimNodePtr> node(osg::AnimNodeBase::create());
    node->setCore(osg::AnimClipBase::create());
    const osg::AnimClipPtr clip = osg::AnimClipPtr::dcast(node->getCore());
    ASSERT_TRUE(clip != osg::NullFC);
    clip->osg::AnimObjectBase::setName("walk");
    EXPECT_EQ(clip->getName(), "walk");
    EXPECT_TRUE(osg::NodePtr::dcast(osg::FieldContainerFactory::the()->getContainer(
                    kvtest::idOf(node.get()))) == node.get());
}

TEST(AnimNodes, aCurveStoresAllSevenArgumentsOfAPointInOrder) {
    const Made<osg::AnimCurve> curve;
    curve->addPoint(osg::Vec2f(1, 2), osg::Vec2f(3, 4), osg::Vec2f(5, 6), 7, 8, false, true);
    curve->addPoint(osg::Vec2f(9, 10), osg::Vec2f(11, 12), osg::Vec2f(13, 14), 15, 16, true, false);
    ASSERT_EQ(curve->getNPoints(), 2u);
    const osg::AnimCurve::Point first = curve->getPoint(0), second = curve->getPoint(1);
    EXPECT_EQ(first.point[0], 1.0f);
    EXPECT_EQ(first.point[1], 2.0f);
    EXPECT_EQ(first.inTangent[0], 3.0f);
    EXPECT_EQ(first.inTangent[1], 4.0f);
    EXPECT_EQ(first.outTangent[0], 5.0f);
    EXPECT_EQ(first.outTangent[1], 6.0f);
    EXPECT_EQ(first.inWeight, 7.0f);
    EXPECT_EQ(first.outWeight, 8.0f);
    EXPECT_FALSE(first.broken);
    EXPECT_TRUE(first.weighted);
    EXPECT_EQ(second.point[0], 9.0f);
    EXPECT_EQ(second.outTangent[1], 14.0f);
    EXPECT_EQ(second.outWeight, 16.0f);
    EXPECT_TRUE(second.broken);
    EXPECT_FALSE(second.weighted);
}

TEST(AnimNodes, aPointThatIsNotThereIsZero) {
    const Made<osg::AnimCurve> curve;
    EXPECT_EQ(curve->getPoint(0).point[0], 0.0f);
    curve->getMFControlPoints()->push_back(osg::Vec2f(1, 2));
    EXPECT_EQ(curve->getPoint(0).point[1], 2.0f);
    EXPECT_EQ(curve->getPoint(0).outTangent[1], 0.0f);
    EXPECT_FALSE(curve->getPoint(0).weighted);
    curve->clearPoints();
    EXPECT_EQ(curve->getNPoints(), 0u);
}

TEST(AnimNodes, aCopyOfACurveHasAllOfIt) {
    const Made<osg::AnimCurve> curve;
    curve->setName("scale");
    curve->setSuffix("X");
    curve->addPoint(osg::Vec2f(1, 2), osg::Vec2f(3, 4), osg::Vec2f(5, 6), 7, 8, false, true);
    const Held<osg::AnimCurvePtr> copy(osg::AnimCurvePtr::dcast(curve->shallowCopy()));
    EXPECT_EQ(copy->getName(), "scale");
    EXPECT_EQ(copy->getSuffix(), "X");
    ASSERT_EQ(copy->getNPoints(), 1u);
    EXPECT_EQ(copy->getPoint(0).outWeight, 8.0f);
}

TEST(AnimNodes, aNodeReleasesItsCoreAndChildren) {
    osg::UInt32 core = 0, child = 0;
    {
        const Held<osg::AnimNodePtr> node(osg::AnimNode::create());
        node->setCore(osg::AnimBlock::create());
        node->addChild(osg::AnimNode::create());
        core = kvtest::idOf(node->getCore());
        child = kvtest::idOf(node->getChild(0));
        EXPECT_TRUE(kvtest::isAlive(core) && kvtest::isAlive(child));
    }
    EXPECT_FALSE(kvtest::isAlive(core));
    EXPECT_FALSE(kvtest::isAlive(child));
}

} // namespace
