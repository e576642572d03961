// Scenes that are written as text and read again: what either library keeps, and the form in which
// it stands.
#include "opensg/asciiRoundTrip.h"

#include <OpenSG/OSGLoader.h>
#include <OpenSG/OSGOSGWriter.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>

using namespace osg;
using namespace asciiRoundTrip;

namespace {

typedef std::vector<std::string> Lines;

/// The words of a text; of a number its value, whatever its form.
Lines wordsOf(const std::string& text) {
    std::istringstream stream(text);
    Lines words;
    for (std::string word; stream >> word; words.push_back(word)) {
        char* end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') word = std::to_string(number);
    }
    return words;
}

TEST(AsciiRoundTrip, theTextHasOpenSGsForm) {
    const Scene scene(makeNode());
    setName(scene.root(), "root");
    const FileSheetPtr sheet = attach<FileSheet>(scene.root());
    sheet->setTitle("Opening");
    const NodePtr arm = makeNode();
    setName(arm, "arm");
    scene->addChild(arm);
    sheet->setTarget(arm);
    const FileItemPtr item = FileItem::create();
    item->setLabel("first");
    sheet->addItem(item);
    arm->setTravMask(0);
    // Attachments stand in the order of their groups' numbers, which depends on the program.
    const std::string name = "        Name {\n            internal FALSE\n"
                             "            name \"root\"\n        }\n";
    const std::string sheetText = "        FileSheet {\n            internal FALSE\n"
                                  "            title \"Opening\"\n"
                                  "            target\n"
                                  "                DEF arm Node {\n"
                                  "                    attachments [ \n"
                                  "                        Name {\n"
                                  "                            internal FALSE\n"
                                  "                            name \"arm\"\n"
                                  "                        }\n"
                                  "                     ] \n"
                                  "                    volume 0 0 0 0 0 0\n"
                                  "                    travMask 0\n"
                                  "                    children [\n"
                                  "                    ]\n"
                                  "                    core\n"
                                  "                        Group {\n"
                                  "                            attachments [  ] \n"
                                  "                        }\n"
                                  "                }\n"
                                  "            speed 1\n"
                                  "            items [\n"
                                  "                FileItem {\n"
                                  "                    label \"first\"\n"
                                  "                    next NULL\n"
                                  "                }\n"
                                  "            ]\n"
                                  "            anything NULL\n"
                                  "        }\n";
    const std::string before = "#OSG V1.0 \nNode {\n    attachments [ \n";
    const std::string after = "     ] \n    volume 0 0 0 0 0 0\n    travMask 4294967295\n"
                              "    children [\n        USE arm\n    ]\n    core\n"
                              "        Group {\n            attachments [  ] \n        }\n}\n";
    const std::string text = writeText(scene.root());
    EXPECT_TRUE(wordsOf(text) == wordsOf(before + name + sheetText + after) ||
                wordsOf(text) == wordsOf(before + sheetText + name + after))
        << text;
    EXPECT_EQ(text.substr(0, text.find('\n')), "#OSG V1.0 ");
}

TEST(AsciiRoundTrip, finiteNumbersGiveNoWarning) {
    const Scene scene(makeNode());
    attach<FileValues>(scene.root())->setReal32(1e38f);
    LogLines log;
    EXPECT_FALSE(writeText(scene.root()).empty());
    EXPECT_EQ(log.take(), Lines());
}

TEST(AsciiRoundTrip, valuesOfAllTypes) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    values->setBool(true);
    values->setInt8(-7);
    values->setUInt8(200);
    values->setInt16(-32768);
    values->setUInt16(65535);
    values->setInt32((std::numeric_limits<Int32>::min)());
    values->setUInt32((std::numeric_limits<UInt32>::max)());
    values->setReal32(-0.125f);
    values->setTime(0.5);
    values->setGLenum(4609);
    values->setString("some text");
    values->setVec2f(Vec2f(1, -2.5f));
    values->setColor3f(Color3f(0.25f, 0.5f, 1));
    values->setColor4ub(Color4ub(1, 2, 3, 255));
    values->setMatrix(someMatrix());
    values->setQuaternion(Quaternion(Vec3f(0, 1, 0), 0.5f));
    for (const float value : {1.f, -0.5f, 1000.f})
        values->getReal32s().push_back(value);
    for (const char* text : {"a", "", "b c"})
        values->getStrings().push_back(text);
    values->getVec3fs().push_back(Vec3f(1, 2, 3));
    values->getVec3fs().push_back(Vec3f(4, 5, 6));
    values->getColors().push_back(Color4f(0, 0.25f, 0.5f, 1));
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const FileValuesPtr found = copy.attachment<FileValues>();
    EXPECT_TRUE(found->getBool());
    EXPECT_EQ(found->getInt8(), -7);
    EXPECT_EQ(found->getUInt8(), 200);
    EXPECT_EQ(found->getInt16(), -32768);
    EXPECT_EQ(found->getUInt16(), 65535);
    EXPECT_EQ(found->getInt32(), (std::numeric_limits<Int32>::min)());
    EXPECT_EQ(found->getUInt32(), (std::numeric_limits<UInt32>::max)());
    EXPECT_EQ(found->getReal32(), -0.125f);
    EXPECT_EQ(found->getTime(), 0.5);
    EXPECT_EQ(found->getGLenum(), 4609u);
    EXPECT_EQ(found->getString(), "some text");
    EXPECT_TRUE(found->getVec2f().equals(Vec2f(1, -2.5f), 0));
    EXPECT_EQ(found->getColor3f(), Color3f(0.25f, 0.5f, 1));
    EXPECT_EQ(found->getColor4ub(), Color4ub(1, 2, 3, 255));
    EXPECT_TRUE(found->getMatrix().equals(someMatrix(), 0));
    EXPECT_EQ(found->getQuaternion(), Quaternion(Vec3f(0, 1, 0), 0.5f));
    EXPECT_TRUE(found->getReal32s().getValues() == values->getReal32s().getValues());
    ASSERT_EQ(found->getStrings().size(), 3u);
    EXPECT_EQ(found->getStrings()[0], "a");
    EXPECT_EQ(found->getStrings()[1], "");
    EXPECT_EQ(found->getStrings()[2], "b c");
    ASSERT_EQ(found->getVec3fs().size(), 2u);
    EXPECT_TRUE(found->getVec3fs()[1].equals(Vec3f(4, 5, 6), 0));
    ASSERT_EQ(found->getColors().size(), 1u);
    EXPECT_EQ(found->getColors()[0], Color4f(0, 0.25f, 0.5f, 1));
}

TEST(AsciiRoundTrip, rotationsComeBackWithinTheDigitsOfTheText) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> numbers(-1, 1);
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (unsigned i = 0; i < 200; ++i) {
        Quaternion rotation;
        rotation.setValueAsQuat(numbers(random), numbers(random), numbers(random), numbers(random));
        rotation.normalize();
        values->setQuaternion(rotation);
        const Copy copy(scene);
        ASSERT_NE(copy.root(), NullFC);
        const Quaternion found = copy.attachment<FileValues>()->getQuaternion();
        for (UInt32 k = 0; k < 4; ++k)
            EXPECT_NEAR(found[k], rotation[k], 1e-6f);
    }
}

TEST(AsciiRoundTrip, plainTextsComeBack) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (const std::string& text : {std::string(), std::string("plain"), std::string("two words"),
                                    std::string("# { } [ ] , '"),
                                    std::string("\xC3\xA4\xE6\x89\x8B"), std::string(1000, 'x')}) {
        values->setString(text);
        const Copy copy(scene);
        ASSERT_NE(copy.root(), NullFC) << text;
        EXPECT_EQ(copy.attachment<FileValues>()->getString(), text);
    }
}

TEST(AsciiRoundTrip, longListsGoBeyondEveryBuffer) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (unsigned i = 0; i < 300000; ++i)
        values->getReal32s().push_back(static_cast<float>(i) / 4);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_TRUE(copy.attachment<FileValues>()->getReal32s().getValues() ==
                values->getReal32s().getValues());
}

// --- names and shared containers ---------------------------------------------------------------

/// Names that every reader accepts as they are.
class SharedNode : public ::testing::TestWithParam<const char*> {};

TEST_P(SharedNode, comesBackSharedAndWithItsName) {
    const Scene scene(makeNode());
    const NodePtr child = makeNode();
    setName(child, GetParam());
    child->setTravMask(7);
    scene->addChild(child);
    attach<FileSheet>(scene.root())->setTarget(child);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_TRUE(contains(copy.text(), std::string("DEF ") + GetParam() + " Node {"));
    EXPECT_TRUE(contains(copy.text(), std::string("USE ") + GetParam() + "\n"));
    ASSERT_EQ(copy.root()->getNChildren(), 1u);
    EXPECT_EQ(nameOf(copy.root()->getChild(0)), GetParam());
    EXPECT_EQ(copy.root()->getChild(0)->getTravMask(), 7u);
    EXPECT_EQ(copy.attachment<FileSheet>()->getTarget(), copy.root()->getChild(0));
    EXPECT_EQ(copy.root()->getChild(0).getRefCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(AsciiRoundTrip, SharedNode,
                         ::testing::Values("arm", "left_arm", "arm2", "\xC3\xA4rm"));

TEST(AsciiRoundTrip, aSharedNodeWithoutANameIsNamedByTypeAndNumber) {
    const Scene scene(makeNode());
    const NodePtr child = makeNode();
    scene->addChild(child);
    attach<FileSheet>(scene.root())->setTarget(child);
    const std::string expected = "Node" + std::to_string(getContainerId(child));
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_TRUE(contains(copy.text(), "DEF " + expected + " Node {"));
    EXPECT_EQ(nameOf(copy.root()->getChild(0)), expected);
}

TEST(AsciiRoundTrip, containersThatAreMetOnceHaveNoName) {
    const Scene scene(makeNode());
    setName(scene.root(), "root");
    scene->addChild(makeNode());
    EXPECT_FALSE(contains(writeText(scene.root()), "DEF"));
}

TEST(AsciiRoundTrip, sharedCoresAttachmentsAndItemsStayShared) {
    const Scene scene(makeNode());
    const TransformPtr core = Transform::create();
    const FileSheetPtr sheet = FileSheet::create();
    const FileItemPtr item = FileItem::create();
    sheet->addItem(item);
    sheet->addItem(item);
    for (unsigned i = 0; i < 3; ++i) {
        const NodePtr child = makeNodeFor(core);
        child->addAttachment(sheet);
        scene->addChild(child);
    }
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const NodePtr first = copy.root()->getChild(0);
    const AttachmentPtr found = first->findAttachment(FileSheet::getClassType());
    for (UInt32 i = 0; i < 3; ++i) {
        EXPECT_EQ(copy.root()->getChild(i)->getCore(), first->getCore());
        EXPECT_EQ(copy.root()->getChild(i)->findAttachment(FileSheet::getClassType()), found);
    }
    EXPECT_EQ(first->getCore().getRefCount(), 3);
    EXPECT_EQ(found.getRefCount(), 3);
    const FileSheetPtr foundSheet = FileSheetPtr::dcast(found);
    ASSERT_EQ(foundSheet->getItems().size(), 2u);
    EXPECT_EQ(foundSheet->getItems(0), foundSheet->getItems(1));
    EXPECT_EQ(foundSheet->getItems(0).getRefCount(), 2);
}

TEST(AsciiRoundTrip, nodesOutsideTheSceneAreWrittenWithAllBelowThem) {
    const Scene outside(makeNode());
    const NodePtr below = makeNode();
    below->setTravMask(5);
    outside->addChild(below);
    const Scene scene(makeNode());
    attach<FileSheet>(scene.root())->setTarget(outside.root());
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const NodePtr target = copy.attachment<FileSheet>()->getTarget();
    ASSERT_NE(target, NullFC);
    EXPECT_EQ(target->getParent(), NullFC);
    ASSERT_EQ(target->getNChildren(), 1u);
    EXPECT_EQ(target->getChild(0)->getTravMask(), 5u);
}

TEST(AsciiRoundTrip, nullsInListsOfPointersAreDropped) {
    const Scene scene(makeNode());
    const FileSheetPtr sheet = attach<FileSheet>(scene.root());
    sheet->addItem(FileItem::create());
    sheet->getItems().push_back(NullFC);
    sheet->addItem(FileItem::create());
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_TRUE(contains(copy.text(), "NULL\n"));
    EXPECT_EQ(copy.attachment<FileSheet>()->getItems().size(), 2u);
}

// --- the writer and the loader by themselves ---------------------------------------------------

TEST(AsciiRoundTrip, theWriterTakesContainersOfAnyType) {
    FileItemPtr item = FileItem::create();
    addRefCP(item);
    item->setLabel("x");
    std::ostringstream stream;
    OSGWriter writer(stream, 2);
    writer.write(item);
    EXPECT_EQ(stream.str(), "#OSG V1.0 \nFileItem {\n  label \"x\"\n  next NULL\n}\n");
    subRefCP(item);
}

TEST(AsciiRoundTrip, theWriterSharesBetweenItsContainers) {
    const Scene first(makeNode());
    const Scene second(makeNodeFor(first->getCore()));
    std::ostringstream stream;
    OSGWriter writer(stream);
    writer.write({first.root(), NullFC, second.root(), first.root()});
    const Scene scene(readText(stream.str()));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0})->getCore(), scene.at({1})->getCore());
}

TEST(AsciiRoundTrip, theLoaderHandsItsLastSceneOut) {
    OSGLoader loader;
    EXPECT_EQ(loader.getRootNode(), NullFC);
    std::istringstream first("Node { travMask 3 }");
    loader.scanStream(first);
    std::istringstream second("Node { travMask 4 }");
    loader.scanStream(second);
    const Scene scene(loader.getRootNode());
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getTravMask(), 4u);
}

} // namespace
