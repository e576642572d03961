// The quantities that are no fields: rotation and visibility of nodes, lens and orbit of cameras,
// and the host's own camera.

#include "fields/fieldsFixture.h"
#include "support/allocationCount.h"

#include <kvNodeUtils.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>

#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

#include <limits>

namespace {

using kvtest::Owned;
using kvtest::read;
using kvtest::write;

const float kNaN = std::numeric_limits<float>::quiet_NaN();

osg::TransformAttachmentPtr anglesOf(const osg::NodePtr& node) {
    return osg::TransformAttachmentPtr::dcast(
        node->findAttachment(osg::TransformAttachment::getClassType().getGroupId()));
}

// A binding whose only effect is the special quantity: no field has the name "special".
void writeSpecial(const osg::FieldContainerPtr& container, const char* name, float value) {
    write(container, "special", 0, value, name);
}

float readSpecial(const osg::FieldContainerPtr& container, const char* name) {
    return read(container, "special", 0, name);
}

class NodeQuantities : public ::testing::Test {
  protected:
    Owned<osg::NodePtr> node{kvtest::makeNode(osg::Transform3D::create())};
};

class CameraQuantities : public kvtest::HostCameraTest {
  protected:
    osg::CameraSettingPtr setting() const { return osg::CameraSettingPtr::dcast(node->getCore()); }

    Owned<osg::NodePtr> node{kvtest::makeNode(osg::CameraSetting::create())};
};

class ViewpointCamera : public CameraQuantities {
  protected:
    void SetUp() override {
        CameraQuantities::SetUp();
        setting()->setIsViewpoint(true);
        setting()->setFrom(osg::Pnt3f(10, 20, 30));
    }
};

} // namespace

TEST_F(NodeQuantities, visibilityIsTrueFromAHalf) {
    writeSpecial(node, "visible", 0.49F);
    EXPECT_FALSE(node->getActive());
    EXPECT_EQ(readSpecial(node, "visible"), 0.0F);
    writeSpecial(node, "visible", 0.5F);
    EXPECT_TRUE(node->getActive());
    EXPECT_EQ(readSpecial(node, "visible"), 1.0F);
    writeSpecial(node, "visible", -3.0F);
    EXPECT_FALSE(node->getActive());
    writeSpecial(node, "visible", 1.0F);
    writeSpecial(node, "visible", kNaN);
    EXPECT_FALSE(node->getActive());
}

TEST_F(NodeQuantities, visibilityIsAnEditOfTheNode) {
    // A node that is told of an edit of its mask forgets its volume, as do the nodes above it.
    node->updateVolume();
    ASSERT_TRUE(node->getVolume().isValid());
    writeSpecial(node, "visible", 1.0F);
    EXPECT_FALSE(node->getVolume().isValid());
}

TEST_F(NodeQuantities, namesAreMatchedExactly) {
    writeSpecial(node, "Visible", 0.0F);
    writeSpecial(node, "visible ", 0.0F);
    EXPECT_TRUE(node->getActive());
    EXPECT_EQ(readSpecial(node, "Visible"), 0.0F);
}

TEST_F(NodeQuantities, oneAngleKeepsTheOthers) {
    kvNodeUtils::setTransformNodeRotation(node, 10, 20, 30);
    writeSpecial(node, "rotationY", 45.0F);
    EXPECT_EQ(readSpecial(node, "rotationX"), 10.0F);
    EXPECT_EQ(readSpecial(node, "rotationY"), 45.0F);
    EXPECT_EQ(readSpecial(node, "rotationZ"), 30.0F);
    float x = 0, y = 0, z = 0;
    EXPECT_TRUE(kvNodeUtils::getTransformNodeRotation(node, x, y, z));
    EXPECT_EQ(y, 45.0F);
}

TEST_F(NodeQuantities, theOtherAnglesAreZeroWithoutAnAttachment) {
    // The core is turned, but only the attachment tells angles.
    const osg::ComponentTransformPtr transform = osg::ComponentTransformPtr::dcast(node->getCore());
    transform->setRotation(osg::Quaternion(osg::Vec3f(1, 0, 0), 1.0F));
    ASSERT_TRUE(anglesOf(node) == osg::NullFC);
    EXPECT_EQ(readSpecial(node, "rotationX"), 0.0F);
    writeSpecial(node, "rotationZ", 90.0F);
    ASSERT_TRUE(anglesOf(node) != osg::NullFC);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[0], 0.0F);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[1], 0.0F);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[2], 90.0F);
}

TEST_F(NodeQuantities, threeAnglesInARowAddUp) {
    writeSpecial(node, "rotationX", 10.0F);
    writeSpecial(node, "rotationY", 20.0F);
    writeSpecial(node, "rotationZ", 30.0F);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[0], 10.0F);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[1], 20.0F);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[2], 30.0F);
}

TEST_F(NodeQuantities, theStoredOrderOfTheAnglesIsKept) {
    kvNodeUtils::setTransformNodeRotation(node, 10, 20, 30, osg::TransformAttachment::ZYX);
    writeSpecial(node, "rotationX", 15.0F);
    EXPECT_EQ(anglesOf(node)->getRotationOrder(), osg::TransformAttachment::ZYX);
}

TEST_F(NodeQuantities, readingPrefersAFieldAndWritingDoesBoth) {
    // travMask is a field of nodes, so reading does not look at the special quantity.
    node->setTravMask(5);
    EXPECT_EQ(read(node, "travMask", 0, "visible"), 5.0F);
    write(node, "travMask", 0, 7.0F, "visible");
    EXPECT_TRUE(node->getActive()) << "the mask was written first, then the node activated";
    write(node, "travMask", 0, 0.0F, "rotationX");
    EXPECT_EQ(node->getTravMask(), 0U);
    EXPECT_EQ(anglesOf(node)->getRotationAngles()[0], 0.0F);
}

TEST_F(NodeQuantities, runThoughThePositionIsOutOfRange) {
    write(node, "travMask", 1, 0.0F, "visible");
    EXPECT_FALSE(node->getActive());
}

TEST_F(NodeQuantities, areNoneOfOtherContainers) {
    const osg::NodeCorePtr core = node->getCore();
    writeSpecial(core, "visible", 0.0F);
    writeSpecial(core, "rotationX", 45.0F);
    EXPECT_TRUE(node->getActive());
    EXPECT_TRUE(anglesOf(node) == osg::NullFC);
    EXPECT_EQ(readSpecial(core, "visible"), 0.0F);
    writeSpecial(node, "fStop", 3.0F);
    writeSpecial(node, "height", 3.0F);
    EXPECT_EQ(readSpecial(node, "fStop"), 0.0F);
}

TEST_F(NodeQuantities, ofANodeWithoutATransformGoToItsAttachment) {
    const Owned<osg::NodePtr> bare(osg::Node::create());
    writeSpecial(bare, "rotationX", 45.0F);
    EXPECT_EQ(readSpecial(bare, "rotationX"), 45.0F);
}

TEST_F(NodeQuantities, writtenAgainAllocateNothing) {
    std::vector<kvtest::Field> fields;
    for (const char* name : {"visible", "rotationX", "rotationY", "rotationZ"})
        fields.push_back(kvtest::bindingTo(node.get(), "rotation", 0, 1.0F, name));
    const auto writeAll = [&fields] {
        for (kvtest::Field& field : fields) {
            field.value += 1.0F;
            kvAnimationUtils2::setRealFieldValue(field);
        }
    };
    writeAll();
    EXPECT_EQ(kvtest::allocationsOf(writeAll), 0U);
}

TEST_F(CameraQuantities, lensIsReadAndWritten) {
    writeSpecial(setting(), "fStop", 2.8F);
    writeSpecial(setting(), "focalLength", 50.0F);
    EXPECT_EQ(setting()->getFStop(), 2.8F);
    EXPECT_EQ(setting()->getFocalLength(), 50.0F);
    EXPECT_EQ(readSpecial(setting(), "fStop"), 2.8F);
    EXPECT_EQ(readSpecial(setting(), "focalLength"), 50.0F);
    EXPECT_EQ(camera().sets, 0) << "the lens does not move the camera";
}

TEST_F(CameraQuantities, orbitIsHandedToTheHost) {
    writeSpecial(setting(), "distance", 10.0F);
    EXPECT_EQ(camera().sets, 1);
    writeSpecial(setting(), "height", 4.0F);
    EXPECT_EQ(camera().sets, 2);
    writeSpecial(setting(), "turnTableAngle", 0.0F);
    EXPECT_EQ(camera().sets, 3);
    EXPECT_NEAR(camera().from[0], 10.0F, 1e-5F);
    EXPECT_NEAR(camera().from[1], 4.0F, 1e-5F);
    EXPECT_NEAR(readSpecial(setting(), "distance"), 10.0F, 1e-5F);
    EXPECT_NEAR(readSpecial(setting(), "height"), 4.0F, 1e-5F);
    EXPECT_NEAR(readSpecial(setting(), "turnTableAngle"), 0.0F, 1e-5F);
}

TEST_F(CameraQuantities, vectorsAreWrittenAndHandedToTheHost) {
    write(setting(), "from", 1, 7.0F);
    EXPECT_EQ(setting()->getFrom()[1], 7.0F);
    EXPECT_EQ(camera().sets, 1);
    EXPECT_EQ(camera().from[1], 7.0F);
    EXPECT_EQ(camera().gets, 0);
    write(setting(), "at", 0, 8.0F);
    write(setting(), "up", 2, 9.0F);
    EXPECT_EQ(camera().at[0], 8.0F);
    EXPECT_EQ(camera().up[2], 9.0F);
    EXPECT_EQ(camera().sets, 3);
    EXPECT_EQ(read(setting(), "from", 1), 7.0F);
}

TEST_F(CameraQuantities, vectorsAreHandedToTheHostThoughThePositionIsOutOfRange) {
    const osg::Pnt3f before = setting()->getFrom();
    write(setting(), "from", 3, 7.0F);
    EXPECT_TRUE(setting()->getFrom() == before);
    EXPECT_EQ(camera().sets, 1);
    EXPECT_TRUE(camera().from == before);
}

TEST_F(CameraQuantities, aHostThatDestroysTheCameraWhenToldEndsTheWrite) {
    static osg::NodePtr condemned;
    const osg::CameraSettingPtr doomed = osg::CameraSetting::create();
    condemned = kvtest::makeNode(doomed);
    osg::addRefCP(condemned);
    kvAnimationManager2::setFromAtUpCB(
        [](int, const osg::Pnt3f&, const osg::Pnt3f&, const osg::Vec3f&) {
            ++camera().sets;
            osg::subRefCP(condemned);
        });
    const kvtest::Field field = kvtest::bindingTo(doomed, "from", 0, 1.0F, "height");
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(camera().sets, 1) << "there was no camera left to set the height of";
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 0.0F);
    condemned = osg::NullFC;
}

TEST_F(CameraQuantities, otherFieldsAreNotHandedOver) {
    write(setting(), "fieldOfView", 0, 90.0F);
    write(setting(), "roll", 0, 1.5F);
    EXPECT_EQ(setting()->getFieldOfView(), 1.5707964F);
    EXPECT_EQ(read(setting(), "fieldOfView"), 90.0F);
    EXPECT_EQ(setting()->getRoll(), 1.5F);
    EXPECT_EQ(camera().sets, 0);
}

TEST_F(CameraQuantities, areNoneOfNodes) {
    writeSpecial(setting(), "visible", 0.0F);
    writeSpecial(setting(), "rotationX", 45.0F);
    EXPECT_TRUE(node->getActive());
    EXPECT_EQ(camera().sets, 0);
    EXPECT_EQ(readSpecial(setting(), "visible"), 0.0F);
}

TEST_F(CameraQuantities, areWrittenBesideAFieldOfTheBinding) {
    write(setting(), "roll", 0, 3.0F, "fStop");
    EXPECT_EQ(setting()->getRoll(), 3.0F);
    EXPECT_EQ(setting()->getFStop(), 3.0F);
}

TEST_F(ViewpointCamera, vectorsChangeTheHostsCameraOnly) {
    write(setting(), "from", 1, 7.0F);
    EXPECT_EQ(camera().from[0], 1.0F);
    EXPECT_EQ(camera().from[1], 7.0F);
    EXPECT_EQ(camera().from[2], 3.0F);
    EXPECT_EQ(setting()->getFrom()[1], 20.0F) << "the field is not written";
    EXPECT_EQ(camera().gets, 1);
    EXPECT_EQ(camera().sets, 1);
    write(setting(), "at", 2, 8.0F);
    EXPECT_EQ(camera().at[2], 8.0F);
    write(setting(), "up", 0, 0.5F);
    EXPECT_EQ(camera().up[0], 0.5F);
    EXPECT_EQ(read(setting(), "from", 1), 20.0F) << "reading goes through the field";
}

TEST_F(ViewpointCamera, aPositionAboveTwoChangesNoComponent) {
    write(setting(), "from", 3, 7.0F);
    EXPECT_EQ(camera().from[0], 1.0F);
    EXPECT_EQ(camera().from[2], 3.0F);
    EXPECT_EQ(camera().sets, 1);
}

TEST_F(ViewpointCamera, otherFieldsHandTheCameraBackUnchanged) {
    const float before = setting()->getFieldOfView();
    write(setting(), "fieldOfView", 0, 90.0F);
    EXPECT_EQ(setting()->getFieldOfView(), before);
    EXPECT_EQ(camera().gets, 1);
    EXPECT_EQ(camera().sets, 1);
    EXPECT_EQ(camera().from[0], 1.0F);
    EXPECT_EQ(camera().at[1], 5.0F);
}

TEST_F(ViewpointCamera, namesWithoutAFieldDoNotReachTheHost) {
    write(setting(), "nothing", 0, 90.0F);
    EXPECT_EQ(camera().gets, 0);
    EXPECT_EQ(camera().sets, 0);
}

TEST_F(ViewpointCamera, specialQuantitiesStillRun) {
    write(setting(), "roll", 0, 3.0F, "fStop");
    EXPECT_EQ(setting()->getFStop(), 3.0F);
    EXPECT_EQ(setting()->getRoll(), 0.0F);
    EXPECT_EQ(camera().sets, 1);
    writeSpecial(setting(), "height", 2.0F);
    EXPECT_EQ(camera().sets, 2);
}

TEST_F(ViewpointCamera, withoutHostCallbacksNothingHappens) {
    kvAnimationManager2::setGetFromAtUpCB(nullptr);
    kvAnimationManager2::setFromAtUpCB(nullptr);
    write(setting(), "from", 0, 7.0F);
    EXPECT_EQ(setting()->getFrom()[0], 10.0F);
}
