// The material that describes its own parameters.
#include <OSGUberMaterial.h>

#include "held.h"

#include <gtest/gtest.h>

namespace {

TEST(UberMaterial, isAMaterialThatTheFactoryKnows) {
    const kvtest::Held<osg::FieldContainerPtr> made(
        osg::FieldContainerFactory::the()->createFieldContainer("UberMaterial"));
    ASSERT_TRUE(made.get() != osg::NullFC);
    EXPECT_TRUE(made->getType().isDerivedFrom(osg::Material::getClassType()));
    EXPECT_TRUE(osg::UberMaterialPtr::dcast(made.get()) != osg::NullFC);
}

TEST(UberMaterial, describesItsParametersAndNothingElse) {
    const kvtest::Made<osg::UberMaterial> material;
    const auto parameters = material->getParameterDescriptions();
    ASSERT_EQ(parameters.size(), 3u);
    EXPECT_EQ(parameters[0].getTypeName(), "Color");
    EXPECT_EQ(parameters[0].getName(), "baseColor");
    EXPECT_EQ(parameters[1].getTypeName(), "Color");
    EXPECT_EQ(parameters[1].getName(), "emission");
    EXPECT_EQ(parameters[2].getTypeName(), "Float");
    EXPECT_EQ(parameters[2].getName(), "roughness");
    for (const auto& parameter : parameters)
        EXPECT_NE(material->getField(parameter.getName().c_str()), nullptr);
    EXPECT_NE(material->getField("revision"), nullptr);
    EXPECT_STREQ(material->getField("baseColor")->getContentType().getCName(), "Vec3f");
    EXPECT_STREQ(material->getField("emission")->getContentType().getCName(), "Vec4f");
    EXPECT_STREQ(material->getField("roughness")->getContentType().getCName(), "Real32");
}

TEST(UberMaterial, hasDefaultsThatACopyKeeps) {
    const kvtest::Made<osg::UberMaterial> material;
    EXPECT_EQ(material->getBaseColor()[2], 1.0f);
    EXPECT_EQ(material->getRoughness(), 0.5f);
    material->setRoughness(0.25f);
    const kvtest::Held<osg::UberMaterialPtr> copy(
        osg::UberMaterialPtr::dcast(material->shallowCopy()));
    EXPECT_EQ(copy->getRoughness(), 0.25f);
}

} // namespace
