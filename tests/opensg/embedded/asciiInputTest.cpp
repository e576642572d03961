// What only the reader of the embedded scene graph makes of an ASCII text. OpenSG's own reader has
// no tokens for many types of values, takes 0x10 for no float, loses what follows unknown
// containers and fields or ends the program over them, does not take names that are no words or
// quotes within texts although its writer makes both, keeps containers that belong to nothing, and
// warns more often, though of a wrong header only once. A byte order mark crashes it but in the
// first file.
#include "opensg/asciiInput.h"
#include "opensg/embedded/fileContainers.h"

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

TEST(AsciiInput, anotherHeaderIsReadWithOneWarningEachTime) {
    LogLines log;
    const Scene scene(readText("#VRML V2.0 utf8\nNode { }"));
    EXPECT_FALSE(scene.isNull());
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(AsciiInput, aByteOrderMarkIsPassedOver) {
    EXPECT_FALSE(Scene(readText("\xEF\xBB\xBF#OSG V1.0 \nNode { }")).isNull());
}

TEST(AsciiInput, aHeaderThatLacksItsBlankIsNoReasonToWarn) {
    LogLines log;
    EXPECT_FALSE(Scene(readText("#OSG V1.0\nNode { }")).isNull());
    EXPECT_FALSE(Scene(readText("#OSG V1.0 \r\nNode { }\r\n")).isNull());
    EXPECT_EQ(log.take(), Lines());
}

TEST(AsciiInput, declarationsOfTheLanguageArePassedOver) {
    LogLines log;
    const Scene scene(readText("PROTO Box [ field SFFloat size 1 ] { Node { name \"]\" } }\n"
                               "EXTERNPROTO Other [ ] [ \"a.wrl\", \"b.wrl\" ]\n"
                               "EXTERNPROTO Third [ ] \"c.wrl\"\n"
                               "DEF a Node { ROUTE a.b TO c.d travMask 7 }\n"
                               "ROUTE a.travMask TO b.travMask\n"
                               "IMPORT a.b AS c\nIMPORT a.b\nEXPORT a AS b\nEXPORT a\n"
                               "DEF b Node { }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0})->getTravMask(), 7u);
    EXPECT_EQ(log.take(), Lines());
}

// --- places of containers ----------------------------------------------------------------------

TEST(AsciiInput, whatDoesNotFitIntoAFieldIsLeftOutWithOneWarning) {
    const std::size_t before = countContainers();
    {
        LogLines log;
        const Scene scene(readText("Node {\n attachments [ Group { } ]\n"
                                   " children [ FileItem { } FileItem { } Node { } ]\n"
                                   " core Node { } }\n" +
                                   sheetNode("target Group { } items [ Name { } ] speed 2")));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(scene.at({0})->getNChildren(), 1u);
        EXPECT_EQ(scene.at({0})->getAttachments().size(), 0u);
        EXPECT_EQ(sheetOf(scene.at({1}))->getTarget(), NullFC);
        EXPECT_EQ(sheetOf(scene.at({1}))->getItems().size(), 0u);
        EXPECT_EQ(sheetOf(scene.at({1}))->getSpeed(), 2.f);
        EXPECT_EQ(log.take().size(), 5u);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(AsciiInput, whatBelongsToNothingIsLeftOutWithAWarning) {
    const std::size_t before = countContainers();
    {
        LogLines log;
        const Scene scene(readText("Node { }\nFileItem { label \"x\" }\nName { }\n"));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(scene->getNChildren(), 1u);
        EXPECT_EQ(log.take().size(), 2u);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(AsciiInput, aContainerAtTheTopThatIsUsedLaterIsNoReasonToWarn) {
    LogLines log;
    const Scene scene(readText("DEF i FileItem { label \"x\" }\n" + sheetNode("items [ USE i ]")));
    EXPECT_EQ(log.take(), Lines());
}

TEST(AsciiInput, aFieldThatStandsTwiceKeepsTheLastPointer) {
    const std::size_t before = countContainers();
    {
        const Scene scene(readText("Node { core Group { } core Transform { } }\n" +
                                   sheetNode("anything FileItem { label a } "
                                             "anything FileItem { label b }")));
        ASSERT_FALSE(scene.isNull());
        EXPECT_STREQ(scene.at({0})->getCore()->getTypeName(), "Transform");
        EXPECT_EQ(FileItemPtr::dcast(sheetOf(scene.at({1}))->getAnything())->getLabel(), "b");
    }
    EXPECT_EQ(countContainers(), before);
}

// --- DEF and USE -------------------------------------------------------------------------------

TEST(AsciiInput, useOfAnUnknownNameIsToldOnceWithItsLine) {
    LogLines log;
    const Scene scene(readText("DEF a Node { children [ USE b USE b Node { } ] }\n"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("line 1"), std::string::npos);
    EXPECT_NE(log.take()[0].find("\"b\""), std::string::npos);
}

TEST(AsciiInput, aNodeMayBeDefinedInsideOneThatIsWrittenBelowIt) {
    // What a writer makes of a node whose attachment points at the node's own parent.
    Scene scene(readText("DEF p Node { attachments [ FileSheet { target DEF q Node { children "
                         "[ USE p ] } } ] children [ Node { } ] }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(nameOf(scene.at({0})), "p");
    sheetOf(scene.at({0}))->setTarget(NullFC);
}

// --- names that are none -----------------------------------------------------------------------

TEST(AsciiInput, oddNamesDoNotDisturbOthers) {
    const Scene scene(readText("DEF my arm Node {\n}\nDEF my Node {\n}\nDEF x Node { }\n" +
                               sheetNode("target USE my arm\n anything USE my\n") +
                               sheetNode("target USE x speed 4")));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(sheetOf(scene.at({3}))->getTarget(), scene.at({0}));
    EXPECT_EQ(sheetOf(scene.at({3}))->getAnything(), scene.at({1}));
    EXPECT_EQ(sheetOf(scene.at({4}))->getTarget(), scene.at({2}));
    EXPECT_EQ(sheetOf(scene.at({4}))->getSpeed(), 4.f);
}

// --- what is unknown ---------------------------------------------------------------------------

TEST(AsciiInput, containersOfUnknownTypesAreLeftOutWithOneWarning) {
    LogLines log;
    const Scene scene(readText("Node { travMask 3\n children [\n Strange { }\n"
                               " Strange { size 3 flags [ TRUE FALSE ] inner Odd { a 1 } }\n"
                               " Node { travMask 4 } ] }\nStrange { }\nNode { travMask 5 }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene->getNChildren(), 2u);
    ASSERT_EQ(scene.at({0})->getNChildren(), 1u);
    EXPECT_EQ(scene.at({0, 0})->getTravMask(), 4u);
    EXPECT_EQ(scene.at({1})->getTravMask(), 5u);
    ASSERT_EQ(log.take().size(), 2u);
    EXPECT_NE(log.take()[0].find("line 3"), std::string::npos);
    EXPECT_NE(log.take()[0].find("Strange"), std::string::npos);
    EXPECT_NE(log.take()[1].find("Odd"), std::string::npos);
}

TEST(AsciiInput, whatIsDefinedInUnknownContainersCanBeUsed) {
    // An attachment of an unknown type is written with the node that it points at, which appears
    // only as USE among the children.
    LogLines log;
    const Scene scene(
        readText("Node { attachments [ Strange { a 1\n target\n DEF arm Node { travMask "
                 "9 } } ]\n children [ USE arm Node { } ] }"));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(scene.at({0})->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0, 0})->getTravMask(), 9u);
    EXPECT_EQ(scene.at({0, 0}).getRefCount(), 1);
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(AsciiInput, useOfAnUnknownContainerIsNull) {
    LogLines log;
    const Scene scene(
        readText(sheetNode("anything DEF s Strange { } items [ USE s FileItem { } ]") +
                 sheetNode("anything USE s speed 2")));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(sheetOf(scene.at({0}))->getAnything(), NullFC);
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems().size(), 1u);
    EXPECT_EQ(sheetOf(scene.at({1}))->getAnything(), NullFC);
    EXPECT_EQ(sheetOf(scene.at({1}))->getSpeed(), 2.f);
    EXPECT_EQ(log.take().size(), 1u);
}

class UnknownField : public ::testing::TestWithParam<const char*> {};

TEST_P(UnknownField, isLeftOutAndNothingElse) {
    const std::size_t before = countContainers();
    {
        LogLines log;
        const std::string field = std::string("colour ") + GetParam();
        const Scene scene(
            readText("Node {\n children [\n  Node {\n   travMask 3\n   " + field +
                     "\n   children [ Node { travMask 4 } ]\n  }\n  Node { travMask 5 }\n"
                     " ]\n " +
                     field + "\n core Transform { }\n}\n"));
        ASSERT_FALSE(scene.isNull()) << log.take()[0];
        ASSERT_EQ(scene.at({0})->getNChildren(), 2u);
        EXPECT_EQ(scene.at({0, 0})->getTravMask(), 3u);
        ASSERT_EQ(scene.at({0, 0})->getNChildren(), 1u);
        EXPECT_EQ(scene.at({0, 0, 0})->getTravMask(), 4u);
        EXPECT_EQ(scene.at({0, 1})->getTravMask(), 5u);
        EXPECT_STREQ(scene.at({0})->getCore()->getTypeName(), "Transform");
        ASSERT_EQ(log.take().size(), 1u);
        EXPECT_NE(log.take()[0].find("\"colour\""), std::string::npos);
    }
    EXPECT_EQ(countContainers(), before);
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, UnknownField,
                         ::testing::Values("1", "1 2 3", "-1.5e3 +.5 0x1F", "nan -inf", "\"text\"",
                                           "\"a } ] \\\" b\"", "word", "TRUE", "[ ]", "[ 1, 2 3 ]",
                                           "[ \"a\" \"b\", \"c\" ]", "[ TRUE,\n FALSE ]", "NULL",
                                           "[ NULL NULL ]", "Group { }",
                                           "\n Group { attachments [  ] }", "DEF g Group { }",
                                           "[ Group { } DEF g Node { } USE g NULL ]",
                                           "[ 1 Group { } \"x\" ]", ""));

TEST(AsciiInput, internalFieldsAreNotSet) {
    LogLines log;
    const Scene scene(readText(sheetNode("anything FileSecret { label a secret 7 }")));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(FileSecretPtr::dcast(sheetOf(scene.at({0}))->getAnything())->getSecret(), 0);
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(AsciiInput, aListWithAnElementOfTheWrongKindIsLeftEmpty) {
    LogLines log;
    const Values values("real32s [ 1 2 three 4 ] string \"s\"");
    EXPECT_EQ(values->getReal32s().size(), 0u);
    EXPECT_EQ(values->getString(), "s");
    EXPECT_EQ(log.take().size(), 1u);
}

// --- values ------------------------------------------------------------------------------------

TEST(AsciiInput, integersOfSixtyFourBits) {
    const RareValues values("int64 -9223372036854775808 uint64 18446744073709551615 "
                            "mask 9223372036854775809");
    EXPECT_EQ(values->getInt64(), (std::numeric_limits<Int64>::min)());
    EXPECT_EQ(values->getUInt64(), 18446744073709551615ull);
    EXPECT_EQ(values->getMask(), 9223372036854775809ull);
}

TEST(AsciiInput, anOctalNumberWithADecimalDigitIsDecimal) {
    EXPECT_EQ(Values("uint16 08")->getUInt16(), 8);
}

TEST(AsciiInput, floatsMayBeHexadecimalIntegers) {
    EXPECT_EQ(Values("real32 0x10")->getReal32(), 16.f);
}

TEST(AsciiInput, doublesAreTheNearestOfTheText) {
    EXPECT_EQ(RareValues("real64 0.1000000000000000055511151231257827")->getReal64(), 0.1);
}

TEST(AsciiInput, numbersThatAreNotFiniteAreRead) {
    const Values values("real32s [ nan inf -inf +inf NaN -nan INF Infinity ] "
                        "vec2f nan -inf");
    ASSERT_EQ(values->getReal32s().size(), 8u);
    for (const UInt32 i : {0u, 4u, 5u})
        EXPECT_TRUE(std::isnan(values->getReal32s()[i])) << i;
    for (const UInt32 i : {1u, 3u, 6u, 7u})
        EXPECT_EQ(values->getReal32s()[i], std::numeric_limits<float>::infinity()) << i;
    EXPECT_EQ(values->getReal32s()[2], -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(values->getVec2f()[0]));
    EXPECT_EQ(RareValues("real64 -inf")->getReal64(), -std::numeric_limits<double>::infinity());
}

TEST(AsciiInput, listsOfBools) {
    const RareValues values("bools [ TRUE, FALSE tRuE\n false ]");
    const bool expected[] = {true, false, true, false};
    ASSERT_EQ(values->getBools().size(), 4u);
    for (UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(values->getBools()[i], expected[i]) << i;
}

TEST(AsciiInput, fieldsThatOpenSGsReaderHasNoTokenFor) {
    const RareValues values("int64 -5 uint64 6 real64 7.5 pnt2f 8 9 vec3s -1 -2 -3 bools [ TRUE ] "
                            "matrices [ 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 ] mask 10 "
                            "vec4d 1 2 3 4 string \"read\"");
    EXPECT_EQ(values->getInt64(), -5);
    EXPECT_EQ(values->getUInt64(), 6u);
    EXPECT_EQ(values->getReal64(), 7.5);
    EXPECT_EQ(values->getPnt2f(), Pnt2f(8, 9));
    EXPECT_EQ(values->getVec3s()[2], -3);
    EXPECT_EQ(values->getBools().size(), 1u);
    ASSERT_EQ(values->getMatrices().size(), 1u);
    // Rows in the text, columns in memory.
    EXPECT_EQ(values->getMatrices()[0][3][0], 4.f);
    EXPECT_EQ(values->getMatrices()[0][0][3], 13.f);
    EXPECT_EQ(values->getMask(), 10u);
    EXPECT_EQ(values->getVec4d()[3], 4.);
    EXPECT_EQ(values->getString(), "read");
}

TEST(AsciiInput, volumesAreBoxesOrSpheres) {
    const Values box("volume 1 2 3 4 5 6");
    Pnt3f low, high;
    box->getVolume().getBounds(low, high);
    EXPECT_EQ(low, Pnt3f(1, 2, 3));
    EXPECT_EQ(high, Pnt3f(4, 5, 6));
    const Values sphere("volume 1 2 3 4 bool TRUE");
    EXPECT_EQ(sphere->getVolume().getType(), DynamicVolume::SPHERE_VOLUME);
    EXPECT_EQ(sphere->getVolume().getRadius(), 4.f);
    EXPECT_TRUE(sphere->getBool());
}

// --- texts -------------------------------------------------------------------------------------

TEST(AsciiInput, listsOfTextsWrittenWithoutEscapes) {
    const Values values("strings [\n \"say \"hi\"\", \"b\",\n \"19\"x\"\n ]");
    const char* const expected[] = {"say \"hi\"", "b", "19\"x"};
    ASSERT_EQ(values->getStrings().size(), 3u);
    for (UInt32 i = 0; i < 3; ++i)
        EXPECT_EQ(values->getStrings()[i], expected[i]) << i;
}

// --- names, kinds of values and texts -----------------------------------------------------------

class NameOfNoWord : public ::testing::TestWithParam<const char*> {};

TEST_P(NameOfNoWord, isAcceptedInDefAndUse) {
    expectNameAccepted(GetParam());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, NameOfNoWord,
                         ::testing::Values("my arm", "left upper arm", "arm.001", "1st", "", "a\"b",
                                           "\"quoted\"", "it's", "a#b", "[0]", "+x", "-x", "a,b",
                                           "back\\slash", "curly {", "curly { brace", "tab\there",
                                           "NULL", "TRUE", "USE", "DEF", "SFBool", "two\nlines",
                                           "\xE6\x89\x8B \xE8\x85\x95"));

class ContainerOfTheWrongKind : public ::testing::TestWithParam<const char*> {};

TEST_P(ContainerOfTheWrongKind, leavesTheFieldAsItWasAndReadsOn) {
    expectFieldLeftOut(GetParam());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, ContainerOfTheWrongKind,
                         ::testing::Values("speed Group { }", "target [ Node { } ]"));

/// As OpenSG writes them.
class TextWithoutEscapes : public ::testing::TestWithParam<TextCase> {};

TEST_P(TextWithoutEscapes, isReadAsMeant) {
    expectTextRead(GetParam());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, TextWithoutEscapes,
                         ::testing::Values(TextCase{"\"say \"hi\" now\"", "say \"hi\" now"},
                                           TextCase{"\"\"hi\" he said\"", "\"hi\" he said"},
                                           TextCase{"\"he said \"hi\"\"", "he said \"hi\""},
                                           TextCase{"\"a 19\" rack\"", "a 19\" rack"},
                                           TextCase{"\"5\"\"", "5\""}));

} // namespace
