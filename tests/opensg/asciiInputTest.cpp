// What both readers of ASCII scenes make of a text: the language itself, the types of values, who
// counts what was read.
#include "opensg/asciiInput.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace osg;
using namespace asciiInput;

namespace {

typedef std::vector<std::string> Lines;

// --- the file as a whole -----------------------------------------------------------------------

TEST(AsciiInput, topLevelContainersBecomeChildrenOfANewGroup) {
    const Scene scene(readText("#OSG V1.0 \nDEF a Node { }\nDEF b Node { }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_STREQ(scene->getCore()->getTypeName(), "Group");
    ASSERT_EQ(scene->getNChildren(), 2u);
    EXPECT_EQ(nameOf(scene.at({0})), "a");
    EXPECT_EQ(nameOf(scene.at({1})), "b");
}

TEST(AsciiInput, theHeaderMayBeMissing) {
    LogLines log;
    const Scene scene(readText("Node { }"));
    EXPECT_FALSE(scene.isNull());
    EXPECT_EQ(log.take(), Lines());
}

TEST(AsciiInput, theHeaderMayLackItsBlankOrEndInCarriageReturn) {
    EXPECT_FALSE(Scene(readText("#OSG V1.0\nNode { }")).isNull());
    EXPECT_FALSE(Scene(readText("#OSG V1.0 \r\nNode { }\r\n")).isNull());
}

TEST(AsciiInput, anotherHeaderIsRead) {
    LogLines log;
    EXPECT_FALSE(Scene(readText("#VRML V2.0 utf8\nNode { }")).isNull());
}

TEST(AsciiInput, blanksTabsLineEndsAndCommasSeparateWords) {
    const Scene scene(readText("Node,{\ttravMask\r\n5,children[,Node{},\t,Node{}],}"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getTravMask(), 5u);
    EXPECT_EQ(scene.at({0})->getNChildren(), 2u);
}

TEST(AsciiInput, commentsReachToTheEndOfTheirLine) {
    const Scene scene(readText("Node # {\n{ # travMask 1\n travMask 5# 6\n} # }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getTravMask(), 5u);
}

TEST(AsciiInput, aTextWithoutANodeIsRefused) {
    for (const char* text : {"#OSG V1.0 \n", "# nothing\n"}) {
        LogLines log;
        EXPECT_EQ(readText(text), NullFC) << text;
        EXPECT_GE(log.take().size(), 1u) << text;
    }
}

// --- places of containers ----------------------------------------------------------------------

TEST(AsciiInput, aCoreAtTheTopIsPutIntoANode) {
    const Scene scene(readText("Transform { }"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene->getNChildren(), 1u);
    EXPECT_STREQ(scene.at({0})->getCore()->getTypeName(), "Transform");
    EXPECT_EQ(scene.at({0}).getRefCount(), 1);
}

TEST(AsciiInput, aCoreAmongChildrenIsPutIntoANode) {
    const Scene scene(readText("Node { children [ Group { } Node { } Transform { } ] }"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene.at({0})->getNChildren(), 3u);
    EXPECT_STREQ(scene.at({0, 2})->getCore()->getTypeName(), "Transform");
}

TEST(AsciiInput, aNodeWithoutACoreGetsAGroup) {
    const Scene scene(readText("Node { children [ Node { core NULL } ] }"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_NE(scene.at({0, 0})->getCore(), NullFC);
    EXPECT_STREQ(scene.at({0, 0})->getCore()->getTypeName(), "Group");
}

TEST(AsciiInput, oneChildNeedsNoBrackets) {
    const Scene scene(readText("Node { children Node { } }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getNChildren(), 1u);
}

TEST(AsciiInput, nullsInListsAreDropped) {
    const Scene scene(
        readText(sheetNode("items [ FileItem { label a } NULL FileItem { label b } ]") +
                 "Node { children [ NULL Node { } NULL ] }"));
    ASSERT_FALSE(scene.isNull());
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    ASSERT_EQ(sheet->getItems().size(), 2u);
    EXPECT_EQ(sheet->getItems(1)->getLabel(), "b");
    EXPECT_EQ(scene.at({1})->getNChildren(), 1u);
}

TEST(AsciiInput, anAttachmentReplacesAnotherOfItsGroup) {
    const std::size_t before = countContainers();
    {
        const Scene scene(
            readText("Node { attachments [ Name { name \"a\" } Name { name \"b\" } ] }"));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(nameOf(scene.at({0})), "b");
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(AsciiInput, aContainerAtTheTopMayBeUsedLater) {
    const Scene scene(readText("DEF i FileItem { label \"x\" }\n" + sheetNode("items [ USE i ]")));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(sheetOf(scene.at({0}))->getItems().size(), 1u);
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems(0)->getLabel(), "x");
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems(0).getRefCount(), 1);
}

// --- DEF and USE -------------------------------------------------------------------------------

TEST(AsciiInput, useSharesTheContainer) {
    const Scene scene(readText("Node { core DEF g Group { } children [ Node { core USE g } ] }"));
    ASSERT_FALSE(scene.isNull());
    const NodeCorePtr core = scene.at({0})->getCore();
    EXPECT_EQ(scene.at({0, 0})->getCore(), core);
    EXPECT_EQ(core.getRefCount(), 2);
    EXPECT_EQ(core->getParents().size(), 2u);
}

TEST(AsciiInput, defNamesWhatHasNoName) {
    const Scene scene(readText("DEF x Node { core DEF y Group { } }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(nameOf(scene.at({0})), "x");
    EXPECT_EQ(nameOf(scene.at({0})->getCore()), "y");
}

TEST(AsciiInput, aNameAttachmentGoesBeforeTheNameInDef) {
    const Scene scene(readText("DEF x Node { attachments [ Name { name \"my arm\" } ] }\n"
                               "DEF y Node { attachments [ Name { name \"\" } ] }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(nameOf(scene.at({0})), "my arm");
    EXPECT_EQ(nameOf(scene.at({1})), "");
}

TEST(AsciiInput, ofTwoContainersWithOneNameTheFirstIsUsed) {
    const Scene scene(readText("DEF x Node { travMask 1 }\nDEF x Node { travMask 2 }\n" +
                               sheetNode("target USE x")));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(sheetOf(scene.at({2}))->getTarget(), scene.at({0}));
}

TEST(AsciiInput, useOfAnUnknownNameIsIgnored) {
    const Scene scene(readText("DEF a Node { children [ USE b USE b Node { } ] }\n" +
                               sheetNode("target USE b speed 3") + "DEF b Node { }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getNChildren(), 1u);
    EXPECT_EQ(sheetOf(scene.at({1}))->getTarget(), NullFC);
    EXPECT_EQ(sheetOf(scene.at({1}))->getSpeed(), 3.f);
}

TEST(AsciiInput, aContainerMayReferToItselfFromInside) {
    Scene scene(readText("DEF a Node { attachments [ FileSheet { target USE a } ] }"));
    ASSERT_FALSE(scene.isNull());
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    EXPECT_EQ(sheet->getTarget(), scene.at({0}));
    EXPECT_EQ(scene.at({0}).getRefCount(), 2);
    EXPECT_EQ(sheet.getRefCount(), 1);
    // The circle of references is the caller's, as with one that was built by hand.
    sheet->setTarget(NullFC);
}

TEST(AsciiInput, anItemMayPointAtItself) {
    Scene scene(readText(sheetNode("items [ DEF i FileItem { next USE i } USE i ]")));
    ASSERT_FALSE(scene.isNull());
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    ASSERT_EQ(sheet->getItems().size(), 2u);
    const FileItemPtr item = sheet->getItems(0);
    EXPECT_EQ(item->getFollower(), item);
    EXPECT_EQ(item.getRefCount(), 3);
    item->setFollower(NullFC);
}

TEST(AsciiInput, anAttachmentMayHangOnTheNodeThatItPointsAt) {
    Scene scene(readText("Node { attachments [ DEF s FileSheet { target Node { attachments "
                         "[ USE s ] } } ] }"));
    ASSERT_FALSE(scene.isNull());
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    EXPECT_EQ(sheetOf(sheet->getTarget()), sheet);
    EXPECT_EQ(sheet->getParents().size(), 2u);
    EXPECT_EQ(sheet.getRefCount(), 2);
    sheet->setTarget(NullFC);
}

TEST(AsciiInput, aNodeThatIsDefinedInAnAttachmentTakesItsPlaceInTheTree) {
    const Scene scene(
        readText("Node { attachments [ FileSheet { target DEF arm Node { travMask 9 } } ]\n"
                 " children [ Node { } USE arm ] }"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene.at({0})->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0, 1})->getTravMask(), 9u);
    EXPECT_EQ(scene.at({0, 1})->getParent(), scene.at({0}));
    EXPECT_EQ(scene.at({0, 1}).getRefCount(), 2);
}

TEST(AsciiInput, aNodeInTwoListsOfChildrenIsInTheLast) {
    const Scene scene(
        readText("Node { children [ DEF a Node { } ] }\nNode { children [ USE a ] }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getNChildren(), 0u);
    ASSERT_EQ(scene.at({1})->getNChildren(), 1u);
    EXPECT_EQ(scene.at({1, 0}).getRefCount(), 1);
}

TEST(AsciiInput, aCameraKeepsABeaconThatItDoesNotCount) {
    const Scene scene(readText(sheetNode("anything PerspectiveCamera { beacon DEF b Node { } }") +
                               "Node { children [ USE b ] }"));
    ASSERT_FALSE(scene.isNull());
    const PerspectiveCameraPtr camera =
        PerspectiveCameraPtr::dcast(sheetOf(scene.at({0}))->getAnything());
    ASSERT_NE(camera, NullFC);
    EXPECT_EQ(camera->getBeacon(), scene.at({1, 0}));
    EXPECT_EQ(camera->getBeacon().getRefCount(), 1);
}

// --- what is unknown ---------------------------------------------------------------------------

TEST(AsciiInput, aCoreOfAnUnknownTypeLeavesAGroup) {
    const Scene scene(readText("Node { core Strange { a 1 b \"x\" } }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_STREQ(scene.at({0})->getCore()->getTypeName(), "Group");
}

TEST(AsciiInput, abstractTypesCountAsUnknown) {
    const Scene scene(readText("Node { core Light { on FALSE } } Node { }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getNChildren(), 2u);
}

// --- values ------------------------------------------------------------------------------------

TEST(AsciiInput, integersOfEveryWidth) {
    const Values values("int8 -128 uint8 255 int16 -32768 uint16 65535 int32 -2147483648 "
                        "uint32 4294967295 glenum 4609");
    EXPECT_EQ(values->getInt8(), -128);
    EXPECT_EQ(values->getUInt8(), 255);
    EXPECT_EQ(values->getInt16(), -32768);
    EXPECT_EQ(values->getUInt16(), 65535);
    EXPECT_EQ(values->getInt32(), (std::numeric_limits<Int32>::min)());
    EXPECT_EQ(values->getUInt32(), 4294967295u);
    EXPECT_EQ(values->getGLenum(), 4609u);
}

TEST(AsciiInput, integersAreDecimalHexadecimalOrOctalAndWrap) {
    const Values values("int32 0x1F uint32 -1 int8 300 uint8 +7 int16 010");
    EXPECT_EQ(values->getInt32(), 31);
    EXPECT_EQ(values->getUInt32(), 4294967295u);
    EXPECT_EQ(values->getInt8(), 44);
    EXPECT_EQ(values->getUInt8(), 7);
    EXPECT_EQ(values->getInt16(), 8);
}

TEST(AsciiInput, floatsInAllForms) {
    const Values values("real32s [ 1 -2.5 +3 4. .5 1e3 -1E-2 -0 1.00000001e+00 ]");
    const float expected[] = {1, -2.5f, 3, 4, 0.5f, 1000, -0.01f, -0.f, 1};
    ASSERT_EQ(values->getReal32s().size(), 9u);
    for (UInt32 i = 0; i < 9; ++i)
        EXPECT_EQ(values->getReal32s()[i], expected[i]) << i;
    EXPECT_TRUE(std::signbit(values->getReal32s()[7]));
}

TEST(AsciiInput, floatsAreTheNearestOfTheText) {
    const Values values("real32s [ 1.57079637 0.1 16777217 1e-45 1.4e-45 3.4028235e38 ] "
                        "time 1e-310");
    const float expected[] = {0x1.921fb6p+0f, 0x1.99999ap-4f, 0x1p24f,
                              0x1p-149f,      0x1p-149f,      0x1.fffffep127f};
    for (UInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(values->getReal32s()[i], expected[i]) << i;
    EXPECT_EQ(values->getTime(), 1e-310);
}

TEST(AsciiInput, floatsOutsideTheRangeAreInfiniteOrZero) {
    const Values values("real32s [ 1e39 -1e39 1e-60 -1e-60 1e999999999999999999999 "
                        "1e-999999999999999999999 0.0000e99999 ]");
    const float inf = std::numeric_limits<float>::infinity();
    const float expected[] = {inf, -inf, 0, -0.f, inf, 0, 0};
    ASSERT_EQ(values->getReal32s().size(), 7u);
    for (UInt32 i = 0; i < 7; ++i)
        EXPECT_EQ(values->getReal32s()[i], expected[i]) << i;
}

TEST(AsciiInput, boolsInAnyLetterCase) {
    for (const char* text : {"true", "TRUE", "tRuE"})
        EXPECT_TRUE(Values(std::string("bool ") + text)->getBool()) << text;
    EXPECT_FALSE(Values("bool False")->getBool());
}

TEST(AsciiInput, vectorsAndColours) {
    const Values values("vec3fs [ 1 2 3, 4 5 6\n 7 8 9 ] color3f 0.1 0.2 0.3 color4ub 1 2 255 300 "
                        "colors [ 1 0 0 1 ]");
    ASSERT_EQ(values->getVec3fs().size(), 3u);
    EXPECT_EQ(values->getVec3fs()[2], Vec3f(7, 8, 9));
    EXPECT_EQ(values->getColor3f(), Color3f(0.1f, 0.2f, 0.3f));
    EXPECT_EQ(values->getColor4ub()[2], 255);
    EXPECT_EQ(values->getColor4ub()[3], 44);
    EXPECT_EQ(values->getColors().size(), 1u);
}

TEST(AsciiInput, rotationsAreAxisAndAngle) {
    const Values values("quaternion 0 2 0 1.5707963267948966");
    EXPECT_FLOAT_EQ(values->getQuaternion()[1], std::sqrt(0.5f));
    EXPECT_FLOAT_EQ(values->getQuaternion()[3], std::sqrt(0.5f));
    EXPECT_EQ(Values("quaternion 0 0 0 1")->getQuaternion(), Quaternion());
}

TEST(AsciiInput, aListOfOneNeedsNoBrackets) {
    const Values values("real32s 5 strings \"a\" vec3fs 1 2 3 bool TRUE");
    EXPECT_EQ(values->getReal32s().size(), 1u);
    EXPECT_EQ(values->getStrings().size(), 1u);
    EXPECT_EQ(values->getVec3fs().size(), 1u);
    EXPECT_TRUE(values->getBool());
}

TEST(AsciiInput, anEmptyListOfOpenSGIsALineOfBlanks) {
    const Values values("real32s [\n            \n        ]\n bool TRUE");
    EXPECT_EQ(values->getReal32s().size(), 0u);
    EXPECT_TRUE(values->getBool());
}

// --- texts -------------------------------------------------------------------------------------

TEST(AsciiInput, listsOfTexts) {
    const Values values("strings [ \"a\", \"b c\" \"d\\\"e\",\n \"\" word \"x]\" ]");
    const char* const expected[] = {"a", "b c", "d\"e", "", "word", "x]"};
    ASSERT_EQ(values->getStrings().size(), 6u);
    for (UInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(values->getStrings()[i], expected[i]) << i;
}

// --- containers are told -----------------------------------------------------------------------

TEST(AsciiInput, containersReactToWhatWasRead) {
    const Scene scene(readText("ComponentTransform { translation 1 2 3 }"));
    ASSERT_FALSE(scene.isNull());
    const ComponentTransformPtr core = ComponentTransformPtr::dcast(scene.at({0})->getCore());
    EXPECT_EQ(core->getMatrix()[3][1], 2.f);
}

TEST(AsciiInput, pointersOfContainersAreCountedOnce) {
    const Scene scene(
        readText("DEF n Node { }\n" +
                 sheetNode("target USE n items [ DEF i FileItem { } USE i FileItem { } ]") +
                 "Node { core PointLight { beacon USE n } }"));
    ASSERT_FALSE(scene.isNull());
    const FileSheetPtr sheet = sheetOf(scene.at({1}));
    EXPECT_EQ(scene.at({0}).getRefCount(), 3);
    EXPECT_EQ(sheet.getRefCount(), 1);
    ASSERT_EQ(sheet->getItems().size(), 3u);
    EXPECT_EQ(sheet->getItems(0).getRefCount(), 2);
    EXPECT_EQ(sheet->getItems(2).getRefCount(), 1);
}

// --- names, kinds of values and texts -----------------------------------------------------------

class OddName : public ::testing::TestWithParam<const char*> {};

TEST_P(OddName, isAcceptedInDefAndUse) {
    expectNameAccepted(GetParam());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, OddName,
                         ::testing::Values("arm", " leading", "trailing ", "Node", "\xC3\xA4rm"));

class WrongKind : public ::testing::TestWithParam<const char*> {};

TEST_P(WrongKind, leavesTheFieldAsItWasAndReadsOn) {
    expectFieldLeftOut(GetParam());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, WrongKind,
                         ::testing::Values("speed \"x\"", "speed fast", "speed [ 1 2 ]",
                                           "speed NULL", "target 5", "target \"x\"", "items 3",
                                           "items \"x\"", "internal 1", "internal \"TRUE\""));

class TextInput : public ::testing::TestWithParam<TextCase> {};

TEST_P(TextInput, isReadAsMeant) {
    expectTextRead(GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    AsciiInput, TextInput,
    ::testing::Values(
        TextCase{"\"plain\"", "plain"}, TextCase{"\"\"", ""}, TextCase{"word", "word"},
        TextCase{"\"two  words\"", "two  words"}, TextCase{"\"a\nb\tc\"", "a\nb\tc"},
        TextCase{"\"say \\\"hi\\\"\"", "say \"hi\""}, TextCase{"\"back\\\\slash\"", "back\\slash"},
        TextCase{"\"C:\\dir\\file\"", "C:\\dir\\file"}, TextCase{"\"ends in \\\\\"", "ends in \\"},
        TextCase{"\"# no comment\"", "# no comment"}, TextCase{"\"{ [ ] }\"", "{ [ ] }"},
        TextCase{"\"a\" # say \"b", "a"}, TextCase{"\"a\" bool TRUE", "a"},
        TextCase{"\"a\" strings \"b\"", "a"}));

} // namespace
