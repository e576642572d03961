// What the stored containers are called, which fields they have and in which order: a scene file
// written by one build must mean the same to another.
#include <OSGAnimationAttachment.h>
#include <OSGCameraSetting.h>
#include <OSGLightGeoAttachment.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

#include "held.h"

#include <gtest/gtest.h>

#include <type_traits>

extern "C" int kvOpenSGExtTypes();

namespace {

struct ExpectedField {
    const char* name;
    const char* type;
};

/// The fields behind those of the parent, in order; ids and masks go with the position.
void expectFields(const char* typeName, const char* parentName,
                  const std::vector<ExpectedField>& expected) {
    SCOPED_TRACE(typeName);
    osg::FieldContainerType* const type = osg::FieldContainerFactory::the()->findType(typeName);
    ASSERT_NE(type, nullptr);
    ASSERT_NE(type->getParent(), nullptr);
    EXPECT_STREQ(type->getParent()->getCName(), parentName);
    const osg::UInt32 inherited = type->getParent()->getNumFieldDescs();
    ASSERT_EQ(type->getNumFieldDescs(), inherited + expected.size());
    const osg::FieldContainerPtr container = type->createFieldContainer();
    ASSERT_TRUE(container != osg::NullFC);
    const kvtest::Held<osg::FieldContainerPtr> held(container);
    for (osg::UInt32 i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(expected[i].name);
        const osg::UInt32 id = inherited + 1 + i;
        osg::FieldDescription* const description = type->getFieldDescription(id);
        ASSERT_NE(description, nullptr);
        EXPECT_STREQ(description->getCName(), expected[i].name);
        EXPECT_EQ(description->getFieldId(), id);
        EXPECT_EQ(description->getFieldMask(), osg::BitVector(1) << id);
        EXPECT_FALSE(description->isInternal());
        EXPECT_STREQ(description->getFieldType().getCName(), expected[i].type);
        osg::Field* const field = container->getField(id);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field, container->getField(expected[i].name));
        EXPECT_STREQ(field->getType().getCName(), expected[i].type);
    }
}

TEST(StoredContainers, controlPointHasItsFieldsInOrder) {
    expectFields("AnimationControlPoint", "FieldContainer",
                 {{"ControlPoint", "SFVec2f"},
                  {"InTangent", "SFVec2f"},
                  {"OutTangent", "SFVec2f"},
                  {"TangentType", "SFUInt8"}});
}

TEST(StoredContainers, curveHasItsFieldsInOrder) {
    expectFields("AnimationCurve", "FieldContainer",
                 {{"Id", "SFIdent64"},
                  {"Belongs2Attribute", "SFString"},
                  {"AppropriateNode", "SFNodePtr"},
                  {"AFAppNode", "SFNodePtr"},
                  {"AFFcId", "SFUInt32"},
                  {"AFFieldName", "SFString"},
                  {"AFGlobalFieldName", "SFString"},
                  {"AFValue", "SFReal32"},
                  {"AFValuePosition", "SFUInt16"},
                  {"AFDirty", "SFBool"},
                  {"controlPoints", "MFAnimationControlPointPtr"}});
}

TEST(StoredContainers, blockHasItsFieldsInOrder) {
    expectFields("AnimationBlock", "FieldContainer",
                 {{"Name", "SFString"},
                  {"AppropriateNode", "SFNodePtr"},
                  {"Id", "SFIdent64"},
                  {"CamBlock", "SFBool"},
                  {"AnimatedType", "SFUInt8"},
                  {"Fliped", "SFBool"},
                  {"Repeated", "SFBool"},
                  {"MotionBlur", "SFBool"},
                  {"Activity", "SFBool"},
                  {"Start", "SFReal32"},
                  {"End", "SFReal32"},
                  {"curves", "MFAnimationCurvePtr"}});
}

TEST(StoredContainers, trackHasItsFieldsInOrder) {
    expectFields("AnimationTrack", "FieldContainer",
                 {{"Number", "SFInt32"},
                  {"Active", "SFBool"},
                  {"MotionBlur", "SFBool"},
                  {"Fliped", "SFBool"},
                  {"blocks", "MFAnimationBlockPtr"},
                  {"sequences", "MFAnimationBlockPtr"},
                  {"clips", "MFFieldContainerPtr"}});
}

TEST(StoredContainers, clipHasItsFieldsInOrder) {
    expectFields("AnimationClip", "FieldContainer",
                 {{"Name", "SFString"},
                  {"Id", "SFIdent64"},
                  {"Fliped", "SFBool"},
                  {"Repeated", "SFBool"},
                  {"MotionBlur", "SFBool"},
                  {"tracks", "MFAnimationTrackPtr"},
                  {"blocks", "MFAnimationBlockPtr"},
                  {"subclips", "MFFieldContainerPtr"}});
}

TEST(StoredContainers, attachmentHasItsFieldsInOrder) {
    expectFields("AnimationAttachment", "Attachment",
                 {{"curves", "MFAnimationCurvePtr"},
                  {"blocks", "MFAnimationBlockPtr"},
                  {"clips", "MFAnimationClipPtr"}});
}

TEST(StoredContainers, cameraSettingHasItsFieldsInOrder) {
    expectFields("CameraSetting", "NodeCore",
                 {{"isViewpoint", "SFBool"},
                  {"from", "SFPnt3f"},
                  {"at", "SFPnt3f"},
                  {"up", "SFVec3f"},
                  {"fieldOfView", "SFReal32"},
                  {"roll", "SFReal32"},
                  {"shutterSpeed", "SFReal32"},
                  {"focusDistance", "SFReal32"},
                  {"apertureDiameter", "SFReal32"},
                  {"lensStop", "SFReal32"},
                  {"lensLength", "SFReal32"},
                  {"orbitRadius", "SFReal32"},
                  {"orbitHeight", "SFReal32"},
                  {"orbitAngle", "SFReal32"}});
}

TEST(StoredContainers, theOthersHaveTheirFieldsInOrder) {
    expectFields("Transform3D", "ComponentTransform", {{"eulerR", "SFVec3f"}});
    expectFields("TransformAttachment", "Attachment",
                 {{"rotationAngles", "SFVec3f"}, {"rotationOrder", "SFInt32"}});
    expectFields("LightGeoAttachment", "Attachment", {{"isLightGeometry", "SFBool"}});
}

TEST(StoredContainers, kindsFollowTheParents) {
    EXPECT_TRUE(osg::AnimationAttachment::getClassType().isAttachment());
    EXPECT_TRUE(osg::CameraSetting::getClassType().isNodeCore());
    EXPECT_TRUE(osg::Transform3D::getClassType().isDerivedFrom(osg::Transform::getClassType()));
    EXPECT_FALSE(osg::AnimationCurve::getClassType().isAttachment());
    EXPECT_FALSE(osg::AnimationCurve::getClassType().isNodeCore());
}

TEST(StoredContainers, theGeneratedHalfIsTheSameClass) {
    EXPECT_TRUE((std::is_same_v<osg::AnimationAttachmentBase, osg::AnimationAttachment>));
    const kvtest::Held<osg::AnimationCurvePtr> curve(osg::AnimationCurveBase::create());
    EXPECT_TRUE(curve.get() != osg::NullFC);
}

TEST(StoredContainers, aNewOneIsZeroFalseAndEmpty) {
    const kvtest::Made<osg::AnimationBlock> block;
    EXPECT_EQ(block->getName(), "");
    EXPECT_TRUE(block->getAppropriateNode() == osg::NullFC);
    EXPECT_EQ(block->getId(), 0u);
    EXPECT_FALSE(block->getActivity());
    EXPECT_EQ(block->getAnimatedType(), 0);
    EXPECT_EQ(block->getEnd(), 0.0f);
    EXPECT_EQ(block->getCurves().getSize(), 0u);
    const kvtest::Made<osg::AnimationControlPoint> point;
    EXPECT_EQ(point->getControlPoint()[0], 0.0f);
    EXPECT_EQ(point->getOutTangent()[1], 0.0f);
    EXPECT_EQ(point->getTangentType(), 0);
}

TEST(StoredContainers, valuesReadBackAsSet) {
    const kvtest::Made<osg::AnimationCurve> curve;
    curve->setId(18446744073709551615ull);
    curve->setBelongs2Attribute("translateX");
    curve->setAFFcId(4294967295u);
    curve->setAFFieldName("translationX");
    curve->setAFGlobalFieldName("translation");
    curve->setAFValue(-0.1f);
    curve->setAFValuePosition(65535);
    curve->setAFDirty(true);
    EXPECT_EQ(curve->getId(), 18446744073709551615ull);
    EXPECT_EQ(curve->getBelongs2Attribute(), "translateX");
    EXPECT_EQ(curve->getAFFcId(), 4294967295u);
    EXPECT_EQ(curve->getAFFieldName(), "translationX");
    EXPECT_EQ(curve->getAFGlobalFieldName(), "translation");
    EXPECT_EQ(curve->getAFValue(), -0.1f);
    EXPECT_EQ(curve->getAFValuePosition(), 65535);
    EXPECT_TRUE(curve->getAFDirty());
    EXPECT_EQ(curve->getSFAFValue()->getValue(), -0.1f);
}

TEST(StoredContainers, aListKeepsItsOrderAndRemovesTheFirstOfEquals) {
    const kvtest::Made<osg::AnimationBlock> block;
    const kvtest::Made<osg::AnimationCurve> a;
    const kvtest::Made<osg::AnimationCurve> b;
    block->addCurve(a);
    block->addCurve(b);
    block->addCurve(a);
    block->addCurve(osg::NullFC);
    ASSERT_EQ(block->getCurves().getSize(), 3u);
    EXPECT_TRUE(block->getCurves(1) == b.get());
    EXPECT_TRUE(block->subCurve(a.get()));
    ASSERT_EQ(block->getMFCurves()->getSize(), 2u);
    EXPECT_TRUE(block->getCurves(0) == b.get());
    EXPECT_TRUE(block->getCurves(1) == a.get());
    EXPECT_FALSE(block->subCurve(2u));
    EXPECT_TRUE(block->subCurve(1u));
    EXPECT_FALSE(block->subCurve(a.get()));
    block->clearCurves();
    EXPECT_EQ(block->getCurves().getSize(), 0u);
}

TEST(StoredContainers, theIdHasATextFormOfAllItsDigits) {
    const kvtest::Made<osg::AnimationClip> clip;
    osg::Field* const id = clip->getField("Id");
    ASSERT_NE(id, nullptr);
    EXPECT_STREQ(id->getContentType().getCName(), "Ident64");
    id->pushValueByStr("18446744073709551615");
    EXPECT_EQ(clip->getId(), 18446744073709551615ull);
    std::string text;
    EXPECT_EQ(id->getValueByStr(text), "18446744073709551615");
    id->pushValueByStr(" 12 ");
    EXPECT_EQ(clip->getId(), 12u);
    id->pushValueByStr("x");
    EXPECT_EQ(clip->getId(), 12u);
}

TEST(StoredContainers, allAreRegistered) {
    EXPECT_EQ(kvOpenSGExtTypes(), 16);
}

} // namespace
