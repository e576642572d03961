// The binary form of a container, through a handler in memory that goes without the buffers that
// OpenSG asks for.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNodeCoreFields.h>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace osg;

/// A stream of bytes in memory.
class Bytes : public BinaryDataHandler {
  public:
    std::vector<UInt8> bytes;
    std::size_t next = 0;

  protected:
    void read(MemoryHandle destination, UInt32 size) override {
        ASSERT_LE(next + size, bytes.size());
        std::memcpy(destination, bytes.data() + next, size);
        next += size;
    }
    void write(MemoryHandle source, UInt32 size) override {
        bytes.insert(bytes.end(), source, source + size);
    }
};

TEST(EmbeddedCustomContainer, comesBackFromItsBinaryForm) {
    Held<TestShotListPtr> list(TestShotList::create());
    Held<NodePtr> subject(Node::create());
    Held<TestCaptionPtr> first(TestCaption::create());
    Held<TestCaptionPtr> second(TestCaption::create());
    list->setHeading("A \"quoted\" heading");
    list->setPace(1.f / 3.f);
    list->setSubject(subject);
    list->addCaption(first);
    list->addCaption(second);
    list->addCaption(first);

    const BitVector mask = FieldBits::AllFields & ~TestShotList::ParentsFieldMask;
    Bytes stream;
    list->copyToBin(stream, mask);
    EXPECT_EQ(stream.bytes.size(), list->getBinSize(mask));
    // internal 1, heading 4 + 18 + 1, subject 4, pace 4, captions 4 + 3 * 4
    EXPECT_EQ(stream.bytes.size(), 1u + 23u + 4u + 4u + 16u);

    Held<TestShotListPtr> other(TestShotList::create());
    other->copyFromBin(stream, mask);
    EXPECT_EQ(other->getHeading(), "A \"quoted\" heading");
    EXPECT_EQ(other->getPace(), 1.f / 3.f);
    EXPECT_TRUE(other->getSubject() == subject.get());
    ASSERT_EQ(other->getCaptions().size(), 3u);
    EXPECT_TRUE(other->getCaptions()[0] == first.get());
    EXPECT_TRUE(other->getCaptions()[1] == second.get());
    EXPECT_TRUE(other->getCaptions()[2] == first.get());
    // The stream's pointers are not counted: the container is told to.
    EXPECT_EQ(subject.get().getRefCount(), 2);
    endEditCP(other.get(), mask, ChangedOrigin::Abstract | ChangedOrigin::AbstrIncRefCount);
    EXPECT_EQ(subject.get().getRefCount(), 3);
}

} // namespace
