// Scenes in OpenSG's binary form: what comes back is what was written, in the form that OpenSG
// reads.

#include "opensg/embedded/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace osg;

namespace {

typedef std::vector<std::string> Lines;

template <class Attachment>
typename Attachment::Ptr attach(const NodePtr& node) {
    const typename Attachment::Ptr attachment = Attachment::create();
    node->addAttachment(attachment);
    return attachment;
}

/// Big-endian numbers and texts in front of each other.
class Bytes {
  public:
    Bytes& number(std::uint64_t value, unsigned size) {
        for (unsigned i = 0; i < size; ++i)
            _bytes += static_cast<char>(value >> (8 * (size - 1 - i)) & 0xff);
        return *this;
    }
    Bytes& text(const std::string& value) {
        number(value.size() + 1, 4);
        _bytes += value + '\0';
        return *this;
    }
    Bytes& header() { return text("OpenSG binary V1.0").text("").text("").number(0, 8); }
    Bytes& record(const std::string& type, unsigned id, unsigned kind) {
        text(type).number(id, 4);
        if (kind != 0) number(kind, 1);
        return number(100, 2);
    }
    Bytes& field(const std::string& name, const std::string& type, const std::string& payload) {
        text(name).text(type).number(payload.size(), 4);
        _bytes += payload;
        return *this;
    }
    Bytes& end() { return text(""); }
    const std::string& str() const { return _bytes; }

  private:
    std::string _bytes;
};

std::string number(std::uint64_t value, unsigned size = 4) {
    return Bytes().number(value, size).str();
}

NodePtr readBytes(const Bytes& bytes) {
    return readText(bytes.str(), "osb");
}

TEST(BinaryScene, theBytesHaveOpenSGsForm) {
    const Scene scene(makeCoredNode<Group>());
    scene->setTravMask(7);
    setName(scene.root(), "n");
    const NodePtr child = makeNodeFor(scene->getCore());
    scene->addChild(child);
    const AttachmentPtr name = scene->findAttachment(Name::getClassType());
    const unsigned root = getContainerId(scene.root());
    const unsigned core = getContainerId(scene->getCore());
    Bytes expected;
    expected.header();
    expected.record("Node", root, 2)
        .field("attachments", "SFAttachmentMap", number(1) + number(getContainerId(name)))
        .field("travMask", "SFUInt32", number(7))
        .field("children", "MFNodePtr", number(1) + number(getContainerId(child)))
        .field("core", "SFNodeCorePtr", number(core))
        .end();
    expected.record("Name", getContainerId(name), 4)
        .field("internal", "SFBool", number(0, 1))
        .field("name", "SFString", Bytes().text("n").str())
        .end();
    expected.record("Node", getContainerId(child), 2)
        .field("travMask", "SFUInt32", number(0xffffffffu))
        .field("core", "SFNodeCorePtr", number(core))
        .end();
    expected.record("Group", core, 3).end();
    expected.end().number(0, 4);
    EXPECT_EQ(writeText(scene.root(), "osb"), expected.str());
}

TEST(BinaryScene, theFileOfOpenSG18IsWrittenBackByteForByteButForItsNumbers) {
    const std::string original = testData("cores.osb");
    const Scene scene(readText(original, "osb"));
    ASSERT_FALSE(scene.isNull());
    const std::string written = writeText(scene.root(), "osb");
    // Containers have other numbers in every program. The first one's are the only numbers that
    // stand at a known place; in all, only bytes of such numbers may differ.
    ASSERT_EQ(written.size(), original.size());
    std::size_t differences = 0;
    for (std::size_t i = 0; i < written.size(); ++i)
        if (written[i] != original[i]) ++differences;
    // 76 containers, each with its number at its record and at one place or two that point at it,
    // two bytes at most in each.
    EXPECT_LE(differences, 76u * 3 * 2);
    const Scene again(readText(written, "osb"));
    ASSERT_FALSE(again.isNull());
    EXPECT_EQ(writeText(again.root(), "osb").size(), original.size());
}

TEST(BinaryScene, theReturnedNodeIsTheOneThatWasWritten) {
    const Scene scene(makeCoredNode<Transform>());
    NodePtr root = readText(writeText(scene.root(), "osb"), "osb");
    ASSERT_NE(root, NullFC);
    EXPECT_EQ(root.getRefCount(), 0);
    EXPECT_STREQ(root->getCore()->getTypeName(), "Transform");
    EXPECT_NE(getContainerId(root), getContainerId(scene.root()));
    addRefCP(root);
    subRefCP(root);
}

TEST(BinaryScene, valuesAreExact) {
    const Scene scene(makeCoredNode<Group>());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float value : {1.f / 3, -0.f, 1e-45f, nan, std::numeric_limits<float>::infinity()})
        values->getReal32s().push_back(value);
    values->setReal64(0.1);
    values->setUInt64(18446744073709551615ull);
    values->setInt16(-2);
    values->setString("two  \"words\"\n\\");
    values->getStrings().push_back("");
    values->getStrings().push_back("x");
    values->getBools().push_back(true);
    values->getBools().push_back(false);
    Quaternion rotation;
    rotation.setValueAsQuat(0.1f, 0.2f, 0.3f, 0.9f);
    values->setQuaternion(rotation);
    Matrix matrix;
    matrix[3][1] = 1.f / 7;
    values->getMatrices().push_back(matrix);
    DynamicVolume sphere;
    sphere.setSphere(Pnt3f(1, 2, 3), 4);
    values->setVolume(sphere);
    LogLines log;
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(log.take(), Lines());
    const FileValuesPtr found = copy.attachment<FileValues>(copy.root());
    ASSERT_EQ(found->getReal32s().size(), 5u);
    EXPECT_EQ(0, std::memcmp(&found->getReal32s()[0], &values->getReal32s()[0], 5 * sizeof(float)));
    EXPECT_EQ(found->getReal64(), 0.1);
    EXPECT_EQ(found->getUInt64(), 18446744073709551615ull);
    EXPECT_EQ(found->getInt16(), -2);
    EXPECT_EQ(found->getString(), "two  \"words\"\n\\");
    ASSERT_EQ(found->getStrings().size(), 2u);
    EXPECT_EQ(found->getStrings(1), "x");
    ASSERT_EQ(found->getBools().size(), 2u);
    EXPECT_TRUE(found->getBools()[0]);
    for (UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(found->getQuaternion()[i], rotation[i]);
    EXPECT_EQ(found->getMatrices(0)[3][1], 1.f / 7);
    EXPECT_EQ(found->getVolume().getRadius(), 4.f);
}

TEST(BinaryScene, whatIsSharedStaysSharedAndIsCountedOnce) {
    const Scene scene(makeCoredNode<Group>());
    const FileSheetPtr sheet = attach<FileSheet>(scene.root());
    const NodePtr child = makeNodeFor(scene->getCore());
    scene->addChild(child);
    child->addAttachment(sheet);
    sheet->setTarget(child);
    const FileItemPtr item = FileItem::create();
    sheet->addItem(item);
    sheet->getItems().push_back(NullFC);
    sheet->addItem(item);
    item->setFollower(item);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    const NodePtr foundChild = copy.at({0});
    const FileSheetPtr found = copy.attachment<FileSheet>(copy.root());
    EXPECT_EQ(copy.attachment<FileSheet>(foundChild), found);
    EXPECT_EQ(copy->getCore(), foundChild->getCore());
    EXPECT_EQ(copy->getCore().getRefCount(), 2);
    EXPECT_EQ(found->getTarget(), foundChild);
    EXPECT_EQ(foundChild.getRefCount(), 2);
    EXPECT_EQ(found.getRefCount(), 2);
    EXPECT_EQ(found->getParents().size(), 2u);
    ASSERT_EQ(found->getItems().size(), 3u);
    EXPECT_EQ(found->getItems(1), NullFC);
    EXPECT_EQ(found->getItems(0), found->getItems(2));
    EXPECT_EQ(found->getItems(0).getRefCount(), 3);
    // Circles of references have to be opened by hand.
    for (const FileSheetPtr& each : {sheet, found}) {
        each->getItems(0)->setFollower(NullFC);
        each->setTarget(NullFC);
    }
}

TEST(BinaryScene, attachmentsKeepTheirBindings) {
    const Scene scene(makeCoredNode<Group>());
    for (const UInt16 binding : {UInt16(0), UInt16(3), UInt16(65535)}) {
        const FileSheetPtr sheet = FileSheet::create();
        sheet->setTitle(std::to_string(binding));
        scene->addAttachment(sheet, binding);
    }
    const NamePtr name = Name::create();
    name->setInternal(true);
    scene->addAttachment(name);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(copy->getAttachments().size(), 3u);
    for (const UInt16 binding : {UInt16(0), UInt16(3), UInt16(65535)}) {
        const FileSheetPtr sheet =
            FileSheetPtr::dcast(copy->findAttachment(FileSheet::getClassType(), binding));
        ASSERT_NE(sheet, NullFC) << binding;
        EXPECT_EQ(sheet->getTitle(), std::to_string(binding));
        EXPECT_EQ(sheet.getRefCount(), 1);
    }
}

TEST(BinaryScene, nodesOutsideTheSceneAreWrittenWithAllBelowThem) {
    const Scene outside(makeCoredNode<Group>());
    const NodePtr below = makeCoredNode<Transform>();
    outside->addChild(below);
    const Scene scene(makeCoredNode<Group>());
    attach<FileSheet>(scene.root())->setTarget(outside.root());
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    const NodePtr target = copy.attachment<FileSheet>(copy.root())->getTarget();
    ASSERT_NE(target, NullFC);
    EXPECT_EQ(target.getRefCount(), 1);
    ASSERT_EQ(target->getNChildren(), 1u);
    EXPECT_STREQ(target->getChild(0)->getCore()->getTypeName(), "Transform");
}

TEST(BinaryScene, geometryAndMaterialsKnowWhatTheyHold) {
    const Scene scene(makePlane(2, 2, 1, 1));
    const GeometryPtr geometry = GeometryPtr::dcast(scene->getCore());
    const ChunkMaterialPtr material = ChunkMaterial::create();
    const MaterialChunkPtr chunk = MaterialChunk::create();
    material->addChunk(chunk);
    geometry->setMaterial(material);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    const GeometryPtr found = GeometryPtr::dcast(copy->getCore());
    ASSERT_NE(found, NullFC);
    ASSERT_EQ(found->getPositions()->getParents().size(), 1u);
    EXPECT_EQ(found->getPositions()->getParents(0), found);
    EXPECT_EQ(found->getPositions().getRefCount(), 1);
    const ChunkMaterialPtr foundMaterial = ChunkMaterialPtr::dcast(found->getMaterial());
    ASSERT_NE(foundMaterial, NullFC);
    ASSERT_EQ(foundMaterial->getChunks().size(), 1u);
    EXPECT_EQ(foundMaterial->getChunks(0).getRefCount(), chunk.getRefCount());
    EXPECT_EQ(foundMaterial->getChunks(0)->getParents().size(), chunk->getParents().size());
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
    Bytes bytes;
    bytes.header();
    bytes.record("Node", 1, 2)
        .field("colour", "SFColor3f", std::string(12, '\0'))
        .field("travMask", "SFUInt32", number(5))
        .field("parent", "SFNodePtr", number(1))
        .end();
    bytes.end();
    LogLines log;
    const Scene scene(readBytes(bytes));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getTravMask(), 5u);
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
    EXPECT_EQ(values->getReal32s(0), 1.f);
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
        EXPECT_EQ(scene->getAttachments().size(), 1u);
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

TEST(BinaryScene, numbersFarApartAreFound) {
    Bytes bytes;
    bytes.header();
    bytes.record("Node", 4000000000u, 2)
        .field("children", "MFNodePtr", number(2) + number(7) + number(3000000000u))
        .end();
    bytes.record("Node", 7, 2).field("travMask", "SFUInt32", number(1)).end();
    bytes.record("Node", 3000000000u, 2).field("travMask", "SFUInt32", number(2)).end();
    bytes.end();
    const Scene scene(readBytes(bytes));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0})->getTravMask(), 1u);
    EXPECT_EQ(scene.at({1})->getTravMask(), 2u);
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
    expectRefused(withField("matrices", "MFMatrix", number(0x7fffffffu) + number(1)), "damaged");
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
