// The registry's dump, character by character.

#include "manager/fixture.h"

#include <OpenSG/OSGGroup.h>

#include <regex>
#include <sstream>

using namespace kv::test;

namespace {

using Printing = SceneTest;

std::string printed(kvAnimationManager2& manager) {
    ::testing::internal::CaptureStdout();
    manager.printInfo();
    return ::testing::internal::GetCapturedStdout();
}

std::string addressOf(const void* object) {
    std::ostringstream text;
    text << object;
    return text.str();
}

/// A node pointer prints the address of a variable first, which changes from call to call, then the
/// address of the container: only what follows the first address is fixed.
std::string withoutVariableAddresses(const std::string& text) {
    return std::regex_replace(text, std::regex("NodePtr (0x)*[0-9a-f]+:"), "NodePtr:");
}

std::string nodeText(const osg::NodePtr& node) {
    std::ostringstream text;
    text << node;
    return withoutVariableAddresses(text.str());
}

TEST_F(Printing, anEmptyRegistryPrintsFourLines) {
    EXPECT_EQ(printed(manager),
              "#---------------------kvAnimationManager2-----------------------#\n"
              "# AnimCurves: 0\n"
              "# AnimBlocks: 0\n"
              "# AnimClips: 0\n");
}

TEST_F(Printing, curvesPrintTheirKeysNumberedFromZero) {
    kvAnimationCurve* first = registeredCurve("translateX", {{0, 1.5F}, {10.25F, -2}});
    kvAnimationCurve* second = registeredCurve("visible", {});
    first->setId(11);
    second->setId(12);
    EXPECT_EQ(printed(manager),
              "#---------------------kvAnimationManager2-----------------------#\n"
              "# AnimCurves: 2\n"
              "#  - id: 11 attribute: translateX\n"
              "   - cp0 x: 0 y: 1.5\n"
              "   - cp1 x: 10.25 y: -2\n"
              "#  - id: 12 attribute: visible\n"
              "# AnimBlocks: 0\n"
              "# AnimClips: 0\n");
}

TEST_F(Printing, blocksPrintRangeAndCurvesWithoutKeys) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    kvAnimationBlock* made = block("Door", 5, 12.5F);
    made->setAppropriateNode(node);
    manager.addAnimationBlock(made);
    made->setId(21);
    made->getLastInsertedCurve()->setId(22);
    const std::string expected =
        "#---------------------kvAnimationManager2-----------------------#\n"
        "# AnimCurves: 0\n"
        "# AnimBlocks: 1\n"
        "#  - id: 21 name: Door\n"
        "#  - pointer: " +
        addressOf(made) +
        "\n"
        "#  - apNode: " +
        nodeText(node) +
        "\n"
        "#    - begin: 5 end: 12.5 duration: 7.5\n"
        "#  - BlockCurves: 1\n"
        "#    - id: 22 attribute: Door\n"
        "# AnimClips: 0\n";
    EXPECT_EQ(withoutVariableAddresses(printed(manager)), expected);
}

TEST_F(Printing, clipsPrintTheBlocksOfTheirOwnTracksInOrderOfStartWithKeys) {
    kvAnimationClip* holder = clip("Walk");
    kvAnimationBlock* late = newBlock("late", 20, 30);
    kvAnimationBlock* early = newBlock("early", 0, 10);
    holder->addBlock(late);
    holder->addBlock(early);
    holder->newSubclip()->addBlock(newBlock("nested", 0, 1));
    manager.addClip(holder);
    holder->setId(31);
    late->setId(32);
    early->setId(33);
    late->getLastInsertedCurve()->setId(34);
    early->getLastInsertedCurve()->setId(35);
    const std::string none = nodeText(osg::NullFC);
    const std::string expected =
        "#---------------------kvAnimationManager2-----------------------#\n"
        "# AnimCurves: 0\n"
        "# AnimBlocks: 0\n"
        "# AnimClips: 1\n"
        "#  - id: 31 name: Walk\n"
        "#  - ClipBlocks: 2\n"
        "#    - id: 33 name: early\n"
        "#    - pointer: " +
        addressOf(early) +
        "\n"
        "#    - apNode: " +
        none +
        "\n"
        "#    - begin: 0 end: 10 duration: 10\n"
        "#    - ClipBlockCurves: 1\n"
        "#      - id: 35 attribute: early\n"
        "#        - pos: 0 1\n"
        "#        - pos: 10 2\n"
        "#    - id: 32 name: late\n"
        "#    - pointer: " +
        addressOf(late) +
        "\n"
        "#    - apNode: " +
        none +
        "\n"
        "#    - begin: 20 end: 30 duration: 10\n"
        "#    - ClipBlockCurves: 1\n"
        "#      - id: 34 attribute: late\n"
        "#        - pos: 20 1\n"
        "#        - pos: 30 2\n";
    EXPECT_EQ(withoutVariableAddresses(printed(manager)), expected);
}

TEST_F(Printing, ofTwoBlocksOfAClipTheOneThatStartsFirstIsFirstAlthoughItEndsLast) {
    kvAnimationClip* holder = clip("Walk");
    holder->addBlock(newBlock("short", 10, 20));
    holder->addBlock(newBlock("long", 0, 90));
    manager.addClip(holder);
    const std::string text = printed(manager);
    ASSERT_NE(text.find("name: long"), std::string::npos);
    EXPECT_LT(text.find("name: long"), text.find("name: short"));
}

TEST_F(Printing, nullsInTheListsAreCountedAndSteppedOver) {
    manager.getAnimCurves()->push_back(nullptr);
    manager.getBlocks()->push_back(nullptr);
    manager.getClips()->push_back(nullptr);
    EXPECT_EQ(printed(manager),
              "#---------------------kvAnimationManager2-----------------------#\n"
              "# AnimCurves: 1\n"
              "# AnimBlocks: 1\n"
              "# AnimClips: 1\n");
}

TEST_F(Printing, aBlockWhoseNodeWasDestroyedPrintsTheNullNode) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    kvAnimationBlock* made = block("Door", 0, 1);
    made->setAppropriateNode(node);
    manager.addAnimationBlock(made);
    removeNode(root, node);
    EXPECT_NE(
        withoutVariableAddresses(printed(manager)).find("#  - apNode: " + nodeText(osg::NullFC)),
        std::string::npos);
}

} // namespace
