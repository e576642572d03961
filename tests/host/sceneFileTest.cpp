// Every host container through scene files and back: what was stored, that shared containers stay
// shared, and that all references are right, so that releasing the scene destroys all of it.
#include <OSGAnimationAttachment.h>
#include <OSGAnimAttachment.h>
#include <OSGAnimBlock.h>
#include <OSGAnimCurve.h>
#include <OSGCameraSetting.h>
#include <OSGEulerAngles.h>
#include <OSGLightGeoAttachment.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>
#include <OSGUberMaterial.h>

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <kvNodeUtils.h>

#include "held.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using kvtest::addChild;
using kvtest::Held;
using kvtest::idOf;
using kvtest::isAlive;
using kvtest::makeNode;
using osg::NullFC;

namespace {

template <class T>
typename T::Ptr attachmentOf(const osg::NodePtr& node) {
    return T::Ptr::dcast(node->findAttachment(T::getClassType().getGroupId()));
}

/// The parameter is the extension of the format.
class SceneFile : public ::testing::TestWithParam<const char*> {
  protected:
    osg::NodePtr root = makeNode(osg::Group::create());
    Held<osg::NodePtr> heldRoot{root};

    SceneFile() { kvNodeUtils::setName(root, "root"); }

    /// Cycles that a test made through the root would keep it alive.
    ~SceneFile() override {
        if (const auto attachment = attachmentOf<osg::AnimationAttachment>(root);
            attachment != NullFC)
            attachment->clear();
    }

    osg::NodePtr addNode(const char* name, const osg::NodeCorePtr& core) {
        const osg::NodePtr node = makeNode(core);
        kvNodeUtils::setName(node, name);
        addChild(root, node);
        return node;
    }

    /// Writes the scene and reads it; the read root, held by the returned object.
    std::unique_ptr<Held<osg::NodePtr>> travel() {
        std::stringstream stream;
        EXPECT_TRUE(osg::SceneFileHandler::the().write(root, stream, GetParam()));
        osg::NodePtr read = osg::SceneFileHandler::the().read(stream, GetParam(), NULL);
        EXPECT_TRUE(read != NullFC);
        return std::make_unique<Held<osg::NodePtr>>(read);
    }

    /// The root that was written: the ASCII format puts it below a group.
    static osg::NodePtr writtenRoot(const osg::NodePtr& read) {
        return kvNodeUtils::getName(read) == "root" ? read : read->getChild(0);
    }

    static osg::NodePtr childOf(const osg::NodePtr& read, const char* name) {
        const osg::NodePtr top = writtenRoot(read);
        for (osg::UInt32 i = 0; i < top->getNChildren(); ++i)
            if (kvNodeUtils::getName(top->getChild(i)) == name) return top->getChild(i);
        return NullFC;
    }
};

void fill(const osg::AnimationCurvePtr& curve, const osg::NodePtr& node) {
    curve->setId(18446744073709551615ull);
    curve->setBelongs2Attribute("translateX");
    curve->setAppropriateNode(node);
    curve->setAFAppNode(node);
    curve->setAFFcId(4294967295u);
    curve->setAFFieldName("translationX");
    curve->setAFGlobalFieldName("translation");
    curve->setAFValue(-0.125f);
    curve->setAFValuePosition(65535);
    curve->setAFDirty(true);
    for (int i = 0; i < 3; ++i) {
        const float x = static_cast<float>(i);
        const osg::AnimationControlPointPtr point = osg::AnimationControlPoint::create();
        point->setControlPoint(osg::Vec2f(x, 0.5f));
        point->setInTangent(osg::Vec2f(x - 0.25f, 1.5f));
        point->setOutTangent(osg::Vec2f(x + 0.25f, -2.5f));
        point->setTangentType(static_cast<osg::UInt8>(i + 4));
        curve->addCurvePoint(point);
    }
}

void expectFilled(const osg::AnimationCurvePtr& curve, const osg::NodePtr& node) {
    EXPECT_EQ(curve->getId(), 18446744073709551615ull);
    EXPECT_EQ(curve->getBelongs2Attribute(), "translateX");
    EXPECT_TRUE(curve->getAppropriateNode() == node);
    EXPECT_TRUE(curve->getAFAppNode() == node);
    EXPECT_EQ(curve->getAFFcId(), 4294967295u);
    EXPECT_EQ(curve->getAFFieldName(), "translationX");
    EXPECT_EQ(curve->getAFGlobalFieldName(), "translation");
    EXPECT_EQ(curve->getAFValue(), -0.125f);
    EXPECT_EQ(curve->getAFValuePosition(), 65535);
    EXPECT_TRUE(curve->getAFDirty());
    ASSERT_EQ(curve->getControlPoints().getSize(), 3u);
    for (osg::UInt32 i = 0; i < 3; ++i) {
        const float x = static_cast<float>(i);
        const osg::AnimationControlPointPtr point = curve->getControlPoints(i);
        EXPECT_EQ(point.getRefCount(), 1);
        EXPECT_EQ(point->getControlPoint()[0], x);
        EXPECT_EQ(point->getControlPoint()[1], 0.5f);
        EXPECT_EQ(point->getInTangent()[0], x - 0.25f);
        EXPECT_EQ(point->getOutTangent()[1], -2.5f);
        EXPECT_EQ(point->getTangentType(), i + 4);
    }
}

TEST_P(SceneFile, keepsCurvesWithTheirKeys) {
    const osg::NodePtr arm = addNode("arm", osg::Group::create());
    const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
    root->addAttachment(attachment);
    const osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
    attachment->addCurve(curve);
    fill(curve, arm);

    const auto read = travel();
    const osg::NodePtr readArm = childOf(*read, "arm");
    ASSERT_TRUE(readArm != NullFC);
    const auto readAttachment = attachmentOf<osg::AnimationAttachment>(writtenRoot(*read));
    ASSERT_TRUE(readAttachment != NullFC);
    EXPECT_EQ(readAttachment.getRefCount(), 1);
    ASSERT_EQ(readAttachment->getCurves().getSize(), 1u);
    EXPECT_EQ(readAttachment->getCurves(0).getRefCount(), 1);
    expectFilled(readAttachment->getCurves(0), readArm);
    // The parent's list and the two fields of the curve.
    EXPECT_EQ(readArm.getRefCount(), 3);
}

TEST_P(SceneFile, keepsBlocksClipsAndTracks) {
    const osg::NodePtr arm = addNode("arm", osg::Group::create());
    const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
    root->addAttachment(attachment);

    const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
    block->setName("wave");
    block->setAppropriateNode(arm);
    block->setId(7);
    block->setCamBlock(true);
    block->setAnimatedType(255);
    block->setFliped(true);
    block->setRepeated(true);
    block->setMotionBlur(true);
    block->setActivity(true);
    block->addCurve(osg::AnimationCurve::create());
    fill(block->getCurves(0), arm);
    attachment->addBlock(block);

    const osg::AnimationBlockPtr item = osg::AnimationBlock::create();
    item->setName("light on");
    item->setStart(10.5f);
    item->setEnd(20.25f);
    const osg::AnimationClipPtr inner = osg::AnimationClip::create();
    inner->setName("inner");
    const osg::AnimationTrackPtr track = osg::AnimationTrack::create();
    track->setNumber(-2);
    track->setActive(true);
    track->setMotionBlur(true);
    track->setFliped(true);
    track->addBlock(block);
    track->addSequence(item);
    track->addClip(inner);
    const osg::AnimationClipPtr clip = osg::AnimationClip::create();
    clip->setName("outer");
    clip->setId(9);
    clip->setFliped(true);
    clip->setRepeated(true);
    clip->setMotionBlur(true);
    clip->addTrack(track);
    clip->addBlock(osg::AnimationBlock::create());
    clip->addSubclip(inner);
    attachment->addClip(clip);

    const auto read = travel();
    const osg::NodePtr readArm = childOf(*read, "arm");
    const auto a = attachmentOf<osg::AnimationAttachment>(writtenRoot(*read));
    ASSERT_TRUE(a != NullFC);
    ASSERT_EQ(a->getBlocks().getSize(), 1u);
    const osg::AnimationBlockPtr b = a->getBlocks(0);
    EXPECT_EQ(b->getName(), "wave");
    EXPECT_TRUE(b->getAppropriateNode() == readArm);
    EXPECT_EQ(b->getId(), 7u);
    EXPECT_TRUE(b->getCamBlock() && b->getFliped() && b->getRepeated() && b->getMotionBlur() &&
                b->getActivity());
    EXPECT_EQ(b->getAnimatedType(), 255);
    ASSERT_EQ(b->getCurves().getSize(), 1u);
    expectFilled(b->getCurves(0), readArm);

    ASSERT_EQ(a->getClips().getSize(), 1u);
    const osg::AnimationClipPtr c = a->getClips(0);
    EXPECT_EQ(c->getName(), "outer");
    EXPECT_EQ(c->getId(), 9u);
    EXPECT_TRUE(c->getFliped() && c->getRepeated() && c->getMotionBlur());
    ASSERT_EQ(c->getTracks().getSize(), 1u);
    ASSERT_EQ(c->getBlocks().getSize(), 1u);
    ASSERT_EQ(c->getSubclips().getSize(), 1u);
    const osg::AnimationTrackPtr t = c->getTracks(0);
    EXPECT_EQ(t->getNumber(), -2);
    EXPECT_TRUE(t->getActive() && t->getMotionBlur() && t->getFliped());
    ASSERT_EQ(t->getBlocks().getSize(), 1u);
    // Shared before, shared again.
    EXPECT_TRUE(t->getBlocks(0) == b);
    EXPECT_EQ(b.getRefCount(), 2);
    ASSERT_EQ(t->getSequences().getSize(), 1u);
    EXPECT_EQ(t->getSequences(0)->getName(), "light on");
    EXPECT_EQ(t->getSequences(0)->getStart(), 10.5f);
    EXPECT_EQ(t->getSequences(0)->getEnd(), 20.25f);
    ASSERT_EQ(t->getClips().getSize(), 1u);
    EXPECT_TRUE(t->getClips(0) == c->getSubclips(0));
    EXPECT_EQ(t->getClips(0).getRefCount(), 2);
    const osg::AnimationClipPtr n = osg::AnimationClipPtr::dcast(t->getClips(0));
    ASSERT_TRUE(n != NullFC);
    EXPECT_EQ(n->getName(), "inner");
}

TEST_P(SceneFile, aReadSceneEndsWithItsLastReference) {
    const osg::NodePtr arm = addNode("arm", osg::Transform3D::create());
    const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
    root->addAttachment(attachment);
    const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
    block->setAppropriateNode(arm);
    block->addCurve(osg::AnimationCurve::create());
    fill(block->getCurves(0), arm);
    attachment->addBlock(block);

    auto read = travel();
    const auto a = attachmentOf<osg::AnimationAttachment>(writtenRoot(*read));
    const osg::UInt32 ids[] = {idOf(writtenRoot(*read)),
                               idOf(childOf(*read, "arm")),
                               idOf(a),
                               idOf(a->getBlocks(0)),
                               idOf(a->getBlocks(0)->getCurves(0)),
                               idOf(a->getBlocks(0)->getCurves(0)->getControlPoints(2))};
    read.reset();
    for (const osg::UInt32 id : ids)
        EXPECT_FALSE(isAlive(id));
}

TEST_P(SceneFile, aCurveOfItsOwnNodeEndsWhenItsListIsCleared) {
    const osg::AnimationAttachmentPtr attachment = osg::AnimationAttachment::create();
    root->addAttachment(attachment);
    attachment->addCurve(osg::AnimationCurve::create());
    fill(attachment->getCurves(0), root);

    auto read = travel();
    const osg::NodePtr readRoot = writtenRoot(*read);
    const auto a = attachmentOf<osg::AnimationAttachment>(readRoot);
    ASSERT_TRUE(a != NullFC);
    ASSERT_EQ(a->getCurves().getSize(), 1u);
    expectFilled(a->getCurves(0), readRoot);
    EXPECT_EQ(readRoot.getRefCount(), 3);
    const osg::UInt32 id = idOf(readRoot);
    a->clear();
    read.reset();
    EXPECT_FALSE(isAlive(id));
}

TEST_P(SceneFile, keepsACamera) {
    const osg::CameraSettingPtr camera = osg::CameraSetting::create();
    addNode("camera", camera);
    camera->setIsViewpoint(true);
    camera->setAt(osg::Pnt3f(1.0f, 2.0f, 3.0f));
    camera->setDistance(4.0f);
    camera->setHeight(-0.5f);
    camera->setTurnTableAngle(450.0f);
    camera->setUp(osg::Vec3f(0.0f, 0.0f, 1.0f));
    camera->setFieldOfView(1.5f);
    camera->setRoll(0.25f);
    camera->setShutterSpeed(0.0625f);
    camera->setFocusDistance(12.0f);
    camera->setApertureDiameter(0.75f);
    camera->setFStop(2.75f);
    camera->setFocalLength(35.0f);

    const auto read = travel();
    const osg::NodePtr node = childOf(*read, "camera");
    ASSERT_TRUE(node != NullFC);
    const osg::CameraSettingPtr c = osg::CameraSettingPtr::dcast(node->getCore());
    ASSERT_TRUE(c != NullFC);
    EXPECT_TRUE(c->getIsViewpoint());
    EXPECT_EQ(c->getAt()[2], 3.0f);
    EXPECT_EQ(c->getUp()[2], 1.0f);
    EXPECT_EQ(c->getFieldOfView(), 1.5f);
    EXPECT_EQ(c->getRoll(), 0.25f);
    EXPECT_EQ(c->getShutterSpeed(), 0.0625f);
    EXPECT_EQ(c->getFocusDistance(), 12.0f);
    EXPECT_EQ(c->getApertureDiameter(), 0.75f);
    EXPECT_EQ(c->getFStop(), 2.75f);
    EXPECT_EQ(c->getFocalLength(), 35.0f);
    EXPECT_EQ(c->getDistance(), 4.0f);
    EXPECT_EQ(c->getHeight(), -0.5f);
    EXPECT_EQ(c->getTurnTableAngle(), 450.0f);
}

TEST_P(SceneFile, remembersTheAngleOfACameraAboveItsTarget) {
    const osg::CameraSettingPtr camera = osg::CameraSetting::create();
    addNode("camera", camera);
    camera->setTurnTableAngle(30.0f);
    camera->setHeight(2.0f);
    const auto read = travel();
    const osg::CameraSettingPtr c =
        osg::CameraSettingPtr::dcast(childOf(*read, "camera")->getCore());
    ASSERT_TRUE(c != NullFC);
    EXPECT_EQ(c->getTurnTableAngle(), 30.0f);
}

TEST_P(SceneFile, keepsAnglesAndTheirOrder) {
    const osg::NodePtr arm = addNode("arm", osg::Transform3D::create());
    kvNodeUtils::setTransformNodeRotation(arm, 10.0f, 20.0f, 400.0f, osg::TransformAttachment::ZXY);
    const osg::Quaternion expected = osg::EulerAngles::toQuaternion(
        osg::Vec3f(10.0f, 20.0f, 400.0f), osg::TransformAttachment::ZXY);

    const auto read = travel();
    const osg::NodePtr node = childOf(*read, "arm");
    ASSERT_TRUE(node != NullFC);
    const osg::Transform3DPtr core = osg::Transform3DPtr::dcast(node->getCore());
    ASSERT_TRUE(core != NullFC);
    EXPECT_EQ(core->getEulerR()[2], 400.0f);
    double dot = 0.0;
    for (osg::UInt32 i = 0; i < 4; ++i)
        dot += double(core->getRotation()[i]) * expected[i];
    EXPECT_NEAR(std::fabs(dot), 1.0, 1e-5);
    const auto angles = attachmentOf<osg::TransformAttachment>(node);
    ASSERT_TRUE(angles != NullFC);
    EXPECT_EQ(angles->getRotationAngles()[0], 10.0f);
    EXPECT_EQ(angles->getRotationAngles()[2], 400.0f);
    EXPECT_EQ(angles->getRotationOrder(), osg::TransformAttachment::ZXY);
}

TEST_P(SceneFile, keepsTheMarkOfLightGeometry) {
    const osg::NodePtr bulb = addNode("bulb", osg::Group::create());
    const osg::LightGeoAttachmentPtr mark = osg::LightGeoAttachment::create();
    mark->setIsLightGeometry(true);
    bulb->addAttachment(mark);
    const auto read = travel();
    const auto found = attachmentOf<osg::LightGeoAttachment>(childOf(*read, "bulb"));
    ASSERT_TRUE(found != NullFC);
    EXPECT_TRUE(found->getIsLightGeometry());
}

TEST_P(SceneFile, keepsAnimationNodes) {
    const osg::AnimAttachmentPtr attachment = osg::AnimAttachment::create();
    root->addAttachment(attachment);
    const osg::AnimNodePtr block = osg::AnimNode::create();
    const osg::AnimBlockPtr blockCore = osg::AnimBlock::create();
    blockCore->setName("wave");
    block->setCore(blockCore);
    const osg::AnimNodePtr curve = osg::AnimNode::create();
    const osg::AnimCurvePtr curveCore = osg::AnimCurve::create();
    curveCore->setName("scale");
    curveCore->setSuffix("Z");
    curveCore->setValueIndex(2);
    curveCore->setColor(osg::Color3f(0.25f, 0.5f, 0.75f));
    curveCore->addPoint(osg::Vec2f(1, 2), osg::Vec2f(3, 4), osg::Vec2f(5, 6), 7, 8, false, true);
    curveCore->addPoint(osg::Vec2f(9, 10), osg::Vec2f(11, 12), osg::Vec2f(13, 14), 15, 16, true,
                        false);
    curve->setCore(curveCore);
    block->addChild(curve);
    attachment->addAnimation(block);

    auto read = travel();
    const auto a = attachmentOf<osg::AnimAttachment>(writtenRoot(*read));
    ASSERT_TRUE(a != NullFC);
    ASSERT_EQ(a->getAnimations().getSize(), 1u);
    const osg::AnimNodePtr b = osg::AnimNodePtr::dcast(a->getAnimations(0));
    ASSERT_TRUE(b != NullFC);
    EXPECT_EQ(b.getRefCount(), 1);
    const osg::AnimBlockPtr readBlock = osg::AnimBlockPtr::dcast(b->getCore());
    ASSERT_TRUE(readBlock != NullFC);
    EXPECT_EQ(readBlock->getName(), "wave");
    ASSERT_EQ(b->getNChildren(), 1u);
    const osg::AnimCurvePtr c = osg::AnimCurvePtr::dcast(b->getChild(0)->getCore());
    ASSERT_TRUE(c != NullFC);
    EXPECT_EQ(c->getName(), "scale");
    EXPECT_EQ(c->getSuffix(), "Z");
    EXPECT_EQ(c->getValueIndex(), 2u);
    EXPECT_EQ(c->getColor()[1], 0.5f);
    ASSERT_EQ(c->getNPoints(), 2u);
    EXPECT_EQ(c->getPoint(1).outTangent[1], 14.0f);
    EXPECT_EQ(c->getPoint(1).inWeight, 15.0f);
    EXPECT_FALSE(c->getPoint(0).broken);
    EXPECT_TRUE(c->getPoint(0).weighted);
    EXPECT_TRUE(c->getPoint(1).broken);
    const osg::UInt32 id = idOf(b);
    read.reset();
    EXPECT_FALSE(isAlive(id));
}

TEST_P(SceneFile, keepsAnUberMaterial) {
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    const osg::UberMaterialPtr material = osg::UberMaterial::create();
    material->setBaseColor(osg::Vec3f(0.5f, 2.0f, 0.0f));
    material->setEmission(osg::Vec4f(1, 2, 3, 4));
    material->setRoughness(0.125f);
    material->setRevision(12);
    group->setMaterial(material);
    addNode("ball", group);
    const auto read = travel();
    const osg::MaterialGroupPtr g = osg::MaterialGroupPtr::dcast(childOf(*read, "ball")->getCore());
    ASSERT_TRUE(g != NullFC);
    const osg::UberMaterialPtr m = osg::UberMaterialPtr::dcast(g->getMaterial());
    ASSERT_TRUE(m != NullFC);
    EXPECT_EQ(m->getBaseColor()[1], 2.0f);
    EXPECT_EQ(m->getEmission()[3], 4.0f);
    EXPECT_EQ(m->getRoughness(), 0.125f);
    EXPECT_EQ(m->getRevision(), 12u);
}

INSTANTIATE_TEST_SUITE_P(Formats, SceneFile, ::testing::Values("osg", "osb"),
                         [](const auto& format) { return std::string(format.param); });

} // namespace
