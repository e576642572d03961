// A program that links the host libraries and mentions none of their classes still knows their
// types, whether the libraries are static or shared: a scene file may hold any of them.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(RegisteredTypes, areKnownWithoutBeingMentioned) {
    for (const char* name :
         {"AnimationAttachment", "AnimationClip", "AnimationTrack", "AnimationBlock",
          "AnimationCurve", "AnimationControlPoint", "CameraSetting", "LightGeoAttachment",
          "Transform3D", "TransformAttachment", "AnimNode", "AnimObject", "AnimBlock", "AnimCurve",
          "AnimClip", "AnimAttachment", "UberMaterial"})
        EXPECT_NE(osg::FieldContainerFactory::the()->findType(name), nullptr) << name;
}

TEST(RegisteredTypes, areReadFromAFile) {
    std::istringstream file("#OSG V1.0 \nNode { core Transform3D { eulerR 1 2 3 } }\n");
    osg::NodePtr scene = osg::SceneFileHandler::the().read(file, "osg", NULL);
    ASSERT_TRUE(scene != osg::NullFC);
    osg::addRefCP(scene);
    ASSERT_EQ(scene->getNChildren(), 1u);
    EXPECT_STREQ(scene->getChild(0)->getCore()->getType().getCName(), "Transform3D");
    osg::subRefCP(scene);
}

} // namespace
