// Translation, rotation and scale of nodes, with every kind of transform core.
#include <kvNodeUtils.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGTransform.h>

#include <OSGEulerAngles.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

#include "held.h"

#include <gtest/gtest.h>

#include <cmath>

using kvtest::Held;
using kvtest::makeNode;
using osg::ComponentTransform;
using osg::NullFC;
using osg::Transform3D;
using osg::TransformAttachment;
using osg::Vec3f;

namespace {

void expectVector(const Vec3f& actual, float x, float y, float z, float tolerance = 0.0f) {
    EXPECT_NEAR(actual[0], x, tolerance);
    EXPECT_NEAR(actual[1], y, tolerance);
    EXPECT_NEAR(actual[2], z, tolerance);
}

void expectRotation(const osg::NodePtr& node, float x, float y, float z, float tolerance = 0.0f) {
    Vec3f angles;
    kvNodeUtils::getTransformNodeRotation(node, angles[0], angles[1], angles[2]);
    expectVector(angles, x, y, z, tolerance);
}

/// The same rotation; a quaternion and its negative are.
void expectSame(const osg::Quaternion& actual, const osg::Quaternion& expected) {
    double dot = 0.0;
    for (osg::UInt32 i = 0; i < 4; ++i)
        dot += double(actual[i]) * expected[i];
    EXPECT_NEAR(std::fabs(dot), 1.0, 1e-6);
}

/// A 3 by 3 rotation about z by 90 degrees with scales 2, 3, 4 and a translation, row by row.
osg::Matrix turnedMatrix() {
    return osg::Matrix(0.0f, -3.0f, 0.0f, 5.0f, //
                       2.0f, 0.0f, 0.0f, 6.0f,  //
                       0.0f, 0.0f, 4.0f, 7.0f,  //
                       0.0f, 0.0f, 0.0f, 1.0f);
}

void expectMatrix(const osg::Matrix& actual, const osg::Matrix& expected, float tolerance) {
    for (osg::UInt32 column = 0; column < 4; ++column)
        for (osg::UInt32 row = 0; row < 4; ++row)
            EXPECT_NEAR(actual[column][row], expected[column][row], tolerance)
                << "row " << row << ", column " << column;
}

class NodeTransforms : public ::testing::Test {
  protected:
    osg::ComponentTransformPtr componentCore = ComponentTransform::create();
    osg::TransformPtr plainCore = osg::Transform::create();
    osg::Transform3DPtr angleCore = Transform3D::create();
    Held<osg::NodePtr> component{makeNode(componentCore)};
    Held<osg::NodePtr> plain{makeNode(plainCore)};
    Held<osg::NodePtr> angles{makeNode(angleCore)};
    Held<osg::NodePtr> group{makeNode(osg::Group::create())};

    osg::NodePtr childOf(const osg::NodePtr& parent) {
        const osg::NodePtr child = makeNode(osg::Group::create());
        kvtest::addChild(parent, child);
        return child;
    }
};

TEST_F(NodeTransforms, theTransformNodeIsTheNodeItsParentOrNone) {
    const osg::NodePtr child = childOf(plain);
    const osg::NodePtr grandchild = childOf(child);
    EXPECT_TRUE(kvNodeUtils::getTransformNode(plain) == plain.get());
    EXPECT_TRUE(kvNodeUtils::getTransformNode(child) == plain.get());
    EXPECT_TRUE(kvNodeUtils::getTransformNode(grandchild) == NullFC);
    EXPECT_TRUE(kvNodeUtils::getTransformNode(group) == NullFC);
    EXPECT_TRUE(kvNodeUtils::getTransformNode(NullFC) == NullFC);
    EXPECT_TRUE(kvNodeUtils::getTransformNode(angles) == angles.get());
}

TEST_F(NodeTransforms, noNodeIsAnsweredWithNothing) {
    float x = 9.0f, y = 9.0f, z = 9.0f;
    kvNodeUtils::setTransformNodeTranslation(NullFC, 1, 2, 3);
    kvNodeUtils::setTransformNodeRotation(NullFC, 1, 2, 3);
    kvNodeUtils::setTransformNodeScale(NullFC, 1, 2, 3);
    EXPECT_FALSE(kvNodeUtils::getTransformNodeTranslation(NullFC, x, y, z));
    expectVector(Vec3f(x, y, z), 0, 0, 0);
    EXPECT_FALSE(kvNodeUtils::getTransformNodeScale(NullFC, x, y, z));
    expectVector(Vec3f(x, y, z), 1, 1, 1);
    EXPECT_FALSE(kvNodeUtils::getTransformNodeRotation(NullFC, x, y, z));
    expectVector(Vec3f(x, y, z), 0, 0, 0);
}

TEST_F(NodeTransforms, translationOfEveryKind) {
    for (const osg::NodePtr& node : {component.get(), plain.get(), angles.get()}) {
        kvNodeUtils::setTransformNodeTranslation(node, 1.0f, -2.0f, 0.1f);
        Vec3f t;
        EXPECT_TRUE(kvNodeUtils::getTransformNodeTranslation(node, t[0], t[1], t[2]));
        expectVector(t, 1.0f, -2.0f, 0.1f);
        const osg::TransformPtr core = osg::TransformPtr::dcast(node->getCore());
        expectVector(
            Vec3f(core->getMatrix()[3][0], core->getMatrix()[3][1], core->getMatrix()[3][2]), 1.0f,
            -2.0f, 0.1f);
    }
}

TEST_F(NodeTransforms, scaleOfEveryKind) {
    for (const osg::NodePtr& node : {component.get(), plain.get(), angles.get()}) {
        kvNodeUtils::setTransformNodeScale(node, 2.0f, 3.0f, 0.5f);
        Vec3f s;
        EXPECT_TRUE(kvNodeUtils::getTransformNodeScale(node, s[0], s[1], s[2]));
        expectVector(s, 2.0f, 3.0f, 0.5f, 1e-6f);
        const osg::TransformPtr core = osg::TransformPtr::dcast(node->getCore());
        EXPECT_NEAR(core->getMatrix()[1][1], 3.0f, 1e-6f);
    }
}

TEST_F(NodeTransforms, scaleAndTranslationReachTheParentsTransform) {
    const osg::NodePtr child = childOf(component);
    kvNodeUtils::setTransformNodeTranslation(child, 1, 2, 3);
    kvNodeUtils::setTransformNodeScale(child, 4, 5, 6);
    expectVector(componentCore->getTranslation(), 1, 2, 3);
    expectVector(componentCore->getScale(), 4, 5, 6);
}

TEST_F(NodeTransforms, aPlainMatrixKeepsItsOtherParts) {
    const osg::NodePtr node = plain;
    const osg::TransformPtr core = plainCore;
    osg::beginEditCP(core, osg::Transform::MatrixFieldMask);
    core->setMatrix(turnedMatrix());
    osg::endEditCP(core, osg::Transform::MatrixFieldMask);
    kvNodeUtils::setTransformNodeRotation(node, 0, 0, 0);
    // Rotated back: scales and translation alone.
    expectMatrix(core->getMatrix(), osg::Matrix(2, 0, 0, 5, 0, 3, 0, 6, 0, 0, 4, 7, 0, 0, 0, 1),
                 1e-4f);
    kvNodeUtils::setTransformNodeRotation(node, 0, 0, 90);
    expectMatrix(core->getMatrix(), turnedMatrix(), 1e-4f);
    kvNodeUtils::setTransformNodeScale(node, 1, 1, 1);
    expectMatrix(core->getMatrix(), osg::Matrix(0, -1, 0, 5, 1, 0, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1),
                 1e-4f);
}

TEST_F(NodeTransforms, aFlatMatrixIsSurvived) {
    osg::beginEditCP(plainCore, osg::Transform::MatrixFieldMask);
    plainCore->setMatrix(osg::Matrix(0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 1));
    osg::endEditCP(plainCore, osg::Transform::MatrixFieldMask);
    kvNodeUtils::setTransformNodeScale(plain, 2, 2, 2);
    kvNodeUtils::setTransformNodeRotation(plain, 0, 0, 90);
    for (osg::UInt32 c = 0; c < 4; ++c)
        for (osg::UInt32 r = 0; r < 4; ++r)
            EXPECT_TRUE(std::isfinite(plainCore->getMatrix()[c][r]));
    EXPECT_EQ(plainCore->getMatrix()[3][1], 2.0f);
}

TEST_F(NodeTransforms, rotationIsKeptAsAnglesOnTheNode) {
    for (const osg::NodePtr& node : {component.get(), plain.get(), angles.get(), group.get()}) {
        EXPECT_TRUE(TransformAttachment::find(node) == NullFC);
        kvNodeUtils::setTransformNodeRotation(node, 10.0f, 400.0f, -0.1f);
        const osg::TransformAttachmentPtr attachment = TransformAttachment::find(node);
        ASSERT_TRUE(attachment != NullFC);
        EXPECT_EQ(attachment.getRefCount(), 1);
        expectVector(attachment->getRotationAngles(), 10.0f, 400.0f, -0.1f);
        EXPECT_EQ(attachment->getRotationOrder(), TransformAttachment::XYZ);
        expectRotation(node, 10.0f, 400.0f, -0.1f);
    }
}

TEST_F(NodeTransforms, writingOneAngleAfterTheOtherLosesNone) {
    for (const osg::NodePtr& node : {component.get(), plain.get(), angles.get()}) {
        for (osg::UInt32 axis = 0; axis < 3; ++axis) {
            Vec3f a;
            kvNodeUtils::getTransformNodeRotation(node, a[0], a[1], a[2]);
            a[axis] = 100.0f + 10.0f * static_cast<float>(axis);
            kvNodeUtils::setTransformNodeRotation(node, a[0], a[1], a[2], -1);
        }
        expectRotation(node, 100.0f, 110.0f, 120.0f);
    }
}

TEST_F(NodeTransforms, rotationTurnsAboutXThenYThenZ) {
    kvNodeUtils::setTransformNodeRotation(component, 90, 90, 0);
    // y to z about x, z to x about y: the second column of the matrix is x.
    const osg::Matrix matrix = componentCore->getMatrix();
    EXPECT_NEAR(matrix[1][0], 1.0f, 1e-6f);
    EXPECT_NEAR(matrix[1][1], 0.0f, 1e-6f);
    EXPECT_NEAR(matrix[1][2], 0.0f, 1e-6f);
    expectSame(componentCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(90, 90, 0), TransformAttachment::XYZ));
}

TEST_F(NodeTransforms, anOrderIsKeptUntilAnotherIsGiven) {
    kvNodeUtils::setTransformNodeRotation(component, 90, 90, 0, TransformAttachment::YXZ);
    expectSame(componentCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(90, 90, 0), TransformAttachment::YXZ));
    for (const int keep : {-1, -5, 6}) {
        kvNodeUtils::setTransformNodeRotation(component, 30, 40, 50, keep);
        EXPECT_EQ(TransformAttachment::find(component.get())->getRotationOrder(),
                  TransformAttachment::YXZ);
    }
    expectSame(componentCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(30, 40, 50), TransformAttachment::YXZ));
    kvNodeUtils::setTransformNodeRotation(component, 30, 40, 50, TransformAttachment::ZYX);
    EXPECT_EQ(TransformAttachment::find(component.get())->getRotationOrder(),
              TransformAttachment::ZYX);
}

TEST_F(NodeTransforms, rotationReachesTheParentsTransform) {
    const osg::NodePtr child = childOf(component);
    kvNodeUtils::setTransformNodeRotation(child, 0, 0, 90);
    expectSame(componentCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(0, 0, 90), TransformAttachment::XYZ));
    EXPECT_TRUE(TransformAttachment::find(child) != NullFC);
    EXPECT_TRUE(TransformAttachment::find(component.get()) == NullFC);
    expectRotation(component, 0, 0, 90, 1e-4f);
}

TEST_F(NodeTransforms, anAttachmentOfTheParentIsKeptInStep) {
    const osg::NodePtr child = childOf(component);
    kvNodeUtils::setTransformNodeRotation(component, 1, 2, 3, TransformAttachment::ZYX);
    kvNodeUtils::setTransformNodeRotation(child, 0, 0, 90);
    expectRotation(component, 0, 0, 90);
    EXPECT_EQ(TransformAttachment::find(child)->getRotationOrder(), TransformAttachment::ZYX);
}

TEST_F(NodeTransforms, aParentWithTransform3DGetsAnAttachmentToo) {
    const osg::NodePtr child = childOf(angles);
    kvNodeUtils::setTransformNodeRotation(child, 10, 20, 30, TransformAttachment::YXZ);
    expectVector(angleCore->getEulerR(), 10, 20, 30);
    expectRotation(angles, 10, 20, 30);
    EXPECT_EQ(TransformAttachment::find(angles.get())->getRotationOrder(),
              TransformAttachment::YXZ);
}

TEST_F(NodeTransforms, aNodeTwoLevelsBelowGetsTheAttachmentOnly) {
    const osg::NodePtr grandchild = childOf(childOf(component));
    kvNodeUtils::setTransformNodeRotation(grandchild, 0, 0, 90);
    expectRotation(grandchild, 0, 0, 90);
    expectSame(componentCore->getRotation(), osg::Quaternion());
}

TEST_F(NodeTransforms, withoutAnAttachmentTheCoreIsAsked) {
    osg::beginEditCP(componentCore, ComponentTransform::RotationFieldMask);
    componentCore->setRotation(
        osg::EulerAngles::toQuaternion(Vec3f(20, 30, 40), TransformAttachment::XYZ));
    osg::endEditCP(componentCore, ComponentTransform::RotationFieldMask);
    expectRotation(component, 20, 30, 40, 1e-3f);
    EXPECT_TRUE(TransformAttachment::find(component.get()) == NullFC);

    osg::beginEditCP(plainCore, osg::Transform::MatrixFieldMask);
    plainCore->setMatrix(turnedMatrix());
    osg::endEditCP(plainCore, osg::Transform::MatrixFieldMask);
    expectRotation(plain, 0, 0, 90, 1e-3f);
    expectRotation(group, 0, 0, 0);
}

TEST_F(NodeTransforms, transform3DGetsItsAnglesToo) {
    kvNodeUtils::setTransformNodeRotation(angles, 10, 20, 400);
    expectVector(angleCore->getEulerR(), 10, 20, 400);
    expectSame(angleCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(10, 20, 400), TransformAttachment::XYZ));
    EXPECT_TRUE(angleCore->describesRotation(TransformAttachment::XYZ));
}

TEST_F(NodeTransforms, transform3DFollowsAnOrder) {
    kvNodeUtils::setTransformNodeRotation(angles, 10, 20, 30, TransformAttachment::ZYX);
    expectSame(angleCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(10, 20, 30), TransformAttachment::ZYX));
    // Also when the angles stay and only the order changes.
    kvNodeUtils::setTransformNodeRotation(angles, 10, 20, 30, TransformAttachment::XYZ);
    expectSame(angleCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(10, 20, 30), TransformAttachment::XYZ));
}

TEST_F(NodeTransforms, manyRotationsMakeNoContainers) {
    for (const osg::NodePtr& node : {component.get(), plain.get(), angles.get()}) {
        kvNodeUtils::setTransformNodeRotation(node, 1, 2, 3);
        const osg::UInt32 attachment = kvtest::idOf(TransformAttachment::find(node));
        for (int i = 0; i < 100; ++i)
            kvNodeUtils::setTransformNodeRotation(node, static_cast<float>(i), 2, 3);
        EXPECT_EQ(kvtest::idOf(TransformAttachment::find(node)), attachment);
        const Held<osg::NodePtr> next(osg::Node::create());
        const Held<osg::NodePtr> afterNext(osg::Node::create());
        EXPECT_EQ(kvtest::idOf(afterNext.get()), kvtest::idOf(next.get()) + 1);
    }
}

void editAngles(const osg::Transform3DPtr& core, const Vec3f& degrees, osg::BitVector mask) {
    osg::beginEditCP(core, mask);
    core->setEulerR(degrees);
    osg::endEditCP(core, mask);
}

TEST_F(NodeTransforms, editingTheAnglesOfTransform3DSetsRotationMatrixAndAttachments) {
    const Held<osg::NodePtr> other(makeNode(angleCore));
    editAngles(angleCore, Vec3f(0, 0, 90), Transform3D::EulerRFieldMask);
    expectSame(angleCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(0, 0, 90), TransformAttachment::XYZ));
    EXPECT_NEAR(angleCore->getMatrix()[0][1], 1.0f, 1e-6f);
    expectRotation(angles, 0, 0, 90);
    expectRotation(other, 0, 0, 90);
    ASSERT_TRUE(TransformAttachment::find(other.get()) != NullFC);
}

TEST_F(NodeTransforms, editingTheAnglesUsesTheStoredOrder) {
    TransformAttachment::findOrCreate(angles.get())->set(Vec3f(0, 0, 0), TransformAttachment::ZXY);
    editAngles(angleCore, Vec3f(10, 20, 30), Transform3D::EulerRFieldMask);
    expectSame(angleCore->getRotation(),
               osg::EulerAngles::toQuaternion(Vec3f(10, 20, 30), TransformAttachment::ZXY));
}

TEST_F(NodeTransforms, anEditOfEverythingThatLeavesTheAnglesLeavesTheRotation) {
    editAngles(angleCore, Vec3f(10, 0, 0), Transform3D::EulerRFieldMask);
    const osg::Quaternion set =
        osg::EulerAngles::toQuaternion(Vec3f(0, 0, 45), TransformAttachment::XYZ);
    osg::beginEditCP(angleCore);
    angleCore->setRotation(set);
    osg::endEditCP(angleCore);
    expectSame(angleCore->getRotation(), set);
    EXPECT_FALSE(angleCore->describesRotation(TransformAttachment::XYZ));
}

TEST_F(NodeTransforms, staleAnglesOfTransform3DAreNotReported) {
    const Held<osg::Transform3DPtr> lone(Transform3D::create());
    editAngles(lone, Vec3f(10, 0, 0), Transform3D::EulerRFieldMask);
    const Held<osg::NodePtr> node(makeNode(lone.get()));
    expectRotation(node, 10, 0, 0);
    osg::beginEditCP(lone.get(), ComponentTransform::RotationFieldMask);
    lone->setRotation(osg::EulerAngles::toQuaternion(Vec3f(0, 0, 45), TransformAttachment::XYZ));
    osg::endEditCP(lone.get(), ComponentTransform::RotationFieldMask);
    expectRotation(node, 0, 0, 45, 1e-3f);
}

TEST_F(NodeTransforms, whatAReaderSetsIsTakenAsItIs) {
    const osg::Quaternion set =
        osg::EulerAngles::toQuaternion(Vec3f(0, 0, 45), TransformAttachment::XYZ);
    angleCore->setEulerR(Vec3f(10, 20, 30));
    angleCore->setRotation(set);
    osg::endEditCP(angleCore, osg::FieldBits::AllFields, osg::ChangedOrigin::Abstract);
    expectSame(angleCore->getRotation(), set);
    EXPECT_TRUE(TransformAttachment::find(angles.get()) == NullFC);
    // And is no change for the next edit of everything.
    osg::beginEditCP(angleCore);
    osg::endEditCP(angleCore);
    expectSame(angleCore->getRotation(), set);
}

TEST_F(NodeTransforms, aCopyOfTransform3DKnowsItsAngles) {
    editAngles(angleCore, Vec3f(10, 20, 30), Transform3D::EulerRFieldMask);
    const Held<osg::Transform3DPtr> copy(osg::Transform3DPtr::dcast(angleCore->shallowCopy()));
    expectVector(copy->getEulerR(), 10, 20, 30);
    const osg::Quaternion set =
        osg::EulerAngles::toQuaternion(Vec3f(0, 0, 45), TransformAttachment::XYZ);
    osg::beginEditCP(copy.get());
    copy->setRotation(set);
    osg::endEditCP(copy.get());
    expectSame(copy->getRotation(), set);
}

TEST_F(NodeTransforms, aNodeWhoseTransformIsSharedRotatesAllOfThem) {
    const Held<osg::NodePtr> other(makeNode(angleCore));
    kvNodeUtils::setTransformNodeRotation(other, 5, 6, 7);
    expectRotation(angles, 5, 6, 7);
}

} // namespace
