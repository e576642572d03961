// Numbers written to and read from fields of every kind.

#include "fields/fieldsFixture.h"
#include "support/allocationCount.h"

#include <OpenSG/OSGGroup.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using kvtest::bindingTo;
using kvtest::Owned;
using kvtest::read;
using kvtest::write;
using osg::NumberBox;
using osg::NumberBoxPtr;

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

class FieldValues : public ::testing::Test {
  protected:
    void SetUp() override { NumberBox::edits().clear(); }

    Owned<NumberBoxPtr> box{NumberBox::create()};
};

void expectOneEdit(osg::BitVector mask) {
    ASSERT_EQ(NumberBox::edits().size(), 1U);
    EXPECT_EQ(NumberBox::edits()[0].mask, mask);
    EXPECT_EQ(NumberBox::edits()[0].origin, static_cast<osg::UInt32>(osg::ChangedOrigin::External));
    NumberBox::edits().clear();
}

} // namespace

TEST_F(FieldValues, aFloatKeepsEveryBit) {
    const float value = 0.123456789F; // more than the seven digits of OpenSG's text
    write(box, "amount", 0, value);
    EXPECT_EQ(box->getAmount(), value);
    EXPECT_EQ(read(box, "amount"), value);
    expectOneEdit(NumberBox::AmountFieldMask);
}

TEST_F(FieldValues, aFloatTakesNaNAndInfinity) {
    write(box, "amount", 0, kNaN);
    EXPECT_TRUE(std::isnan(box->getAmount()));
    write(box, "amount", 0, -kInfinity);
    EXPECT_EQ(box->getAmount(), -kInfinity);
}

TEST_F(FieldValues, aDoubleIsWrittenExactlyAndReadRounded) {
    write(box, "precise", 0, 0.1F);
    EXPECT_EQ(box->getPrecise(), static_cast<double>(0.1F));
    box->setPrecise(1.0 / 3.0);
    EXPECT_EQ(read(box, "precise"), static_cast<float>(1.0 / 3.0));
}

TEST_F(FieldValues, aBoolIsTrueFromAHalf) {
    write(box, "flag", 0, 0.5F);
    EXPECT_TRUE(box->getFlag());
    EXPECT_EQ(read(box, "flag"), 1.0F);
    write(box, "flag", 0, 0.49F);
    EXPECT_FALSE(box->getFlag());
    EXPECT_EQ(read(box, "flag"), 0.0F);
    write(box, "flag", 0, 1.0F);
    write(box, "flag", 0, kNaN);
    EXPECT_FALSE(box->getFlag());
    EXPECT_EQ(NumberBox::edits().size(), 4U) << "a bool has an answer for NaN";
}

TEST_F(FieldValues, integersAreRoundedHalfAwayFromZero) {
    write(box, "count", 0, 2.5F);
    EXPECT_EQ(box->getCount(), 3);
    write(box, "count", 0, -2.5F);
    EXPECT_EQ(box->getCount(), -3);
    write(box, "count", 0, 2.49F);
    EXPECT_EQ(box->getCount(), 2);
    write(box, "count", 0, -0.5F);
    EXPECT_EQ(box->getCount(), -1);
    EXPECT_EQ(read(box, "count"), -1.0F);
    EXPECT_EQ(NumberBox::edits().size(), 4U);
}

TEST_F(FieldValues, integersAreClampedToTheirType) {
    write(box, "small", 0, 127.4F);
    EXPECT_EQ(box->getSmall(), 127);
    write(box, "small", 0, 300.0F);
    EXPECT_EQ(box->getSmall(), 127);
    write(box, "small", 0, -300.0F);
    EXPECT_EQ(box->getSmall(), -128);
    write(box, "byte", 0, 256.0F);
    EXPECT_EQ(box->getByte(), 255);
    write(box, "byte", 0, -1.0F);
    EXPECT_EQ(box->getByte(), 0);
    write(box, "short", 0, 40000.0F);
    EXPECT_EQ(box->getShort(), 32767);
    write(box, "count", 0, 1e20F);
    EXPECT_EQ(box->getCount(), std::numeric_limits<std::int32_t>::max());
    write(box, "count", 0, -kInfinity);
    EXPECT_EQ(box->getCount(), std::numeric_limits<std::int32_t>::min());
    write(box, "bits", 0, 4294967296.0F);
    EXPECT_EQ(box->getBits(), 4294967295U);
    write(box, "wide", 0, 9223372036854775808.0F);
    EXPECT_EQ(box->getWide(), std::numeric_limits<std::int64_t>::max());
    write(box, "wide", 0, -1e30F);
    EXPECT_EQ(box->getWide(), std::numeric_limits<std::int64_t>::min());
    write(box, "wideBits", 0, kInfinity);
    EXPECT_EQ(box->getWideBits(), std::numeric_limits<std::uint64_t>::max());
    write(box, "wideBits", 0, 4503599627370496.0F);
    EXPECT_EQ(box->getWideBits(), 4503599627370496ULL);
}

TEST_F(FieldValues, aNaNLeavesIntegersAlone) {
    box->setCount(7);
    write(box, "count", 0, kNaN);
    EXPECT_EQ(box->getCount(), 7);
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, oneComponentOfAVectorLeavesTheOthersAlone) {
    const float third = 1.0F / 3.0F;
    box->setDirection(osg::Vec3f(third, third, third));
    write(box, "direction", 1, 0.7F);
    EXPECT_EQ(box->getDirection()[0], third);
    EXPECT_EQ(box->getDirection()[1], 0.7F);
    EXPECT_EQ(box->getDirection()[2], third);
    EXPECT_EQ(read(box, "direction", 1), 0.7F);
    expectOneEdit(NumberBox::DirectionFieldMask);
}

TEST_F(FieldValues, vectorsPointsAndColorsOfEverySize) {
    write(box, "pair", 1, 2.0F);
    EXPECT_EQ(box->getPair()[1], 2.0F);
    write(box, "four", 3, 4.0F);
    EXPECT_EQ(box->getFour()[3], 4.0F);
    write(box, "place", 2, 5.0F);
    EXPECT_EQ(box->getPlace()[2], 5.0F);
    write(box, "tint", 0, 0.25F);
    EXPECT_EQ(box->getTint()[0], 0.25F);
    write(box, "glow", 3, 0.75F);
    EXPECT_EQ(box->getGlow()[3], 0.75F);
    write(box, "shortVector", 1, 99999.0F);
    EXPECT_EQ(box->getShortVector()[1], 32767);
    EXPECT_EQ(read(box, "pair", 1), 2.0F);
    EXPECT_EQ(read(box, "four", 3), 4.0F);
    EXPECT_EQ(read(box, "place", 2), 5.0F);
    EXPECT_EQ(read(box, "tint", 0), 0.25F);
    EXPECT_EQ(read(box, "glow", 3), 0.75F);
}

TEST_F(FieldValues, aMatrixCountsRowByRow) {
    write(box, "frame", 3, 10.0F);
    write(box, "frame", 7, 20.0F);
    write(box, "frame", 11, 30.0F);
    EXPECT_EQ(box->getFrame()[3][0], 10.0F) << "the translation is the last column";
    EXPECT_EQ(box->getFrame()[3][1], 20.0F);
    EXPECT_EQ(box->getFrame()[3][2], 30.0F);
    EXPECT_EQ(read(box, "frame", 0), 1.0F);
    EXPECT_EQ(read(box, "frame", 11), 30.0F);
    EXPECT_EQ(read(box, "frame", 15), 1.0F);
    EXPECT_EQ(read(box, "frame", 16), 0.0F);
}

TEST_F(FieldValues, aQuaternionIsAnAxisAndAnAngle) {
    box->setTurn(osg::Quaternion(osg::Vec3f(0, 1, 0), 0.5F));
    EXPECT_NEAR(read(box, "turn", 1), 1.0F, 1e-6F);
    EXPECT_NEAR(read(box, "turn", 3), 0.5F, 1e-6F);
    write(box, "turn", 3, 1.25F);
    osg::Real32 x = 0, y = 0, z = 0, angle = 0;
    box->getTurn().getValueAsAxisRad(x, y, z, angle);
    EXPECT_NEAR(y, 1.0F, 1e-6F);
    EXPECT_NEAR(angle, 1.25F, 1e-6F);
}

TEST_F(FieldValues, aListCountsThroughAllNumbersOfItsElements) {
    box->getPoints().push_back(osg::Vec3f(1, 2, 3));
    box->getPoints().push_back(osg::Vec3f(4, 5, 6));
    EXPECT_EQ(read(box, "points", 4), 5.0F);
    EXPECT_EQ(read(box, "points", 6), 0.0F);
    write(box, "points", 4, 9.0F);
    ASSERT_EQ(box->getPoints().size(), 2U) << "nothing is appended";
    EXPECT_EQ(box->getPoints()[0][1], 2.0F);
    EXPECT_EQ(box->getPoints()[1][1], 9.0F);
    expectOneEdit(NumberBox::PointsFieldMask);
    write(box, "points", 6, 9.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
    box->getWeights().push_back(0.5F);
    write(box, "weights", 0, 0.25F);
    EXPECT_EQ(box->getWeights()[0], 0.25F);
    box->getCounts().push_back(1);
    write(box, "counts", 0, 7.6F);
    EXPECT_EQ(box->getCounts()[0], 8);
    box->getSwitches().push_back(false);
    box->getSwitches().push_back(false);
    write(box, "switches", 1, 1.0F);
    EXPECT_FALSE(box->getSwitches()[0]);
    EXPECT_TRUE(box->getSwitches()[1]);
    EXPECT_EQ(read(box, "switches", 1), 1.0F);
}

TEST_F(FieldValues, listsOfSmallIntegersAreWrittenInPlace) {
    box->getShortVectors().push_back(osg::Vec3s(1, 2, 3));
    box->getShortVectors().push_back(osg::Vec3s(4, 5, 6));
    write(box, "shortVectors", 4, 40000.0F);
    ASSERT_EQ(box->getShortVectors().size(), 2U) << "nothing is appended";
    EXPECT_EQ(box->getShortVectors()[1], osg::Vec3s(4, 32767, 6)) << "clamped to the type";
    expectOneEdit(NumberBox::ShortVectorsFieldMask);
    EXPECT_EQ(read(box, "shortVectors", 3), 4.0F);
    box->getBytePairs().push_back(osg::Vec2ub(1, 2));
    write(box, "bytePairs", 1, 7.5F);
    EXPECT_EQ(box->getBytePairs()[0], osg::Vec2ub(1, 8));
    box->getShortPoints().push_back(osg::Pnt2s(1, 2));
    write(box, "shortPoints", 0, -7.5F);
    EXPECT_EQ(box->getShortPoints()[0], osg::Pnt2s(-8, 2));
    box->getByteColors().push_back(osg::Color4ub(1, 2, 3, 4));
    write(box, "byteColors", 3, 255.0F);
    EXPECT_EQ(box->getByteColors()[0], osg::Color4ub(1, 2, 3, 255));
}

TEST_F(FieldValues, anEmptyListHasNoNumbers) {
    write(box, "weights", 0, 1.0F);
    EXPECT_TRUE(box->getWeights().empty());
    EXPECT_EQ(read(box, "weights"), 0.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, otherTypesGoThroughTheirText) {
    write(box, "box", 3, 2.5F);
    EXPECT_EQ(read(box, "box", 3), 2.5F);
    EXPECT_EQ(read(box, "box", 0), 0.0F);
    EXPECT_EQ(read(box, "box", 6), 0.0F);
    expectOneEdit(NumberBox::BoxFieldMask);
    write(box, "box", 6, 7.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
    box->setLabel("no number");
    EXPECT_EQ(read(box, "label"), 0.0F);
    write(box, "label", 0, 1.0F);
    EXPECT_EQ(box->getLabel(), "no number");
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, aListOfTextsIsNotWritten) {
    box->getLabels().push_back("1 2");
    box->getLabels().push_back("3");
    box->getLabels().push_back("a 5 b");
    EXPECT_EQ(read(box, "labels"), 5.0F) << "there is a number that could be replaced";
    write(box, "labels", 0, 9.0F);
    EXPECT_EQ(box->getLabels().size(), 3U) << "pushing text would append";
    EXPECT_EQ(box->getLabels()[0], "1 2");
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, aPointerHasNoNumbers) {
    EXPECT_EQ(read(box, "target"), 0.0F);
    write(box, "target", 0, 1.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, aPositionAtOrPastTheCountIsLeftAlone) {
    for (const unsigned position : {3U, 4U, 65535U}) {
        write(box, "direction", position, 1.0F);
        EXPECT_EQ(read(box, "direction", position), 0.0F) << position;
    }
    write(box, "amount", 1, 5.0F);
    EXPECT_EQ(box->getAmount(), 0.0F);
    EXPECT_TRUE(NumberBox::edits().empty()) << "no edit is opened for nothing";
}

TEST_F(FieldValues, anUnknownFieldIsReadAsZeroAndNotWritten) {
    EXPECT_EQ(read(box, "nothing"), 0.0F);
    EXPECT_EQ(read(box, "Amount"), 0.0F) << "names are case-sensitive";
    EXPECT_EQ(read(box, ""), 0.0F);
    write(box, "nothing", 0, 1.0F);
    write(box, "", 0, 1.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST_F(FieldValues, theFieldOfViewIsStoredInRadians) {
    write(box, "fieldOfView", 0, 90.0F);
    EXPECT_EQ(box->getFieldOfView(), 1.5707964F);
    EXPECT_EQ(read(box, "fieldOfView"), 90.0F);
    // Expected values from single-precision arithmetic done elsewhere; any other order of the same
    // operations gives their neighbours.
    write(box, "fieldOfView", 0, 2.5F);
    EXPECT_EQ(box->getFieldOfView(), 0x1.657186p-5F);
    write(box, "fieldOfView", 0, 3.5F);
    EXPECT_EQ(box->getFieldOfView(), 0x1.f46bbcp-5F);
    box->setFieldOfView(0.27F);
    EXPECT_EQ(read(box, "fieldOfView"), 0x1.ef0918p+3F);
    box->setFieldOfView(0.29F);
    EXPECT_EQ(read(box, "fieldOfView"), 0x1.09da38p+4F);
}

TEST_F(FieldValues, theDirtyFlagIsNotConsulted) {
    kvtest::Field field = bindingTo(box.get(), "amount", 0, 3.0F);
    field.dirty = false;
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(box->getAmount(), 3.0F);
}

TEST_F(FieldValues, aDestroyedContainerIsNeitherWrittenNorRead) {
    const kvtest::Field field = bindingTo(box.get(), "amount", 0, 3.0F);
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 0.0F);
    box.release();
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 0.0F);
    EXPECT_TRUE(NumberBox::edits().empty());
}

TEST(FieldValuesUnbound, idZeroAndIdsNeverGivenOutAreHarmless) {
    kvtest::Field field;
    field.globalFieldName = "amount";
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 0.0F);
    field.fcId = 4000000000U;
    kvAnimationUtils2::setRealFieldValue(field);
    EXPECT_EQ(kvAnimationUtils2::getRealFieldValue(field), 0.0F);
}

TEST_F(FieldValues, theSameNameOnOtherTypesIsAnotherField) {
    // What was remembered for one type must not be used for another.
    const Owned<osg::GroupPtr> group(osg::Group::create());
    for (int i = 0; i < 3; ++i) {
        write(box, "amount", 0, static_cast<float>(i));
        write(group, "amount", 0, 5.0F);
        EXPECT_EQ(read(box, "amount"), static_cast<float>(i));
        EXPECT_EQ(read(group, "amount"), 0.0F);
    }
}

TEST_F(FieldValues, thousandsOfMadeUpNamesDoNotDisturbTheRealOnes) {
    for (int i = 0; i < 10000; ++i)
        write(box, "made up " + std::to_string(i), 0, 1.0F);
    write(box, "amount", 0, 3.0F);
    write(box, "precise", 0, 4.0F);
    EXPECT_EQ(read(box, "amount"), 3.0F);
    EXPECT_EQ(read(box, "precise"), 4.0F);
}

TEST_F(FieldValues, writingAgainAllocatesNothing) {
    box->getWeights().push_back(0.0F);
    std::vector<kvtest::Field> fields;
    for (const char* name : {"flag", "count", "amount", "precise", "fieldOfView", "direction",
                             "place", "tint", "glow", "frame", "turn", "weights"})
        fields.push_back(bindingTo(box.get(), name, 0, 0.5F));
    NumberBox::edits().reserve(1000);
    const auto writeAll = [&fields] {
        for (const kvtest::Field& field : fields)
            kvAnimationUtils2::setRealFieldValue(field);
    };
    writeAll();
    EXPECT_EQ(kvtest::allocationsOf(writeAll), 0U);
    EXPECT_EQ(kvtest::allocationsOf([&fields] {
                  for (const kvtest::Field& field : fields)
                      kvAnimationUtils2::getRealFieldValue(field);
              }),
              0U);
}

TEST(FieldRecordCopy, allocatesNothing) {
    kvtest::Field field;
    field.fieldName = "translationX";
    field.globalFieldName = "translation";
    field.metaInfo = std::make_shared<const kvAnimationUtils2::MetaInfo>();
    EXPECT_EQ(kvtest::allocationsOf([&field] {
                  const kvtest::Field copy = field;
                  EXPECT_EQ(copy.fieldName.size(), 12U);
              }),
              0U);
}
