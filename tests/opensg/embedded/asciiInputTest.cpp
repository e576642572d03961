// What the reader of ASCII scenes accepts, and what it makes of it: the language itself, all types
// of values, and everything that OpenSG writes although its own reader stumbles over it.

#include "opensg/embedded/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace osg;

namespace {

typedef std::vector<std::string> Lines;

/// A node that carries a FileSheet with these fields.
std::string sheetNode(const std::string& fields) {
    return "Node { attachments [ FileSheet { " + fields + " } ] }\n";
}

FileSheetPtr sheetOf(const NodePtr& node) {
    if (node == NullFC) return NullFC;
    return FileSheetPtr::dcast(node->findAttachment(FileSheet::getClassType()));
}

/// The FileValues of a node that is read with these fields; the scene stays in `scene`.
class Values {
  public:
    explicit Values(const std::string& fields)
        : _scene(readText("Node { attachments [ FileValues { " + fields + " } ] }")) {}

    FileValuesPtr operator->() const {
        if (_scene.isNull()) throw std::runtime_error("the text was refused");
        return _scene.attachment<FileValues>(_scene.at({0}));
    }
    bool isRefused() const { return _scene.isNull(); }

  private:
    Scene _scene;
};

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
    LogLines log;
    EXPECT_FALSE(Scene(readText("#OSG V1.0\nNode { }")).isNull());
    EXPECT_FALSE(Scene(readText("#OSG V1.0 \r\nNode { }\r\n")).isNull());
    EXPECT_EQ(log.take(), Lines());
}

TEST(AsciiInput, anotherHeaderIsReadWithOneWarning) {
    LogLines log;
    const Scene scene(readText("#VRML V2.0 utf8\nNode { }"));
    EXPECT_FALSE(scene.isNull());
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(AsciiInput, aByteOrderMarkIsPassedOver) {
    EXPECT_FALSE(Scene(readText("\xEF\xBB\xBF#OSG V1.0 \nNode { }")).isNull());
}

TEST(AsciiInput, blanksTabsLineEndsAndCommasSeparateWords) {
    const Scene scene(readText("Node,{\ttravMask\r\n5,children[,Node{},\t,Node{}],}"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getTravMask(), 5u);
    EXPECT_EQ(scene.at({0})->getNChildren(), 2u);
}

TEST(AsciiInput, commentsReachToTheEndOfTheirLine) {
    const Scene scene(readText("Node # {\n{ # travMask 1\n travMask 5# 6\n} # }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getTravMask(), 5u);
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

TEST(AsciiInput, aContainerAtTheTopMayBeUsedLater) {
    LogLines log;
    const Scene scene(readText("DEF i FileItem { label \"x\" }\n" + sheetNode("items [ USE i ]")));
    ASSERT_FALSE(scene.isNull());
    ASSERT_EQ(sheetOf(scene.at({0}))->getItems().size(), 1u);
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems(0)->getLabel(), "x");
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems(0).getRefCount(), 1);
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

TEST(AsciiInput, useOfAnUnknownNameIsIgnoredWithOneWarning) {
    LogLines log;
    const Scene scene(readText("DEF a Node { children [ USE b USE b Node { } ] }\n" +
                               sheetNode("target USE b speed 3") + "DEF b Node { }\n"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getNChildren(), 1u);
    EXPECT_EQ(sheetOf(scene.at({1}))->getTarget(), NullFC);
    EXPECT_EQ(sheetOf(scene.at({1}))->getSpeed(), 3.f);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("line 1"), std::string::npos);
    EXPECT_NE(log.take()[0].find("\"b\""), std::string::npos);
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

TEST(AsciiInput, aNodeMayBeDefinedInsideOneThatIsWrittenBelowIt) {
    // What a writer makes of a node whose attachment points at the node's own parent.
    Scene scene(readText("DEF p Node { attachments [ FileSheet { target DEF q Node { children "
                         "[ USE p ] } } ] children [ Node { } ] }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(nameOf(scene.at({0})), "p");
    sheetOf(scene.at({0}))->setTarget(NullFC);
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

// --- names that are none -----------------------------------------------------------------------

/// Two sheets that share a node, as OpenSG writes them for a node of any name.
std::string sharedUnder(const std::string& name) {
    return "#OSG V1.0 \nNode {\n    attachments [ \n        FileSheet {\n            target\n"
           "                DEF " +
           name +
           " Node {\n                    travMask 9\n                }\n            speed 2\n"
           "        }\n     ] \n    children [\n        USE " +
           name + "\n        Node {\n            travMask 8\n        }\n    ]\n}\n";
}

class OddName : public ::testing::TestWithParam<const char*> {};

TEST_P(OddName, isAcceptedInDefAndUse) {
    LogLines log;
    const Scene scene(readText(sharedUnder(GetParam())));
    ASSERT_FALSE(scene.isNull()) << log.take()[0];
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    ASSERT_NE(sheet->getTarget(), NullFC);
    EXPECT_EQ(sheet->getTarget()->getTravMask(), 9u);
    EXPECT_EQ(sheet->getSpeed(), 2.f);
    ASSERT_EQ(scene.at({0})->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0, 0}), sheet->getTarget());
    EXPECT_EQ(scene.at({0, 1})->getTravMask(), 8u);
    // Blanks around a name that is one word cannot be told from those that separate words.
    std::string expected = GetParam();
    if (expected == " leading" || expected == "trailing ")
        expected = expected == " leading" ? "leading" : "trailing";
    EXPECT_EQ(nameOf(scene.at({0, 0})), expected.empty() ? "(none)" : expected);
    EXPECT_EQ(log.take(), Lines());
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, OddName,
                         ::testing::Values("arm", "my arm", "left upper arm", "arm.001", "1st", "",
                                           "a\"b", "\"quoted\"", "it's", "a#b", "[0]", "+x", "-x",
                                           "a,b", "back\\slash", "curly {", "curly { brace",
                                           " leading", "trailing ", "tab\there", "Node", "NULL",
                                           "TRUE", "USE", "DEF", "SFBool", "two\nlines",
                                           "\xC3\xA4rm", "\xE6\x89\x8B \xE8\x85\x95"));

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
    const Scene scene(readText(sheetNode("items [ FileItem { label a secret 7 } ]")));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(sheetOf(scene.at({0}))->getItems(0)->getSecret(), 0);
    EXPECT_EQ(log.take().size(), 1u);
}

class WrongKind : public ::testing::TestWithParam<const char*> {};

TEST_P(WrongKind, leavesTheFieldAsItWasAndReadsOn) {
    LogLines log;
    const Scene scene(readText(sheetNode(GetParam() + std::string("\n title \"t\"")) + "Node { }"));
    ASSERT_FALSE(scene.isNull()) << log.take()[0];
    EXPECT_EQ(scene->getNChildren(), 2u);
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    EXPECT_EQ(sheet->getSpeed(), 1.f);
    EXPECT_EQ(sheet->getTitle(), "t");
    EXPECT_EQ(sheet->getItems().size(), 0u);
    EXPECT_EQ(log.take().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(AsciiInput, WrongKind,
                         ::testing::Values("speed \"x\"", "speed fast", "speed [ 1 2 ]",
                                           "speed Group { }", "speed NULL", "target 5",
                                           "target \"x\"", "target [ Node { } ]", "items 3",
                                           "items \"x\"", "internal 1", "internal \"TRUE\""));

TEST(AsciiInput, aListWithAnElementOfTheWrongKindIsLeftEmpty) {
    LogLines log;
    const Values values("real32s [ 1 2 three 4 ] string \"s\"");
    EXPECT_EQ(values->getReal32s().size(), 0u);
    EXPECT_EQ(values->getString(), "s");
    EXPECT_EQ(log.take().size(), 1u);
}

// --- values ------------------------------------------------------------------------------------

TEST(AsciiInput, integersOfEveryWidth) {
    const Values values("int8 -128 uint8 255 int16 -32768 uint16 65535 int32 -2147483648 "
                        "uint32 4294967295 int64 -9223372036854775808 "
                        "uint64 18446744073709551615 glenum 4609 mask 9223372036854775809");
    EXPECT_EQ(values->getInt8(), -128);
    EXPECT_EQ(values->getUInt8(), 255);
    EXPECT_EQ(values->getInt16(), -32768);
    EXPECT_EQ(values->getUInt16(), 65535);
    EXPECT_EQ(values->getInt32(), (std::numeric_limits<Int32>::min)());
    EXPECT_EQ(values->getUInt32(), 4294967295u);
    EXPECT_EQ(values->getInt64(), (std::numeric_limits<Int64>::min)());
    EXPECT_EQ(values->getUInt64(), 18446744073709551615ull);
    EXPECT_EQ(values->getGLenum(), 4609u);
    EXPECT_EQ(values->getMask(), 9223372036854775809ull);
}

TEST(AsciiInput, integersAreDecimalHexadecimalOrOctalAndWrap) {
    const Values values("int32 0x1F uint32 -1 int8 300 uint8 +7 int16 010 uint16 08");
    EXPECT_EQ(values->getInt32(), 31);
    EXPECT_EQ(values->getUInt32(), 4294967295u);
    EXPECT_EQ(values->getInt8(), 44);
    EXPECT_EQ(values->getUInt8(), 7);
    EXPECT_EQ(values->getInt16(), 8);
    EXPECT_EQ(values->getUInt16(), 8);
}

TEST(AsciiInput, floatsInAllForms) {
    const Values values("real32s [ 1 -2.5 +3 4. .5 1e3 -1E-2 0x10 -0 1.00000001e+00 ]");
    const float expected[] = {1, -2.5f, 3, 4, 0.5f, 1000, -0.01f, 16, -0.f, 1};
    ASSERT_EQ(values->getReal32s().size(), 10u);
    for (UInt32 i = 0; i < 10; ++i)
        EXPECT_EQ(values->getReal32s(i), expected[i]) << i;
    EXPECT_TRUE(std::signbit(values->getReal32s(8)));
}

TEST(AsciiInput, floatsAreTheNearestOfTheText) {
    const Values values("real32s [ 1.57079637 0.1 16777217 1e-45 1.4e-45 3.4028235e38 ] "
                        "real64 0.1000000000000000055511151231257827 time 1e-310");
    const float expected[] = {0x1.921fb6p+0f, 0x1.99999ap-4f, 0x1p24f,
                              0x1p-149f,      0x1p-149f,      0x1.fffffep127f};
    for (UInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(values->getReal32s(i), expected[i]) << i;
    EXPECT_EQ(values->getReal64(), 0.1);
    EXPECT_EQ(values->getTime(), 1e-310);
}

TEST(AsciiInput, floatsOutsideTheRangeAreInfiniteOrZero) {
    const Values values("real32s [ 1e39 -1e39 1e-60 -1e-60 1e999999999999999999999 "
                        "1e-999999999999999999999 0.0000e99999 ]");
    const float inf = std::numeric_limits<float>::infinity();
    const float expected[] = {inf, -inf, 0, -0.f, inf, 0, 0};
    ASSERT_EQ(values->getReal32s().size(), 7u);
    for (UInt32 i = 0; i < 7; ++i)
        EXPECT_EQ(values->getReal32s(i), expected[i]) << i;
}

TEST(AsciiInput, numbersThatAreNotFiniteAreRead) {
    const Values values("real32s [ nan inf -inf +inf NaN -nan INF Infinity ] vec2f nan -inf "
                        "real64 -inf");
    ASSERT_EQ(values->getReal32s().size(), 8u);
    for (const UInt32 i : {0u, 4u, 5u})
        EXPECT_TRUE(std::isnan(values->getReal32s(i))) << i;
    for (const UInt32 i : {1u, 3u, 6u, 7u})
        EXPECT_EQ(values->getReal32s(i), std::numeric_limits<float>::infinity()) << i;
    EXPECT_EQ(values->getReal32s(2), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(values->getVec2f()[0]));
    EXPECT_EQ(values->getReal64(), -std::numeric_limits<double>::infinity());
}

TEST(AsciiInput, boolsInAnyLetterCase) {
    const Values values("bool true bools [ TRUE, FALSE tRuE\n false ]");
    EXPECT_TRUE(values->getBool());
    const bool expected[] = {true, false, true, false};
    ASSERT_EQ(values->getBools().size(), 4u);
    for (UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(values->getBools()[i], expected[i]) << i;
}

TEST(AsciiInput, fieldsThatOpenSGsReaderHasNoTokenFor) {
    const Values values("int64 -5 uint64 6 real64 7.5 pnt2f 8 9 vec3s -1 -2 -3 bools [ TRUE ] "
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
    EXPECT_EQ(values->getMatrices(0)[3][0], 4.f);
    EXPECT_EQ(values->getMatrices(0)[0][3], 13.f);
    EXPECT_EQ(values->getMask(), 10u);
    EXPECT_EQ(values->getVec4d()[3], 4.);
    EXPECT_EQ(values->getString(), "read");
}

TEST(AsciiInput, vectorsColoursAndVolumes) {
    const Values values("vec3fs [ 1 2 3, 4 5 6\n 7 8 9 ] color3f 0.1 0.2 0.3 color4ub 1 2 255 300 "
                        "colors [ 1 0 0 1 ] volume 1 2 3 4 5 6");
    ASSERT_EQ(values->getVec3fs().size(), 3u);
    EXPECT_EQ(values->getVec3fs(2), Vec3f(7, 8, 9));
    EXPECT_EQ(values->getColor3f(), Color3f(0.1f, 0.2f, 0.3f));
    EXPECT_EQ(values->getColor4ub()[2], 255);
    EXPECT_EQ(values->getColor4ub()[3], 44);
    EXPECT_EQ(values->getColors().size(), 1u);
    Pnt3f low, high;
    values->getVolume().getBounds(low, high);
    EXPECT_EQ(low, Pnt3f(1, 2, 3));
    EXPECT_EQ(high, Pnt3f(4, 5, 6));
    const Values sphere("volume 1 2 3 4 bool TRUE");
    EXPECT_EQ(sphere->getVolume().getType(), DynamicVolume::SPHERE_VOLUME);
    EXPECT_EQ(sphere->getVolume().getRadius(), 4.f);
    EXPECT_TRUE(sphere->getBool());
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

struct TextCase {
    const char* written;
    const char* meant;
};

class TextInput : public ::testing::TestWithParam<TextCase> {};

TEST_P(TextInput, isReadAsMeant) {
    const Values values(std::string("string ") + GetParam().written + "\nint32 7\n");
    ASSERT_FALSE(values.isRefused());
    EXPECT_EQ(values->getString(), GetParam().meant);
    EXPECT_EQ(values->getInt32(), 7);
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
        TextCase{"\"a\" strings \"b\"", "a"},
        // Written without escapes, as OpenSG does:
        TextCase{"\"say \"hi\" now\"", "say \"hi\" now"},
        TextCase{"\"\"hi\" he said\"", "\"hi\" he said"},
        TextCase{"\"he said \"hi\"\"", "he said \"hi\""},
        TextCase{"\"a 19\" rack\"", "a 19\" rack"}, TextCase{"\"5\"\"", "5\""}));

TEST(AsciiInput, listsOfTexts) {
    const Values values("strings [ \"a\", \"b c\" \"d\\\"e\",\n \"\" word \"x]\" ]");
    const char* const expected[] = {"a", "b c", "d\"e", "", "word", "x]"};
    ASSERT_EQ(values->getStrings().size(), 6u);
    for (UInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(values->getStrings(i), expected[i]) << i;
}

TEST(AsciiInput, listsOfTextsWrittenWithoutEscapes) {
    const Values values("strings [\n \"say \"hi\"\", \"b\",\n \"19\"x\"\n ]");
    const char* const expected[] = {"say \"hi\"", "b", "19\"x"};
    ASSERT_EQ(values->getStrings().size(), 3u);
    for (UInt32 i = 0; i < 3; ++i)
        EXPECT_EQ(values->getStrings(i), expected[i]) << i;
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

} // namespace
