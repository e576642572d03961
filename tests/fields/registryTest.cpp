// The registry of attribute names, the colours and the small utilities.

#include "support/access/kvAnimationUtils2.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGNode.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Names = std::vector<std::string>;

class Registry : public ::testing::Test {
  protected:
    void SetUp() override { names().clear(); }
    void TearDown() override { names().clear(); }
    static Names& names() { return kvTestAccess<kvAnimationUtils2>::attributes(); }
};

void expectColor(const std::string& name, float r, float g, float b) {
    const osg::Vec3f color = kvAnimationUtils2::getCurveColor(name);
    EXPECT_EQ(color[0], r) << name;
    EXPECT_EQ(color[1], g) << name;
    EXPECT_EQ(color[2], b) << name;
}

} // namespace

TEST_F(Registry, isEmptyAtFirst) {
    EXPECT_FALSE(kvAnimationUtils2::isAnimationAttribute("diffuse"));
    EXPECT_FALSE(kvAnimationUtils2::isAnimationAttribute(""));
}

TEST_F(Registry, keepsNamesInOrderAndOnce) {
    kvAnimationUtils2::addAnimationAttribute("b");
    kvAnimationUtils2::addAnimationAttribute("a");
    kvAnimationUtils2::addAnimationAttribute("b");
    EXPECT_EQ(names(), (Names{"b", "a"}));
    EXPECT_TRUE(kvAnimationUtils2::isAnimationAttribute("a"));
    EXPECT_FALSE(kvAnimationUtils2::isAnimationAttribute("A"));
    EXPECT_FALSE(kvAnimationUtils2::isAnimationAttribute("a "));
    kvAnimationUtils2::subAnimationAttribute("b");
    EXPECT_EQ(names(), (Names{"a"}));
    kvAnimationUtils2::subAnimationAttribute("b");
    EXPECT_EQ(names(), (Names{"a"}));
}

TEST_F(Registry, splitsListsAtCommasWithoutTrimming) {
    kvAnimationUtils2::addAnimationAttributes("a,b,,c");
    EXPECT_EQ(names(), (Names{"a", "b", "", "c"}));
    names().clear();
    kvAnimationUtils2::addAnimationAttributes("a, b");
    EXPECT_EQ(names(), (Names{"a", " b"}));
    names().clear();
    kvAnimationUtils2::addAnimationAttributes("a,");
    EXPECT_EQ(names(), (Names{"a", ""}));
    names().clear();
    kvAnimationUtils2::addAnimationAttributes("");
    EXPECT_EQ(names(), (Names{""}));
    EXPECT_TRUE(kvAnimationUtils2::isAnimationAttribute(""));
    names().clear();
    kvAnimationUtils2::addAnimationAttributes(",");
    EXPECT_EQ(names(), (Names{""}));
}

TEST(CurveColor, goesByTheLastCharacter) {
    expectColor("diffuseR", 229, 76, 76);
    expectColor("translateX", 229, 76, 76);
    expectColor("G", 76, 229, 76);
    expectColor("scaleY", 76, 229, 76);
    expectColor("tintB", 102, 159, 208);
    expectColor("rotateZ", 102, 159, 208);
    expectColor("A", 229, 211, 76);
    expectColor("fI", 229, 211, 76);
    expectColor("fW", 229, 211, 76);
    expectColor("fStop", 243, 142, 69);
    expectColor("focalLength", 243, 142, 69);
    expectColor("translatex", 243, 142, 69);
    expectColor("init", 243, 142, 69);
}

TEST(CurveColor, ofAnEmptyNameIsThatOfTheLastRow) {
    expectColor("", 243, 142, 69);
}

TEST(CurveColor, ofANameThatEndsInANulIsThatOfTheLastRow) {
    expectColor(std::string("X\0", 2), 243, 142, 69);
}

TEST(FloatToBool, isTrueFromAHalf) {
    EXPECT_TRUE(kvAnimationUtils2::floatToBool(0.5F));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(std::nextafter(0.5F, 0.0F)));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(0.49F));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(0.0F));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(-3.0F));
    EXPECT_TRUE(kvAnimationUtils2::floatToBool(1e30F));
    EXPECT_TRUE(kvAnimationUtils2::floatToBool(std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(-std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(kvAnimationUtils2::floatToBool(std::numeric_limits<float>::quiet_NaN()));
}

TEST(FieldRecord, startsUnbound) {
    const kvAnimationUtils2::AnimationField field;
    EXPECT_TRUE(field.node == osg::NullFC);
    EXPECT_EQ(field.fcId, 0U);
    EXPECT_EQ(field.coreTypeId, 0U);
    EXPECT_EQ(field.fieldName, "unknown");
    EXPECT_EQ(field.globalFieldName, "unknown");
    EXPECT_EQ(field.value, 0.0F);
    EXPECT_EQ(field.valuePosition, 0U);
    EXPECT_EQ(field.componentCount, 0U);
    EXPECT_TRUE(field.dirty);
    EXPECT_EQ(field.metaInfo, nullptr);
}

TEST(FieldRecord, isPrinted) {
    kvAnimationUtils2::AnimationField field;
    field.fcId = 180;
    field.fieldName = "diffuseG";
    field.globalFieldName = "diffuse";
    field.value = 0.25F;
    field.valuePosition = 1;
    testing::internal::CaptureStdout();
    kvAnimationUtils2::printAnimationFieldInfo(field);
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "AnimationField INFO\n"
                                                      "===========================\n"
                                                      "| fcId:            180\n"
                                                      "| fieldName:       diffuseG\n"
                                                      "| globalFieldName: diffuse\n"
                                                      "| value:           0.250000\n"
                                                      "| valuePosition:   1\n"
                                                      "| dirty:           1\n"
                                                      "===========================\n"
                                                      "\n");
}
