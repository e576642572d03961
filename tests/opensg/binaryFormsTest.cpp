// The bytes of every value type. The expected bytes of rotation and matrix stand in a file that
// OpenSG 1.8 wrote.
#include "opensg/bytesInMemory.h"
#include "opensg/held.h"

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSysFieldDataType.h>
#include <OpenSG/OSGVecFieldDataType.h>

#include <gtest/gtest.h>

namespace {

typedef std::vector<osg::UInt8> Bytes;

template <class T, template <class> class Traits = osg::FieldDataTraits>
Bytes bytesOf(const T& value) {
    BytesInMemory handler;
    Traits<T>::copyToBin(handler, value);
    EXPECT_EQ(handler.getBytes().size(), Traits<T>::getBinSize(value));
    return handler.getBytes();
}

template <class T, template <class> class Traits = osg::FieldDataTraits>
T readBack(const T& value) {
    BytesInMemory handler(bytesOf<T, Traits>(value));
    T result = T();
    Traits<T>::copyFromBin(handler, result);
    EXPECT_EQ(handler.getRemaining(), 0u);
    return result;
}

TEST(BinaryForm, ofNumbersHasTheHighestByteFirst) {
    EXPECT_EQ(bytesOf<osg::UInt8>(0xab), (Bytes{0xab}));
    EXPECT_EQ(bytesOf<osg::Int8>(-1), (Bytes{0xff}));
    EXPECT_EQ(bytesOf<osg::UInt16>(0x0102), (Bytes{1, 2}));
    EXPECT_EQ(bytesOf<osg::Int16>(-2), (Bytes{0xff, 0xfe}));
    EXPECT_EQ(bytesOf<osg::UInt32>(0x01020304), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(bytesOf<osg::Int32>(-2), (Bytes{0xff, 0xff, 0xff, 0xfe}));
    EXPECT_EQ(bytesOf<osg::UInt64>(0x0102030405060708ull), (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(bytesOf<osg::Real32>(1.f), (Bytes{0x3f, 0x80, 0, 0}));
    EXPECT_EQ(bytesOf<osg::Real64>(1.), (Bytes{0x3f, 0xf0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ((bytesOf<bool, osg::FieldDataTraits2>(true)), (Bytes{1}));
    EXPECT_EQ((bytesOf<GLenum, osg::FieldDataTraits1>(4609)), (Bytes{0, 0, 0x12, 0x01}));
}

TEST(BinaryForm, ofNumbersComesBackExactly) {
    EXPECT_EQ(readBack<osg::Int8>(-128), -128);
    EXPECT_EQ(readBack<osg::Int16>(-32768), -32768);
    EXPECT_EQ(readBack<osg::Int32>(-2147483647 - 1), -2147483647 - 1);
    EXPECT_EQ(readBack<osg::Int64>(-9000000000000000001ll), -9000000000000000001ll);
    EXPECT_EQ(readBack<osg::UInt64>(18446744073709551615ull), 18446744073709551615ull);
    EXPECT_EQ(readBack<osg::Real32>(1.f / 3.f), 1.f / 3.f);
    EXPECT_EQ(readBack<osg::Real64>(1. / 3.), 1. / 3.);
    EXPECT_TRUE((readBack<bool, osg::FieldDataTraits2>(true)));
}

TEST(BinaryForm, ofStringsCountsAndEndsWithANul) {
    EXPECT_EQ(bytesOf<std::string>("ab"), (Bytes{0, 0, 0, 3, 'a', 'b', 0}));
    EXPECT_EQ(bytesOf<std::string>(""), (Bytes{0, 0, 0, 1, 0}));
    EXPECT_EQ(readBack<std::string>("ab"), "ab");
    EXPECT_EQ(readBack<std::string>(""), "");
    EXPECT_EQ(readBack<std::string>(std::string(200000, 'x')), std::string(200000, 'x'));
}

TEST(BinaryForm, ofVectorsIsTheirComponents) {
    EXPECT_EQ(bytesOf(osg::Vec2f(1, 2)), (Bytes{0x3f, 0x80, 0, 0, 0x40, 0, 0, 0}));
    EXPECT_EQ(bytesOf(osg::Vec3s(1, 2, -1)), (Bytes{0, 1, 0, 2, 0xff, 0xff}));
    EXPECT_EQ(readBack(osg::Pnt3f(1, 2, 3)), osg::Pnt3f(1, 2, 3));
    EXPECT_EQ(readBack(osg::Color4f(1, 2, 3, 4)), osg::Color4f(1, 2, 3, 4));
    EXPECT_EQ(bytesOf(osg::Color4ub(1, 2, 3, 4)), (Bytes{1, 2, 3, 4}));
}

TEST(BinaryForm, ofRotationsIsTheQuaternionThatOpenSGWrites) {
    const Bytes bytes = bytesOf(osg::Quaternion(osg::Vec3f(0, 1, 0), .5f));
    EXPECT_EQ(bytes,
              (Bytes{0, 0, 0, 0, 0x3e, 0x7d, 0x57, 0x77, 0, 0, 0, 0, 0x3f, 0x78, 0x0a, 0xa5}));
}

TEST(BinaryForm, ofMatricesGoesColumnByColumn) {
    const osg::Matrix matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    BytesInMemory handler(bytesOf(matrix));
    for (float expected : {1.f, 5.f, 9.f, 13.f, 2.f, 6.f}) {
        osg::Real32 number = 0;
        handler.getValue(number);
        EXPECT_EQ(number, expected);
    }
    EXPECT_EQ(readBack(matrix), matrix);
}

TEST(BinaryForm, ofVolumesKeepsTypeAndState) {
    osg::DynamicVolume box;
    EXPECT_TRUE(readBack(box) == box);
    EXPECT_EQ(bytesOf(box).size(), 30u);
    box.extendBy(osg::Pnt3f(1, 2, 3));
    box.extendBy(osg::Pnt3f(4, 5, 6));
    EXPECT_TRUE(readBack(box) == box);
    osg::DynamicVolume sphere(osg::DynamicVolume::SPHERE_VOLUME);
    sphere.extendBy(osg::Pnt3f(1, 2, 3));
    sphere.extendBy(osg::Pnt3f(1, 2, 7));
    sphere.setValid(false);
    EXPECT_TRUE(readBack(sphere) == sphere);
    EXPECT_EQ(bytesOf(sphere).size(), 22u);
}

TEST(BinaryForm, thatEndsTooEarlyIsRefused) {
    BytesInMemory threeBytes(Bytes{1, 2, 3});
    osg::UInt32 number = 77;
    EXPECT_THROW(threeBytes.getValue(number), osg::BinaryDataHandler::ReadError);
    EXPECT_EQ(number, 77u);

    BytesInMemory longString(Bytes{0xff, 0xff, 0xff, 0xff, 'a', 0});
    std::string text("unchanged");
    EXPECT_THROW(longString.getValue(text), osg::BinaryDataHandler::ReadError);
    EXPECT_EQ(text, "unchanged");
}

TEST(Container, binaryFormOfAClassIsThatOfItsFieldsInOrder) {
    const Held<osg::SpotLightPtr> spot(osg::SpotLight::create());
    spot->setDirection(osg::Vec3f(1, 2, 3));
    spot->setPosition(4, 5, 6);
    spot->setOn(false);
    const osg::BitVector mask = osg::SpotLight::DirectionFieldMask |
                                osg::SpotLight::PositionFieldMask | osg::SpotLight::OnFieldMask;
    BytesInMemory handler;
    spot->copyToBin(handler, mask);
    EXPECT_EQ(handler.getBytes().size(), 25u);
    EXPECT_EQ(spot->getBinSize(mask), 25u);
    EXPECT_EQ(handler.getBytes()[0], 0u); // on comes first, then position
    EXPECT_EQ(handler.getBytes()[1], 0x40u);
    const Held<osg::SpotLightPtr> other(osg::SpotLight::create());
    other->copyFromBin(handler, mask);
    EXPECT_EQ(other->getDirection(), osg::Vec3f(1, 2, 3));
    EXPECT_EQ(other->getPosition(), osg::Pnt3f(4, 5, 6));
    EXPECT_FALSE(other->getOn());
}

} // namespace
