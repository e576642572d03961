// Binary forms that are refused, where OpenSG warns of a volume and takes it for an empty one, and
// crashes with a handler that has no bytes.
#include "opensg/bytesInMemory.h"

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGConfig.h>

#include <gtest/gtest.h>

namespace {

typedef std::vector<osg::UInt8> Bytes;

TEST(BinaryForm, ofAVolumeOfAnUnknownTypeIsRefused) {
    BytesInMemory unknownVolume(Bytes{0, 0, 0, 2, 0, 1});
    osg::DynamicVolume volume;
    EXPECT_THROW(osg::FieldDataTraits<osg::DynamicVolume>::copyFromBin(unknownVolume, volume),
                 osg::BinaryDataHandler::ReadError);
}

TEST(BinaryForm, needsAHandlerThatKnowsWhereTheBytesGo) {
    osg::BinaryDataHandler nowhere;
    osg::UInt8 byte = 0;
    EXPECT_THROW(nowhere.putValue(byte), osg::BinaryDataHandler::WriteError);
    EXPECT_THROW(nowhere.getValue(byte), osg::BinaryDataHandler::ReadError);
}

} // namespace
