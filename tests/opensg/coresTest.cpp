// What cores do beside holding fields: transforms, lights, groups, materials, cameras, and the
// references that they count.

#include "held.h"

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using osg::Color4f;
using osg::ComponentTransform;
using osg::ComponentTransformPtr;
using osg::Matrix;
using osg::NodePtr;
using osg::NullFC;
using osg::Quaternion;
using osg::Vec3f;

/// The numbers that OpenSG 1.8 computed from translation 1.5 -2.25 3, half a radian about y and
/// scale 1 2 0.5, column by column.
const float kRealMatrix[16] = {
    0.8775825500488281f,  0, -0.4794255495071411f, 0, 0,    2,      0, 0,
    0.23971277475357056f, 0, 0.43879127502441406f, 0, 1.5f, -2.25f, 3, 1};

TEST(ComponentTransform, computesItsMatrixWhenAPartWasEdited) {
    const auto transform = held<ComponentTransform>();
    const osg::BitVector mask = ComponentTransform::TranslationFieldMask |
                                ComponentTransform::RotationFieldMask |
                                ComponentTransform::ScaleFieldMask;
    beginEditCP(transform.get(), mask);
    transform->setTranslation(Vec3f(1.5f, -2.25f, 3));
    transform->setRotation(Quaternion(Vec3f(0, 1, 0), .5f));
    transform->setScale(Vec3f(1, 2, .5f));
    EXPECT_EQ(transform->getMatrix(), Matrix()) << "before the end of the edit";
    endEditCP(transform.get(), mask);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(transform->getMatrix().getValues()[i], kRealMatrix[i]) << i;
}

TEST(ComponentTransform, takesAMatrixThatWasEditedAloneApart) {
    const auto transform = held<ComponentTransform>();
    const osg::TransformPtr asTransform = transform.get();
    Matrix matrix;
    matrix.setValue(kRealMatrix);
    beginEditCP(asTransform, osg::Transform::MatrixFieldMask);
    asTransform->setMatrix(matrix);
    endEditCP(asTransform, osg::Transform::MatrixFieldMask);
    EXPECT_TRUE(transform->getTranslation().equals(Vec3f(1.5f, -2.25f, 3), 1e-6f));
    EXPECT_TRUE(transform->getRotation().equals(Quaternion(Vec3f(0, 1, 0), .5f), 1e-6f));
    EXPECT_TRUE(transform->getScale().equals(Vec3f(1, 2, .5f), 1e-6f));
    EXPECT_EQ(transform->getScaleOrientation(), Quaternion());
    EXPECT_EQ(transform->getMatrix(), matrix);
}

TEST(ComponentTransform, trustsItsPartsWhenBothWereEdited) {
    const auto transform = held<ComponentTransform>();
    transform->setTranslation(Vec3f(1, 2, 3));
    Matrix other;
    other.setTranslate(9, 9, 9);
    osg::TransformPtr(transform.get())->setMatrix(other);
    endEditCP(transform.get());
    EXPECT_EQ(transform->getTranslation(), Vec3f(1, 2, 3));
    EXPECT_EQ(transform->getMatrix()[3], osg::Vec4f(1, 2, 3, 1));
}

TEST(ComponentTransform, doesNothingForOtherFields) {
    const auto transform = held<ComponentTransform>();
    transform->setTranslation(Vec3f(1, 2, 3));
    endEditCP(transform.get(), ComponentTransform::AttachmentsFieldMask);
    EXPECT_EQ(transform->getMatrix(), Matrix());
}

TEST(ComponentTransform, handsOutItsOwnFields) {
    const Held<ComponentTransformPtr> first(ComponentTransform::create());
    const Held<ComponentTransformPtr> second(ComponentTransform::create());
    for (const ComponentTransformPtr& transform : {first.get(), second.get()}) {
        EXPECT_EQ(transform->getField("center"), transform->getSFCenter());
        EXPECT_EQ(transform->getField(ComponentTransform::RotationFieldId),
                  transform->getSFRotation());
        EXPECT_EQ(transform->getField(ComponentTransform::ScaleFieldId), transform->getSFScale());
        EXPECT_EQ(transform->getField("scaleOrientation"), transform->getSFScaleOrientation());
        EXPECT_EQ(transform->getField(ComponentTransform::TranslationFieldId),
                  transform->getSFTranslation());
        EXPECT_EQ(transform->getField(ComponentTransform::MatrixFieldId), transform->getSFMatrix());
    }
}

TEST(Transform, movesWhatIsBelow) {
    osg::TransformPtr core = osg::Transform::create();
    const Held<NodePtr> root(osg::makeNodeFor(core));
    NodePtr child = osg::Node::create();
    root->addChild(child);
    Matrix matrix;
    matrix.setTranslate(1, 2, 3);
    beginEditCP(core, osg::Transform::MatrixFieldMask);
    core->setMatrix(matrix);
    endEditCP(core, osg::Transform::MatrixFieldMask);
    EXPECT_EQ(child->getToWorld(), matrix);
}

TEST(Switch, choosesNothingAtFirst) {
    const auto core = held<osg::Switch>();
    EXPECT_EQ(core->getChoice(), osg::Switch::NONE);
    EXPECT_EQ(osg::Int32(osg::Switch::ALL), -2);
    core->osg::SwitchBase::setChoice(3);
    EXPECT_EQ(core->getChoice(), 3);
    EXPECT_EQ(core->getSFChoice()->getValue(), 3);
}

TEST(Light, isSetThroughItsBaseAndWithFourNumbers) {
    const auto light = held<osg::SpotLight>();
    light->osg::LightBase::setAmbient(Color4f(1, 2, 3, 4));
    EXPECT_EQ(light->getAmbient(), Color4f(1, 2, 3, 4));
    light->setDiffuse(.1f, .2f, .3f, 1);
    EXPECT_EQ(light->getDiffuse(), Color4f(.1f, .2f, .3f, 1));
    light->setSpecular(Color4f(1, 0, 0, 1));
    EXPECT_EQ(light->getSFSpecular()->getValue(), Color4f(1, 0, 0, 1));
    light->setPosition(1, 2, 3);
    light->setDirection(Vec3f(0, -1, 0));
    EXPECT_EQ(light->getPosition(), osg::Pnt3f(1, 2, 3));
    EXPECT_EQ(light->getDirection(), Vec3f(0, -1, 0));
}

TEST(Light, classesAreToldApartByTheirPointers) {
    const auto spot = held<osg::SpotLight>();
    const osg::FieldContainerPtr container = spot.get();
    EXPECT_NE(osg::LightPtr::dcast(container), NullFC);
    EXPECT_NE(osg::PointLightPtr::dcast(container), NullFC);
    EXPECT_NE(osg::GroupPtr::dcast(container), NullFC);
    EXPECT_EQ(osg::DirectionalLightPtr::dcast(container), NullFC);
    const auto environment = held<osg::LightEnv>();
    EXPECT_EQ(osg::LightPtr::dcast(environment.get()), NullFC);
    EXPECT_EQ(osg::GroupPtr::dcast(environment.get()), NullFC);
    EXPECT_NE(osg::NodeCorePtr::dcast(environment.get()), NullFC);
}

TEST(Light, countsItsBeacon) {
    auto light = std::make_unique<Held<osg::PointLightPtr>>(osg::PointLight::create());
    const Held<NodePtr> first(osg::Node::create());
    const Held<NodePtr> second(osg::Node::create());
    (*light)->setBeacon(first);
    EXPECT_EQ(first.get().getRefCount(), 2);
    (*light)->setBeacon(first);
    EXPECT_EQ(first.get().getRefCount(), 2);
    (*light)->setBeacon(second);
    EXPECT_EQ(first.get().getRefCount(), 1);
    EXPECT_EQ(second.get().getRefCount(), 2);
    light.reset();
    EXPECT_EQ(second.get().getRefCount(), 1);
}

TEST(Light, losesItsBeaconOnNull) {
    const auto light = held<osg::PointLight>();
    light->setBeacon(osg::Node::create());
    const osg::UInt32 id = getContainerId(light->getBeacon());
    EXPECT_TRUE(isAlive(id));
    light->setBeacon(NullFC);
    EXPECT_FALSE(isAlive(id));
}

TEST(Light, countsABeaconThatAReaderPutIntoItsField) {
    const Held<NodePtr> beacon(osg::Node::create());
    {
        const auto light = held<osg::PointLight>();
        light->getSFBeacon()->setValue(beacon);
        EXPECT_EQ(beacon.get().getRefCount(), 1);
        endEditCP(light.get(), osg::PointLight::BeaconFieldMask,
                  osg::ChangedOrigin::Abstract | osg::ChangedOrigin::AbstrIgnoreCore |
                      osg::ChangedOrigin::AbstrIgnoreChild);
        EXPECT_EQ(beacon.get().getRefCount(), 2);
    }
    EXPECT_EQ(beacon.get().getRefCount(), 1);
}

TEST(Camera, doesNotCountItsBeacon) {
    const Held<NodePtr> beacon(osg::Node::create());
    const auto camera = held<osg::PerspectiveCamera>();
    camera->setBeacon(beacon);
    EXPECT_EQ(beacon.get().getRefCount(), 1);
    EXPECT_EQ(camera->getBeacon(), beacon.get());
    endEditCP(camera.get(), osg::FieldBits::AllFields, osg::ChangedOrigin::Abstract);
    EXPECT_EQ(beacon.get().getRefCount(), 1);
    EXPECT_EQ(osg::NodeCorePtr::dcast(camera.get()), NullFC);
}

TEST(Camera, keepsItsNumbers) {
    const auto camera = held<osg::PerspectiveCamera>();
    camera->setFov(.8f);
    camera->setNear(.1f);
    camera->setFar(1000);
    EXPECT_EQ(camera->getFov(), .8f);
    EXPECT_EQ(osg::CameraPtr(camera.get())->getNear(), .1f);
    EXPECT_EQ(camera->getSFFar()->getValue(), 1000.f);
}

TEST(MaterialGroup, countsItsMaterial) {
    const Held<osg::MaterialPtr> material{osg::MaterialPtr(osg::SimpleMaterial::create())};
    {
        const auto group = held<osg::MaterialGroup>();
        group->setMaterial(material);
        EXPECT_EQ(material.get().getRefCount(), 2);
        EXPECT_EQ(group->getMaterial(), material.get());
    }
    EXPECT_EQ(material.get().getRefCount(), 1);
}

TEST(Material, hasOneForReadyMadeGeometry) {
    const osg::SimpleMaterialPtr material =
        osg::SimpleMaterialPtr::dcast(osg::getDefaultMaterial());
    ASSERT_NE(material, NullFC);
    EXPECT_EQ(material, osg::getDefaultMaterial());
    EXPECT_EQ(material->getDiffuse(), osg::Color3f(.7f, .7f, .5f));
    EXPECT_EQ(material->getShininess(), 20.f);
}

} // namespace
