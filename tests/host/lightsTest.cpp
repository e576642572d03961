// Which node is which light.
#include <kvLights.h>

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

#include "held.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The answers for a node with the core, as letters: light, spot, point, directional.
std::string answers(const osg::NodePtr& node) {
    std::string text;
    if (kvLights::isLight(node)) text += 'L';
    if (kvLights::isSpotLight(node)) text += 'S';
    if (kvLights::isPointLight(node)) text += 'P';
    if (kvLights::isDirectionalLight(node)) text += 'D';
    return text;
}

std::string answersForCore(const osg::NodeCorePtr& core) {
    const kvtest::Held<osg::NodePtr> node(kvtest::makeNode(core));
    return answers(node);
}

TEST(Lights, theKindsExcludeEachOther) {
    EXPECT_EQ(answersForCore(osg::SpotLight::create()), "LS");
    EXPECT_EQ(answersForCore(osg::PointLight::create()), "LP");
    EXPECT_EQ(answersForCore(osg::DirectionalLight::create()), "LD");
}

TEST(Lights, othersAreNone) {
    EXPECT_EQ(answersForCore(osg::Group::create()), "");
    EXPECT_EQ(answersForCore(osg::LightEnv::create()), "");
}

TEST(Lights, aNodeWithoutACoreAndNoNodeAreNone) {
    const kvtest::Made<osg::Node> node;
    EXPECT_EQ(answers(node), "");
    EXPECT_EQ(answers(osg::NullFC), "");
}

} // namespace
