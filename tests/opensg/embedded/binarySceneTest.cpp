// Binary scenes where the embedded scene graph does better than OpenSG 1.8, which mixes bindings up
// beside internal attachments, counts beacons of cameras and chunks once too often, keeps
// containers that nothing points at and pointers of the wrong type, and reads, crashes or never
// ends on files that are damaged.
#include "opensg/binaryScene.h"

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

using namespace osg;
using namespace binaryScene;

namespace {

TEST(BinaryScene, spheresStaySpheres) {
    const Scene scene(makeCoredNode<Group>());
    DynamicVolume sphere;
    sphere.setSphere(Pnt3f(1, 2, 3), 4);
    attach<FileValues>(scene.root())->setVolume(sphere);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(copy.attachment<FileValues>(copy.root())->getVolume().getRadius(), 4.f);
}

TEST(BinaryScene, internalAttachmentsAreLeftOutAndDoNotDisturbBindings) {
    const Scene scene(makeCoredNode<Group>());
    const NamePtr name = Name::create();
    name->setInternal(true);
    scene->addAttachment(name);
    const FileSheetPtr sheet = FileSheet::create();
    scene->addAttachment(sheet, 3);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(copy->getSFAttachments()->getValue().size(), 1u);
    EXPECT_NE(copy->findAttachment(FileSheet::getClassType(), 3), NullFC);
}

TEST(BinaryScene, chunksAreCountedOnceByTheirMaterial) {
    const Scene scene(makePlane(2, 2, 1, 1));
    const ChunkMaterialPtr material = ChunkMaterial::create();
    const MaterialChunkPtr chunk = MaterialChunk::create();
    material->addChunk(chunk);
    GeometryPtr::dcast(scene->getCore())->setMaterial(material);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    const ChunkMaterialPtr found =
        ChunkMaterialPtr::dcast(GeometryPtr::dcast(copy->getCore())->getMaterial());
    ASSERT_NE(found, NullFC);
    ASSERT_EQ(found->getChunks().size(), 1u);
    EXPECT_EQ(found->getChunks(0).getRefCount(), chunk.getRefCount());
    EXPECT_EQ(found->getChunks(0)->getParents().size(), chunk->getParents().size());
}

TEST(BinaryScene, aCameraKeepsABeaconThatItDoesNotCount) {
    const Scene scene(makeCoredNode<Group>());
    const NodePtr beacon = makeCoredNode<Group>();
    scene->addChild(beacon);
    const PerspectiveCameraPtr camera = PerspectiveCamera::create();
    camera->setBeacon(beacon);
    attach<FileSheet>(scene.root())->setAnything(camera);
    const std::size_t before = countContainers();
    {
        const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
        ASSERT_FALSE(copy.isNull());
        const PerspectiveCameraPtr found =
            PerspectiveCameraPtr::dcast(copy.attachment<FileSheet>(copy.root())->getAnything());
        ASSERT_NE(found, NullFC);
        EXPECT_EQ(found->getBeacon(), copy.at({0}));
        EXPECT_EQ(copy.at({0}).getRefCount(), 1);
    }
    EXPECT_EQ(countContainers(), before);
}

// --- files that this program would not write ---------------------------------------------------

TEST(BinaryScene, unknownTypesAreLeftOutWithOneWarning) {
    const std::size_t before = countContainers();
    {
        Bytes bytes;
        bytes.header();
        bytes.record("Node", 1, 2)
            .field("attachments", "SFAttachmentMap", number(2) + number(5) + number(6))
            .field("children", "MFNodePtr", number(2) + number(3) + number(2))
            .field("core", "SFNodeCorePtr", number(4))
            .end();
        bytes.record("StrangeNode", 3, 2).field("travMask", "SFUInt32", number(1)).end();
        bytes.record("Node", 2, 2).field("travMask", "SFUInt32", number(2)).end();
        bytes.record("StrangeCore", 4, 3).field("a", "SFStrange", "abc").end();
        bytes.record("StrangeCore", 7, 0).end();
        bytes.record("FileSheet", 5, 4)
            .field("target", "SFNodePtr", number(3))
            .field("items", "MFFileItemPtr", number(2) + number(4) + number(8))
            .end();
        bytes.record("StrangeImage", 6, 0).field("pixel", "MFUInt8", std::string(20, 'x')).end();
        bytes.record("FileItem", 8, 1).end();
        bytes.end();
        LogLines log;
        const Scene scene(readBytes(bytes));
        ASSERT_FALSE(scene.isNull());
        ASSERT_EQ(scene->getNChildren(), 1u);
        EXPECT_EQ(scene.at({0})->getTravMask(), 2u);
        EXPECT_EQ(scene->getCore(), NullFC);
        const FileSheetPtr sheet = scene.attachment<FileSheet>(scene.root());
        EXPECT_EQ(sheet->getTarget(), NullFC);
        EXPECT_EQ(sheet->getItems().size(), 1u);
        EXPECT_EQ(log.take().size(), 3u);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(BinaryScene, unknownFieldsAreLeftOutWithOneWarning) {
    LogLines log;
    EXPECT_FALSE(Scene(readBytes(withUnknownFields())).isNull());
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(BinaryScene, aFieldOfAnotherTypeIsReadWhenItsSizeAgrees) {
    Bytes bytes;
    bytes.header();
    bytes.record("Node", 1, 2)
        .field("attachments", "SFAttachmentMap", number(1) + number(2))
        .field("travMask", "SFInt32", number(5))
        .end();
    bytes.record("FileValues", 2, 4)
        .field("uint32s", "MFUInt32", number(0))
        .field("real32s", "MFInt32", number(1) + number(0x3f800000u))
        .field("vec3fs", "MFVec2f", number(1) + std::string(8, '\0'))
        .field("bool", "SFUInt32", number(1))
        .field("int32", "SFString", Bytes().text("abc").str())
        .field("uint32", "MFUInt32", number(0))
        .end();
    bytes.end();
    LogLines log;
    const Scene scene(readBytes(bytes));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getTravMask(), 5u);
    const FileValuesPtr values = scene.attachment<FileValues>(scene.root());
    ASSERT_EQ(values->getReal32s().size(), 1u);
    EXPECT_EQ(values->getReal32s()[0], 1.f);
    EXPECT_EQ(values->getVec3fs().size(), 0u);
    EXPECT_FALSE(values->getBool());
    EXPECT_EQ(values->getInt32(), 0);
    EXPECT_EQ(log.take().size(), 7u);
}

TEST(BinaryScene, pointersThatDoNotFitAreNull) {
    const std::size_t before = countContainers();
    {
        Bytes bytes;
        bytes.header();
        bytes.record("Node", 1, 2)
            .field("attachments", "SFAttachmentMap", number(2) + number(2) + number(3))
            .field("children", "MFNodePtr", number(3) + number(3) + number(99) + number(0))
            .field("core", "SFNodeCorePtr", number(1))
            .end();
        bytes.record("FileSheet", 2, 4)
            .field("target", "SFNodePtr", number(3))
            .field("items", "MFFileItemPtr", number(3) + number(3) + number(0) + number(77))
            .end();
        bytes.record("Group", 3, 3).end();
        bytes.end();
        LogLines log;
        const Scene scene(readBytes(bytes));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(scene->getNChildren(), 0u);
        EXPECT_EQ(scene->getCore(), NullFC);
        EXPECT_EQ(scene->getSFAttachments()->getValue().size(), 1u);
        const FileSheetPtr sheet = scene.attachment<FileSheet>(scene.root());
        EXPECT_EQ(sheet->getTarget(), NullFC);
        // A null that was written stays.
        ASSERT_EQ(sheet->getItems().size(), 1u);
        EXPECT_EQ(sheet->getItems(0), NullFC);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(BinaryScene, containersThatNothingPointsAtAreDestroyed) {
    const std::size_t before = countContainers();
    {
        Bytes bytes;
        bytes.header();
        bytes.record("Node", 1, 2).end();
        bytes.record("Node", 2, 2).field("children", "MFNodePtr", number(1) + number(3)).end();
        bytes.record("Node", 3, 2).end();
        bytes.end();
        const Scene scene(readBytes(bytes));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(countContainers(), before + 1);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(BinaryScene, aFieldThatStandsTwiceKeepsTheLastPointer) {
    const std::size_t before = countContainers();
    {
        Bytes bytes;
        bytes.header();
        bytes.record("Node", 1, 2)
            .field("attachments", "SFAttachmentMap", number(1) + number(2))
            .field("core", "SFNodeCorePtr", number(3))
            .field("core", "SFNodeCorePtr", number(4))
            .end();
        bytes.record("FileSheet", 2, 4)
            .field("anything", "SFFieldContainerPtr", number(5))
            .field("anything", "SFFieldContainerPtr", number(4))
            .end();
        bytes.record("Group", 3, 3).end();
        bytes.record("Transform", 4, 3).end();
        bytes.record("FileItem", 5, 1).end();
        bytes.end();
        const Scene scene(readBytes(bytes));
        ASSERT_FALSE(scene.isNull());
        EXPECT_STREQ(scene->getCore()->getTypeName(), "Transform");
        EXPECT_EQ(scene->getCore().getRefCount(), 2);
        EXPECT_EQ(countContainers(), before + 3);
    }
    EXPECT_EQ(countContainers(), before);
}

// --- malformed files ---------------------------------------------------------------------------

void expectRefused(const std::string& bytes, const std::string& reason) {
    const std::size_t before = countContainers();
    LogLines log;
    EXPECT_EQ(readText(bytes, "osb"), NullFC) << reason;
    ASSERT_EQ(log.take().size(), 1u) << reason;
    EXPECT_NE(log.take()[0].find(reason), std::string::npos) << log.take()[0];
    EXPECT_EQ(countContainers(), before);
}

TEST(BinaryMalformed, theHeaderMustBeRight) {
    expectRefused("", "empty");
    expectRefused("#OSG V1.0 \nNode { }", "does not begin");
    expectRefused(Bytes().text("OpenSG binary V2.0").str(), "does not begin");
    expectRefused(Bytes().text("OpenSG binary V1.0").text("").str(), "header");
    expectRefused(Bytes().header().str(), "container type");
    expectRefused(Bytes().header().end().str(), "no node");
}

TEST(BinaryMalformed, theFirstContainerMustBeANode) {
    expectRefused(Bytes().header().record("Group", 1, 3).end().end().str(), "no node");
    expectRefused(Bytes().header().record("Strange", 1, 2).end().end().str(), "no node");
}

TEST(BinaryMalformed, numbersAreGivenOnce) {
    expectRefused(
        Bytes().header().record("Node", 1, 2).end().record("Node", 1, 2).end().end().str(),
        "number 1");
    expectRefused(Bytes()
                      .header()
                      .record("Node", 4000000000u, 2)
                      .end()
                      .record("Node", 1, 2)
                      .end()
                      .record("Node", 1, 2)
                      .end()
                      .end()
                      .str(),
                  "number 1");
    expectRefused(Bytes().header().record("Node", 0, 2).end().end().str(), "number");
}

TEST(BinaryMalformed, aNodeIsNotAboveItself) {
    Bytes self;
    self.header().record("Node", 1, 2).field("children", "MFNodePtr", number(1) + number(1));
    expectRefused(self.end().end().str(), "child of itself");
    Bytes circle;
    circle.header().record("Node", 1, 2).end();
    circle.record("Node", 2, 2).field("children", "MFNodePtr", number(1) + number(3)).end();
    circle.record("Node", 3, 2).field("children", "MFNodePtr", number(1) + number(2)).end();
    expectRefused(circle.end().str(), "child of itself");
}

TEST(BinaryMalformed, sizesMustAgree) {
    const auto withField = [](const std::string& name, const std::string& type,
                              const std::string& payload) {
        return Bytes().header().record("Node", 1, 2).field(name, type, payload).end().end().str();
    };
    expectRefused(withField("travMask", "SFUInt32", number(1, 3)), "damaged");
    expectRefused(withField("travMask", "SFUInt32", number(1, 5)), "longer");
    expectRefused(withField("core", "SFNodeCorePtr", number(1, 3)), "pointers");
    expectRefused(withField("children", "MFNodePtr", number(2) + number(1)), "pointers");
    expectRefused(withField("children", "MFNodePtr", number(0x40000000u)), "pointers");
    expectRefused(withField("attachments", "SFAttachmentMap", number(1) + number(1, 5)),
                  "pointers");
}

TEST(BinaryMalformed, countsThatLieTakeNoMemory) {
    const auto withField = [](const std::string& name, const std::string& type,
                              const std::string& payload) {
        return Bytes()
            .header()
            .record("Node", 1, 2)
            .end()
            .record("FileValues", 2, 4)
            .field(name, type, payload)
            .end()
            .end()
            .str();
    };
    expectRefused(withField("real32s", "MFReal32", number(0xffffffffu)), "damaged");
    expectRefused(withField("vec3fs", "MFVec3f", number(0x7fffffffu) + number(1)), "damaged");
    expectRefused(withField("strings", "MFString", number(1) + number(0xfffffff0u)), "damaged");
    expectRefused(withField("string", "SFString", number(0xfffffff0u)), "damaged");
    expectRefused(withField("volume", "SFDynamicVolume", number(9, 2) + std::string(26, '\0')),
                  "damaged");
    Bytes oversized;
    oversized.header().record("Node", 1, 2).text("travMask").text("SFUInt32");
    expectRefused(oversized.number(0xffffffffu, 4).number(1, 4).str(), "cut off");
}

TEST(BinaryMalformed, manyLargeContainersInASmallFileAreRefused) {
    // Thirty bytes each, but a thousand in memory: 64 MiB and ten times the file are the limit.
    Bytes bytes;
    bytes.header().record("Node", 1, 2).end();
    for (unsigned id = 2; id < 300000; ++id)
        bytes.record("Geometry", id, 0).end();
    expectRefused(bytes.end().str(), "memory");
}

TEST(BinaryMalformed, theFileOfOpenSG18CutOffAnywhereIsRefused) {
    const std::string bytes = testData("cores.osb");
    const std::size_t before = countContainers();
    // Behind the last record come an empty name (5 bytes) and a number (4).
    for (std::size_t length = 0; length < bytes.size() - 4; length += 97) {
        LogLines log;
        ASSERT_EQ(readText(bytes.substr(0, length), "osb"), NullFC) << length;
        ASSERT_EQ(log.take().size(), 1u) << length;
    }
    LogLines log;
    EXPECT_EQ(readText(bytes.substr(0, bytes.size() - 5), "osb"), NullFC);
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_EQ(countContainers(), before);
}

TEST(BinaryMalformed, damagedBytesNeverHarm) {
    const std::string bytes = testData("cores.osb");
    const std::size_t before = countContainers();
    for (std::size_t place = 0; place < bytes.size(); place += 13) {
        for (const int change : {0x01, 0x80, 0xff}) {
            std::string damaged = bytes;
            damaged[place] = static_cast<char>(damaged[place] ^ change);
            LogLines log;
            Scene scene(readText(damaged, "osb"));
            if (scene.isNull()) {
                ASSERT_EQ(log.take().size(), 1u) << place;
            }
        }
    }
    EXPECT_EQ(countContainers(), before);
}

} // namespace
