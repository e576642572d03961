// Binding a curve by its attribute, and as it was stored.

#include "fields/fieldsFixture.h"

#include <kvAnimationCurve.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGTransform.h>

#include <OSGAnimationCurve.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

namespace {

using kvtest::addChild;
using kvtest::Field;
using kvtest::makeNode;
using kvtest::Owned;

Field bound(const osg::NodePtr& node, const std::string& attribute) {
    kvAnimationCurve curve(attribute);
    curve.setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(&curve);
    return curve.getAnimationField();
}

void expectBinding(const Field& field, const osg::NodePtr& node,
                   const osg::FieldContainerPtr& container, const std::string& name,
                   const std::string& globalName, unsigned position) {
    EXPECT_TRUE(field.node == node);
    EXPECT_EQ(field.fcId, osg::getContainerId(container));
    EXPECT_EQ(field.fieldName, name);
    EXPECT_EQ(field.globalFieldName, globalName);
    EXPECT_EQ(field.valuePosition, position);
    EXPECT_TRUE(field.dirty);
}

void expectUnbound(const Field& field) {
    EXPECT_EQ(field.fcId, 0U);
    EXPECT_EQ(field.fieldName, "unknown");
    EXPECT_EQ(field.globalFieldName, "unknown");
}

} // namespace

TEST(BindByAttribute, translationAndScaleOfAComponentTransform) {
    const Owned<osg::NodePtr> node(makeNode(osg::Transform3D::create()));
    const osg::NodeCorePtr core = node->getCore();
    expectBinding(bound(node, "translateX"), node, core, "translationX", "translation", 0);
    expectBinding(bound(node, "translationZ"), node, core, "translationZ", "translation", 2);
    expectBinding(bound(node, "scaleY"), node, core, "scaleY", "scale", 1);
}

TEST(BindByAttribute, translationOfAPlainTransformIsInItsMatrix) {
    const Owned<osg::NodePtr> node(makeNode(osg::Transform::create()));
    const osg::NodeCorePtr core = node->getCore();
    expectBinding(bound(node, "translateX"), node, core, "translationX", "matrix", 3);
    expectBinding(bound(node, "translateY"), node, core, "translationY", "matrix", 7);
    expectBinding(bound(node, "translateZ"), node, core, "translationZ", "matrix", 11);
    expectUnbound(bound(node, "scaleX"));
    Field field = bound(node, "translateY");
    field.value = 5.0F;
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(osg::TransformPtr::dcast(core)->getMatrix()[3][1], 5.0F);
}

TEST(BindByAttribute, rotationIsBoundToTheNode) {
    const Owned<osg::NodePtr> node(makeNode(osg::Transform3D::create()));
    expectBinding(bound(node, "rotateX"), node, node.get(), "rotationX", "rotation", 0);
    expectBinding(bound(node, "rotationY"), node, node.get(), "rotationY", "rotation", 0);
    expectBinding(bound(node, "eulerRZ"), node, node.get(), "rotationZ", "rotation", 0);
    Field field = bound(node, "rotateZ");
    field.value = 30.0F;
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 30.0F);
}

TEST(BindByAttribute, aGeometryUnderATransform3DBindsToThatTransform) {
    const Owned<osg::NodePtr> parent(makeNode(osg::Transform3D::create()));
    const osg::NodePtr child = makeNode(osg::Geometry::create());
    addChild(parent, child);
    expectBinding(bound(child, "translateX"), parent, parent->getCore(), "translationX",
                  "translation", 0);
    expectBinding(bound(child, "visible"), parent, parent.get(), "visible", "visible", 0);
}

TEST(BindByAttribute, aNodeUnderAnotherTransformBindsToTheTransformOfItsParent) {
    const Owned<osg::NodePtr> parent(makeNode(osg::ComponentTransform::create()));
    const osg::NodePtr child = makeNode(osg::Group::create());
    addChild(parent, child);
    expectBinding(bound(child, "translateX"), parent, parent->getCore(), "translationX",
                  "translation", 0);
    expectBinding(bound(child, "rotateX"), parent, parent.get(), "rotationX", "rotation", 0);
    expectBinding(bound(child, "visible"), child, child, "visible", "visible", 0);
}

TEST(BindByAttribute, aLightBindsToTheTransformOfItsBeacon) {
    const Owned<osg::NodePtr> beacon(makeNode(osg::ComponentTransform::create()));
    const osg::PointLightPtr light = osg::PointLight::create();
    const Owned<osg::NodePtr> node(makeNode(light));
    expectUnbound(bound(node, "translateX"));
    light->setBeacon(beacon);
    expectBinding(bound(node, "translateX"), beacon, beacon->getCore(), "translationX",
                  "translation", 0);
    expectBinding(bound(node, "rotateY"), beacon, beacon.get(), "rotationY", "rotation", 0);
    expectBinding(bound(node, "diffuseG"), node, light, "diffuseG", "diffuse", 1);
    expectBinding(bound(node, "ambientA"), node, light, "ambientA", "ambient", 3);
    expectBinding(bound(node, "constantAttenuation"), node, light, "constantAttenuation",
                  "constantAttenuation", 0);
}

TEST(BindByAttribute, withoutATransformNothingIsBound) {
    const Owned<osg::NodePtr> node(makeNode(osg::Group::create()));
    for (const char* name : {"translateX", "scaleX", "rotateX", "eulerRX"})
        expectUnbound(bound(node, name));
}

TEST(BindByAttribute, theCameraSettingHasLensOrbitAndFields) {
    const Owned<osg::NodePtr> node(makeNode(osg::CameraSetting::create()));
    for (const char* name :
         {"distance", "height", "turnTableAngle", "fStop", "focalLength", "fieldOfView"})
        expectBinding(bound(node, name), node, node->getCore(), name, name, 0);
    expectBinding(bound(node, "fromY"), node, node->getCore(), "fromY", "from", 1);
    expectBinding(bound(node, "roll"), node, node->getCore(), "roll", "roll", 0);
    expectUnbound(bound(node, "activateCamera"));
    const Owned<osg::NodePtr> group(makeNode(osg::Group::create()));
    expectUnbound(bound(group, "fStop"));
}

TEST(BindByAttribute, otherNamesAreLookedForInCoreNodeMaterialAndAttachments) {
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    group->setMaterial(material);
    const Owned<osg::NodePtr> node(makeNode(group));
    const osg::TransformAttachmentPtr attachment = osg::TransformAttachment::create();
    node->addAttachment(attachment);
    expectBinding(bound(node, "diffuseR"), node, material, "diffuseR", "diffuse", 0);
    expectBinding(bound(node, "transparency"), node, material, "transparency", "transparency", 0);
    expectBinding(bound(node, "travMask"), node, node.get(), "travMask", "travMask", 0);
    expectBinding(bound(node, "rotationAnglesY"), node, attachment, "rotationAnglesY",
                  "rotationAngles", 1);
    expectUnbound(bound(node, "diffuseA"));
    expectUnbound(bound(node, "nothing"));
    expectUnbound(bound(node, ""));
    expectUnbound(bound(node, "X"));
}

TEST(BindByAttribute, aGeometryHasAMaterialToo) {
    const osg::GeometryPtr geometry = osg::Geometry::create();
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    geometry->setMaterial(material);
    const Owned<osg::NodePtr> node(makeNode(geometry));
    expectBinding(bound(node, "emissionB"), node, material, "emissionB", "emission", 2);
}

TEST(BindByAttribute, aCurveWithoutANodeIsUnbound) {
    expectUnbound(bound(osg::NullFC, "visible"));
    const Owned<osg::NodePtr> bare(osg::Node::create());
    expectUnbound(bound(bare, "visible"));
    kvAnimationUtils2::createAnimationField(nullptr);
}

TEST(BindByAttribute, replacesTheBindingThatTheCurveHad) {
    kvAnimationCurve curve("visible");
    Field old;
    old.fcId = 17;
    old.fieldName = "old";
    curve.setAnimationField(old);
    kvAnimationUtils2::createAnimationField(&curve);
    expectUnbound(curve.getAnimationField());
}

namespace {

// A stored curve and the binding that comes back from it.
class BindAsStored : public ::testing::Test {
  protected:
    Field restored() {
        kvAnimationCurve curve("translateX");
        curve.setAppropriateNode(node);
        kvAnimationUtils2::createAnimationField(stored.get(), &curve);
        return curve.getAnimationField();
    }
    void store(const char* name, const char* globalName, osg::UInt32 fcId) {
        stored->setAFFieldName(name);
        stored->setAFGlobalFieldName(globalName);
        stored->setAFFcId(fcId);
    }

    static constexpr osg::UInt32 kStale = 4000000000U;

    Owned<osg::NodePtr> node{makeNode(osg::Transform3D::create())};
    Owned<osg::AnimationCurvePtr> stored{osg::AnimationCurve::create()};
};

} // namespace

TEST_F(BindAsStored, sevenFieldsComeBack) {
    store("scaleY", "scale", osg::getContainerId(node->getCore()));
    stored->setAFAppNode(node);
    stored->setAFValue(2.5F);
    stored->setAFValuePosition(1);
    stored->setAFDirty(false);
    const Field field = restored();
    EXPECT_TRUE(field.node == node.get());
    EXPECT_EQ(field.fcId, osg::getContainerId(node->getCore()));
    EXPECT_EQ(field.fieldName, "scaleY");
    EXPECT_EQ(field.globalFieldName, "scale");
    EXPECT_EQ(field.value, 2.5F);
    EXPECT_EQ(field.valuePosition, 1U);
    EXPECT_FALSE(field.dirty);
}

TEST_F(BindAsStored, aStaleIdIsFoundAgain) {
    stored->setAFAppNode(node);
    store("translationX", "translation", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(node->getCore()));
    store("rotationX", "rotation", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(node.get()));
    store("visible", "visible", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(node.get()));
}

TEST_F(BindAsStored, anIdThatNamesAStrangerIsNotBelieved) {
    // Such a container may well have the field: ids are given out anew in every process.
    const Owned<osg::NodePtr> stranger(makeNode(osg::Transform3D::create()));
    stored->setAFAppNode(node);
    store("translationX", "translation", osg::getContainerId(stranger->getCore()));
    EXPECT_EQ(restored().fcId, osg::getContainerId(node->getCore()));
}

TEST_F(BindAsStored, anIdOfTheNodesThatDoesNotFitIsReplaced) {
    stored->setAFAppNode(node);
    store("translationX", "translation", osg::getContainerId(node.get()));
    EXPECT_EQ(restored().fcId, osg::getContainerId(node->getCore()));
    store("rotationX", "rotation", osg::getContainerId(node->getCore()));
    EXPECT_EQ(restored().fcId, osg::getContainerId(node.get()))
        << "the core has a field of that name, but angles are the node's";
}

TEST_F(BindAsStored, whatFitsNowhereGetsNoId) {
    stored->setAFAppNode(node);
    store("nothing", "nothing", osg::getContainerId(node.get()));
    EXPECT_EQ(restored().fcId, 0U);
    store("fStop", "fStop", osg::getContainerId(node->getCore()));
    EXPECT_EQ(restored().fcId, 0U) << "no camera setting";
}

TEST_F(BindAsStored, lensAndOrbitFitACameraSetting) {
    const Owned<osg::NodePtr> camera(makeNode(osg::CameraSetting::create()));
    stored->setAFAppNode(camera);
    store("fStop", "fStop", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(camera->getCore()));
    store("fieldOfView", "fieldOfView", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(camera->getCore()));
}

TEST_F(BindAsStored, materialsAndAttachmentsBelongToTheNode) {
    const osg::GeometryPtr geometry = osg::Geometry::create();
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    geometry->setMaterial(material);
    const Owned<osg::NodePtr> shape(makeNode(geometry));
    const osg::TransformAttachmentPtr attachment = osg::TransformAttachment::create();
    shape->addAttachment(attachment);
    stored->setAFAppNode(shape);
    store("diffuseR", "diffuse", osg::getContainerId(material));
    EXPECT_EQ(restored().fcId, osg::getContainerId(material));
    store("diffuseR", "diffuse", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(material));
    store("rotationAnglesX", "rotationAngles", kStale);
    EXPECT_EQ(restored().fcId, osg::getContainerId(attachment));
}

TEST_F(BindAsStored, withoutANodeTheIdIsKept) {
    store("diffuseR", "diffuse", 77);
    const Field field = restored();
    EXPECT_EQ(field.fcId, 77U);
    EXPECT_TRUE(field.node == osg::NullFC);
}

TEST_F(BindAsStored, withoutANameTheAttributeDecides) {
    stored->setAFAppNode(node);
    stored->setAFFcId(kStale);
    expectBinding(restored(), node, node->getCore(), "translationX", "translation", 0);
}

TEST_F(BindAsStored, whatBindingByAttributeMadeComesBackTheSame) {
    const Owned<osg::NodePtr> plain(makeNode(osg::Transform::create()));
    const osg::NodePtr child = makeNode(osg::Group::create());
    addChild(plain, child);
    for (const char* attribute : {"translateX", "rotateY", "visible"}) {
        const Field before = bound(child, attribute);
        ASSERT_NE(before.fcId, 0U) << attribute;
        stored->setAFAppNode(before.node);
        store(before.fieldName.c_str(), before.globalFieldName.c_str(), kStale);
        EXPECT_EQ(restored().fcId, before.fcId) << attribute;
    }
}

TEST_F(BindAsStored, nullDoesNothing) {
    kvAnimationCurve curve("x");
    kvAnimationUtils2::createAnimationField(osg::AnimationCurvePtr(), &curve);
    kvAnimationUtils2::createAnimationField(stored.get(), nullptr);
    EXPECT_EQ(curve.getAnimationField().fcId, 0U);
}
