// Field discovery: which bindings a container offers.

#include "fields/fieldsFixture.h"
#include "support/access/kvAnimationUtils2.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSwitch.h>

#include <OSGUberMaterial.h>

namespace {

using kvtest::Field;
using kvtest::Owned;
using osg::NumberBox;
using osg::NumberBoxPtr;

class Discovery : public ::testing::Test {
  protected:
    void SetUp() override { kvTestAccess<kvAnimationUtils2>::attributes().clear(); }
    void TearDown() override { kvTestAccess<kvAnimationUtils2>::attributes().clear(); }

    std::vector<Field> find(const std::string& attributes) {
        kvAnimationUtils2::addAnimationAttributes(attributes);
        return kvAnimationUtils2::getAnimationFields(node, box());
    }

    NumberBoxPtr box() const { return NumberBoxPtr::dcast(node->getCore()); }

    Owned<osg::NodePtr> node{kvtest::makeNode(NumberBox::create())};
};

std::vector<std::string> namesOf(const std::vector<Field>& fields) {
    std::vector<std::string> names;
    for (const Field& field : fields)
        names.push_back(field.fieldName);
    return names;
}

using Names = std::vector<std::string>;

void expectPositions(const std::vector<Field>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(fields[i].valuePosition, i);
}

} // namespace

TEST_F(Discovery, ofNothingIsEmpty) {
    EXPECT_TRUE(kvAnimationUtils2::getAnimationFields(node, osg::NullFC).empty());
    EXPECT_TRUE(kvAnimationUtils2::getAnimationFields(osg::NullFC, osg::NullFC).empty());
}

TEST_F(Discovery, unregisteredFieldsAreLeftOut) {
    EXPECT_TRUE(kvAnimationUtils2::getAnimationFields(node, box()).empty());
    EXPECT_TRUE(find("Tint,tin,tint ").empty());
}

TEST_F(Discovery, aColorHasThreeComponents) {
    box()->setTint(osg::Color3f(0.25F, 0.5F, 0.75F));
    const std::vector<Field> fields = find("tint");
    ASSERT_EQ(namesOf(fields), (Names{"tintR", "tintG", "tintB"}));
    expectPositions(fields);
    EXPECT_EQ(fields[1].globalFieldName, "tint");
    EXPECT_EQ(fields[1].value, 0.5F);
    EXPECT_EQ(fields[1].fcId, osg::getContainerId(box()));
    EXPECT_TRUE(fields[1].node == node.get());
    EXPECT_TRUE(fields[1].dirty);
    EXPECT_EQ(fields[1].componentCount, 3U);
    EXPECT_EQ(fields[1].coreTypeId, NumberBox::getClassType().getId());
}

TEST_F(Discovery, aColorWithAlphaHasFour) {
    box()->setGlow(osg::Color4f(0.1F, 0.2F, 0.3F, 0.4F));
    const std::vector<Field> fields = find("glow");
    EXPECT_EQ(namesOf(fields), (Names{"glowR", "glowG", "glowB", "glowA"}));
    expectPositions(fields);
    EXPECT_EQ(fields[3].value, 0.4F);
}

TEST_F(Discovery, vectorsAndPointsHaveAxes) {
    EXPECT_EQ(namesOf(find("direction")), (Names{"directionX", "directionY", "directionZ"}));
    kvTestAccess<kvAnimationUtils2>::attributes().clear();
    EXPECT_EQ(namesOf(find("place")), (Names{"placeX", "placeY", "placeZ"}));
    kvTestAccess<kvAnimationUtils2>::attributes().clear();
    EXPECT_EQ(namesOf(find("four")), (Names{"fourX", "fourY", "fourZ", "fourW"}));
}

TEST_F(Discovery, singleNumbersKeepTheNameOfTheField) {
    box()->setFlag(true);
    box()->setFieldOfView(1.5F);
    const std::vector<Field> fields = find("fieldOfView,count,flag,precise");
    ASSERT_EQ(namesOf(fields), (Names{"flag", "count", "precise", "fieldOfView"}))
        << "in the order of the fields, not of the registry";
    EXPECT_EQ(fields[0].value, 1.0F);
    EXPECT_EQ(fields[3].value, 1.5F) << "in the stored unit";
    EXPECT_EQ(fields[0].valuePosition, 0U);
    EXPECT_EQ(fields[0].componentCount, 1U);
}

TEST_F(Discovery, otherCountsYieldNothing) {
    EXPECT_TRUE(find("pair,frame,turn,label,box,target,shortVector").empty());
}

TEST_F(Discovery, aListCountsAsItsNumbers) {
    EXPECT_TRUE(find("weights,points").empty());
    box()->getWeights().push_back(0.5F);
    const std::vector<Field> one = find("weights");
    ASSERT_EQ(namesOf(one), (Names{"weights"}));
    EXPECT_EQ(one[0].value, 0.5F);
    box()->getWeights().push_back(0.5F);
    EXPECT_TRUE(find("weights").empty());
    box()->getPoints().push_back(osg::Vec3f(1, 2, 3));
    box()->getPoints().push_back(osg::Vec3f(4, 5, 6));
    const std::vector<Field> points = find("points");
    ASSERT_EQ(namesOf(points), (Names{"pointsX", "pointsY", "pointsZ"}));
    EXPECT_EQ(points[2].value, 3.0F);
    EXPECT_EQ(points[2].componentCount, 6U);
}

TEST_F(Discovery, bindingsCanBeWrittenThrough) {
    std::vector<Field> fields = find("direction,tint,flag");
    for (Field& field : fields) {
        field.value = 0.5F + static_cast<float>(field.valuePosition);
        kvAnimationUtils2::setRealFieldValue(field);
        EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field),
                  field.fieldName == "flag" ? 1.0F : field.value);
    }
    EXPECT_EQ(box()->getDirection()[2], 2.5F);
    EXPECT_EQ(box()->getTint()[1], 1.5F);
}

TEST_F(Discovery, tellsNamesToShow) {
    osg::setName(node.get(), "lamp");
    const std::vector<Field> fields = find("tint");
    ASSERT_NE(fields[0].metaInfo, nullptr);
    EXPECT_EQ(fields[0].metaInfo->nodeName, "lamp");
    EXPECT_EQ(fields[0].metaInfo->coreTypeName, "NumberBox");
    EXPECT_EQ(fields[0].metaInfo, fields[2].metaInfo) << "shared";
    const auto info = kvAnimationUtils2::getMetaInfo(osg::NullFC);
    EXPECT_EQ(info.nodeName, "");
    EXPECT_EQ(info.coreTypeName, "");
}

TEST_F(Discovery, worksWithoutANode) {
    kvAnimationUtils2::addAnimationAttribute("tint");
    const std::vector<Field> fields = kvAnimationUtils2::getAnimationFields(osg::NullFC, box());
    ASSERT_EQ(fields.size(), 3U);
    EXPECT_TRUE(fields[0].node == osg::NullFC);
    EXPECT_EQ(fields[0].coreTypeId, 0U);
    EXPECT_EQ(fields[0].metaInfo, nullptr);
}

TEST_F(Discovery, worksOnTheNodeItself) {
    kvAnimationUtils2::addAnimationAttribute("travMask");
    EXPECT_EQ(namesOf(kvAnimationUtils2::getAnimationFields(node, node.get())),
              (Names{"travMask"}));
}

TEST_F(Discovery, coversTheLastFieldOfAType) {
    const Owned<osg::NodePtr> chooser(kvtest::makeNode(osg::Switch::create()));
    kvAnimationUtils2::addAnimationAttribute("choice");
    const osg::FieldContainerType& type = chooser->getCore()->getType();
    ASSERT_STREQ(
        chooser->getCore()->getType().getFieldDescription(type.getNumFieldDescs())->getCName(),
        "choice");
    const std::vector<Field> fields =
        kvAnimationUtils2::getAnimationFields(chooser, chooser->getCore());
    ASSERT_EQ(namesOf(fields), (Names{"choice"}));
    kvtest::write(chooser->getCore(), "choice", 0, 3.0F);
    EXPECT_EQ(osg::SwitchPtr::dcast(chooser->getCore())->getChoice(), 3);
}

TEST_F(Discovery, ofAnUberMaterialIsItsParameters) {
    const Owned<osg::UberMaterialPtr> material(osg::UberMaterial::create());
    kvAnimationUtils2::addAnimationAttributes("revision,baseColor");
    const std::vector<Field> fields = kvAnimationUtils2::getAnimationFields(node, material.get());
    EXPECT_EQ(namesOf(fields), (Names{"baseColorR", "baseColorG", "baseColorB", "emissionR",
                                      "emissionG", "emissionB", "emissionI", "roughness"}))
        << "whether they are registered or not";
    EXPECT_EQ(fields[6].valuePosition, 3U);
    EXPECT_EQ(fields[6].globalFieldName, "emission");
}

TEST(SpecialDiscovery, offersTheLensAndTheOrbitOfACamera) {
    const Owned<osg::NodePtr> node(kvtest::makeNode(osg::CameraSetting::create()));
    const osg::CameraSettingPtr setting = osg::CameraSettingPtr::dcast(node->getCore());
    setting->setFocalLength(35.0F);
    setting->setHeight(2.0F);
    const std::vector<Field> fields = kvAnimationUtils2::getSpecialAnimationFields(node);
    ASSERT_EQ(namesOf(fields),
              (Names{"distance", "height", "turnTableAngle", "fStop", "focalLength"}));
    for (const Field& field : fields) {
        EXPECT_EQ(field.globalFieldName, field.fieldName);
        EXPECT_EQ(field.fcId, osg::getContainerId(setting));
        EXPECT_EQ(field.valuePosition, 0U);
        EXPECT_EQ(field.componentCount, 1U);
        EXPECT_EQ(field.coreTypeId, setting->getType().getId());
        EXPECT_TRUE(field.dirty);
        ASSERT_NE(field.metaInfo, nullptr);
        EXPECT_EQ(field.metaInfo->coreTypeName, "CameraSetting");
        EXPECT_EQ(field.value, kvAnimationUtils2::getRealFieldValue(field));
        EXPECT_TRUE(field.node == node.get());
    }
    EXPECT_NEAR(fields[1].value, 2.0F, 1e-6F);
    EXPECT_EQ(fields[4].value, 35.0F);
}

TEST(SpecialDiscovery, offersNothingElsewhere) {
    EXPECT_TRUE(kvAnimationUtils2::getSpecialAnimationFields(osg::NullFC).empty());
    const Owned<osg::NodePtr> bare(osg::Node::create());
    EXPECT_TRUE(kvAnimationUtils2::getSpecialAnimationFields(bare).empty());
    const Owned<osg::NodePtr> group(kvtest::makeNode(osg::Group::create()));
    EXPECT_TRUE(kvAnimationUtils2::getSpecialAnimationFields(group).empty());
}

TEST(CoreTypeId, isThatOfTheCore) {
    EXPECT_EQ(kvAnimationUtils2::extractCoreTypeId(osg::NullFC), 0U);
    const Owned<osg::NodePtr> bare(osg::Node::create());
    EXPECT_EQ(kvAnimationUtils2::extractCoreTypeId(bare), 0U);
    const Owned<osg::NodePtr> group(kvtest::makeNode(osg::Group::create()));
    EXPECT_EQ(kvAnimationUtils2::extractCoreTypeId(group), osg::Group::getClassType().getId());
}
