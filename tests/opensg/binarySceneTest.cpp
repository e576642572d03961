// Scenes in OpenSG's binary form: what comes back is what was written, in the form that OpenSG
// reads.
#include "opensg/binaryScene.h"

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using namespace osg;
using namespace binaryScene;

namespace {

typedef std::vector<std::string> Lines;

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
    const FileRareValuesPtr rare = attach<FileRareValues>(scene.root());
    rare->setReal64(0.1);
    rare->setUInt64(18446744073709551615ull);
    values->setInt16(-2);
    values->setString("two  \"words\"\n\\");
    values->getStrings().push_back("");
    values->getStrings().push_back("x");
    rare->getBools().push_back(true);
    rare->getBools().push_back(false);
    Quaternion rotation;
    rotation.setValueAsQuat(0.1f, 0.2f, 0.3f, 0.9f);
    values->setQuaternion(rotation);
    Matrix matrix;
    matrix[3][1] = 1.f / 7;
    rare->getMatrices().push_back(matrix);
    LogLines log;
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(log.take(), Lines());
    const FileValuesPtr found = copy.attachment<FileValues>(copy.root());
    ASSERT_EQ(found->getReal32s().size(), 5u);
    EXPECT_EQ(0, std::memcmp(&found->getReal32s()[0], &values->getReal32s()[0], 5 * sizeof(float)));
    const FileRareValuesPtr foundRare = copy.attachment<FileRareValues>(copy.root());
    EXPECT_EQ(foundRare->getReal64(), 0.1);
    EXPECT_EQ(foundRare->getUInt64(), 18446744073709551615ull);
    EXPECT_EQ(found->getInt16(), -2);
    EXPECT_EQ(found->getString(), "two  \"words\"\n\\");
    ASSERT_EQ(found->getStrings().size(), 2u);
    EXPECT_EQ(found->getStrings()[1], "x");
    ASSERT_EQ(foundRare->getBools().size(), 2u);
    EXPECT_TRUE(foundRare->getBools()[0]);
    for (UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(found->getQuaternion()[i], rotation[i]);
    EXPECT_EQ(foundRare->getMatrices()[0][3][1], 1.f / 7);
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
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    EXPECT_EQ(copy->getSFAttachments()->getValue().size(), 3u);
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

TEST(BinaryScene, geometryAndItsMaterialComeBack) {
    const Scene scene(makePlane(2, 2, 1, 1));
    const GeometryPtr geometry = GeometryPtr::dcast(scene->getCore());
    const ChunkMaterialPtr material = ChunkMaterial::create();
    material->addChunk(MaterialChunk::create());
    geometry->setMaterial(material);
    const Scene copy(readText(writeText(scene.root(), "osb"), "osb"));
    ASSERT_FALSE(copy.isNull());
    const GeometryPtr found = GeometryPtr::dcast(copy->getCore());
    ASSERT_NE(found, NullFC);
    ASSERT_EQ(found->getPositions()->getSize(), geometry->getPositions()->getSize());
    for (UInt32 i = 0; i < found->getPositions()->getSize(); ++i)
        EXPECT_EQ(found->getPositions()->getValue(i), geometry->getPositions()->getValue(i));
    ASSERT_EQ(found->getPositions()->getParents().size(), 1u);
    EXPECT_EQ(found->getPositions()->getParents()[0], found);
    EXPECT_EQ(found->getPositions().getRefCount(), 1);
    const ChunkMaterialPtr foundMaterial = ChunkMaterialPtr::dcast(found->getMaterial());
    ASSERT_NE(foundMaterial, NullFC);
    EXPECT_EQ(foundMaterial->getMFChunks()->size(), 1u);
}

// --- files that this program would not write ---------------------------------------------------

TEST(BinaryScene, unknownFieldsAreLeftOut) {
    const Scene scene(readBytes(withUnknownFields()));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getTravMask(), 5u);
}

TEST(BinaryScene, aNumberOfAnotherTypeIsReadWhenItsSizeAgrees) {
    Bytes bytes;
    bytes.header();
    bytes.record("Node", 1, 2)
        .field("attachments", "SFAttachmentMap", number(1) + number(2))
        .field("travMask", "SFInt32", number(5))
        .end();
    bytes.record("FileValues", 2, 4).field("uint32", "SFInt32", number(0xfffffffeu)).end();
    bytes.end();
    LogLines log;
    const Scene scene(readBytes(bytes));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getTravMask(), 5u);
    EXPECT_EQ(scene.attachment<FileValues>(scene.root())->getUInt32(), 0xfffffffeu);
    EXPECT_EQ(log.take().size(), 2u);
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

} // namespace
