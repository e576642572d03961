// Broken ASCII scenes: nothing comes back, the log has one line with file, line and reason, and no
// container is left behind. OpenSG hands out what stands before the damage, crashes over some of
// it, says no place or reason, and reads nothing more after it was given a directory.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGPointLight.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>
#include <sstream>

using namespace osg;

namespace {

typedef std::vector<std::string> Lines;

struct BrokenText {
    const char* name;
    const char* text;
    const char* line;
    const char* reason;
};

std::ostream& operator<<(std::ostream& stream, const BrokenText& broken) {
    return stream << broken.name;
}

class MalformedText : public ::testing::TestWithParam<BrokenText> {};

TEST_P(MalformedText, isRefusedInOneLine) {
    const std::size_t before = countContainers();
    LogLines log;
    EXPECT_EQ(readText(GetParam().text), NullFC);
    const Lines& lines = log.take();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find(GetParam().line), std::string::npos) << lines[0];
    EXPECT_NE(lines[0].find(GetParam().reason), std::string::npos) << lines[0];
    EXPECT_EQ(countContainers(), before);
}

const BrokenText kBrokenTexts[] = {
    {"empty", "", "stream", "empty"},
    {"onlyAHeader", "#OSG V1.0 \n", "line 2", "no node"},
    {"onlyAComment", "# nothing", "line 1", "no node"},
    {"onlyNoNodes", "FileItem { label \"x\" }\nStrange { }", "line 2", "no node"},
    {"noBrace", "Node", "line 1", "'{'"},
    {"missingBrace", "#OSG V1.0 \nNode {\n travMask 1\n", "line 4", "begins in line 2"},
    {"missingInnerBrace", "Node { children [ Node { ] }", "line 1", "']'"},
    {"missingBracket", "Node { children [ Node { }\n }", "line 2", "'}'"},
    {"missingBracketAtTheEnd", "Node { children [ Node { }", "line 1", "ends inside"},
    {"tooManyBraces", "Node { }\n}\n", "line 2", "'}'"},
    {"tooManyBrackets", "Node { ] }", "line 1", "']'"},
    {"numberAtTheTop", "5 Node { }", "line 1", "'5'"},
    {"textAtTheTop", "\"x\" Node { }", "line 1", "'\"'"},
    {"numberForAName", "Node { travMask 1 2 }", "line 1", "'2'"},
    {"noValue", "Node { travMask", "line 1", "ends inside"},
    {"badNumber", "Node {\n travMask 12x }", "line 2", "\"12x\" is no integer"},
    {"decimalInteger", "Node { travMask 1.5 }", "line 1", "\"1.5\" is no integer"},
    {"exponentInteger", "Node { travMask 1e3 }", "line 1", "\"1e3\" is no integer"},
    {"loneSign", "Node { travMask - }", "line 1", "\"-\" is no integer"},
    {"badFloat", "Node { volume 0 0 0 0 0 1.2.3 }", "line 1", "\"1.2.3\" is no number"},
    {"emptyHexadecimal", "Node { travMask 0x }", "line 1", "\"0x\" is no integer"},
    {"tooFewNumbers", "Node { volume 0 0 0 core Group { } }", "line 1", "a number is missing"},
    {"fiveNumbers", "Node { volume 0 0 0 0 1 }", "line 1", "a number is missing"},
    {"cutOffNumbers", "Transform { matrix 1 0 0", "line 1", "a number is missing"},
    {"openText", "Node { attachments [ Name { name \"abc } ] }", "line 1", "no closing quote"},
    {"openTextOfAnUnknownField", "Node { title \"abc }", "line 1", "no closing quote"},
    {"openListOfNumbers", "Node { core Geometry { indexMapping [ 1 2 ", "line 1", "ends inside"},
    {"listOfUnknownsInBraces", "Node { x [ 1 { } ] }", "line 1", "'{'"},
    {"nestedBrackets", "Node { x [ [ 1 ] ] }", "line 1", "'['"},
    {"defWithoutAnything", "DEF", "line 1", "DEF"},
    {"defWithoutType", "DEF a { }", "line 1", "DEF"},
    {"defWithoutBrace", "DEF a Node travMask 1", "line 1", "DEF"},
    {"useWithoutName", "Node { children [ USE ] }", "line 1", "USE"},
    {"useAtTheEnd", "Node { core USE", "line 1", "ends inside"},
    {"controlCharacter", "Node { \x01 }", "line 1", "code 1"},
    {"unfinishedProto", "PROTO a [ field SFInt32 x 1 \n", "line 2", "closing bracket"},
    {"crossedBrackets", "PROTO a [ { ] } { }", "line 1", "bracket"},
    {"routeToNowhere", "ROUTE a.b", "line 1", "TO"},
    {"ownChild", "DEF a Node {\n children [ USE a ] }", "line 2", "child of itself"},
    {"ownGrandchild", "DEF a Node { children [ Node { children [ USE a ] } ] }", "line 1",
     "child of itself"},
    {"ownAncestorByUse",
     "DEF a Node { children [ DEF b Node { } ] }\nDEF c Node { children [ USE a ] }\n"
     "Node { children [ USE c ] }\nNode {\n attachments [ FileSheet { target DEF d Node { "
     "children [ DEF e Node { } ] } } ]\n children [ USE d ] }\nNode { children [ DEF f Node { "
     "attachments [ FileSheet { target Node { children [ USE f ] } } ] children [ USE d USE f ] } "
     "] }",
     "line 7", "child of itself"},
};

INSTANTIATE_TEST_SUITE_P(Ascii, MalformedText, ::testing::ValuesIn(kBrokenTexts),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(AsciiMalformed, aByteOfZeroIsRefused) {
    LogLines log;
    EXPECT_EQ(readText(std::string("Node { \0 }", 10)), NullFC);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("code 0"), std::string::npos);
}

TEST(AsciiMalformed, theMessageNamesTheFile) {
    const TemporaryFile file("osg");
    writeContents(file.path(), "#OSG V1.0 \nNode {\n");
    LogLines log;
    EXPECT_EQ(SceneFileHandler::the().read(file.name()), NullFC);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("\"" + file.path() + "\", line 3"), std::string::npos);
}

TEST(AsciiMalformed, warningsAreNotToldOfAFileThatIsRefused) {
    LogLines log;
    EXPECT_EQ(readText("Strange { a 1 }\nNode { colour 5"), NullFC);
    EXPECT_EQ(log.take().size(), 1u);
}

TEST(AsciiMalformed, aMissingFileAndADirectoryAreRefused) {
    LogLines log;
    const TemporaryFile missing("osg");
    EXPECT_EQ(SceneFileHandler::the().read(missing.name()), NullFC);
    EXPECT_EQ(SceneFileHandler::the().read((std::string(KV_TEST_DATA) + "/../data").c_str()),
              NullFC);
    EXPECT_EQ(SceneFileHandler::the().read("/."), NullFC);
    EXPECT_EQ(SceneFileHandler::the().read(static_cast<const char*>(nullptr)), NullFC);
    EXPECT_EQ(SceneFileHandler::the().read(""), NullFC);
    EXPECT_EQ(log.take().size(), 5u);
}

TEST(AsciiMalformed, aDirectoryCalledLikeASceneIsRefused) {
    LogLines log;
    const TemporaryFile directory("osg");
    ASSERT_EQ(0, std::system(("mkdir " + directory.path()).c_str()));
    EXPECT_EQ(SceneFileHandler::the().read(directory.name()), NullFC);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("directory"), std::string::npos);
}

TEST(AsciiMalformed, unknownFormatsAreRefused) {
    LogLines log;
    for (const char* name : {"scene.obj", "scene", "scene.osg.zip", "osgx", ".gz", "scene.gz"}) {
        std::istringstream stream("Node { }");
        EXPECT_EQ(SceneFileHandler::the().read(stream, name), NullFC) << name;
    }
    EXPECT_EQ(log.take().size(), 6u);
}

/// A text with circles of references, shared containers and containers of unknown types.
const char* const kTangle =
    "#OSG V1.0 \n"
    "DEF a Node { attachments [ DEF s FileSheet { target USE a items [ DEF i FileItem { next USE i "
    "}\n"
    " USE i FileItem { next USE i } ] anything USE s } Strange { x DEF u Node { } y FileItem { } } "
    "]\n"
    " children [ USE u Node { attachments [ USE s ] core DEF l PointLight { beacon USE a } }\n"
    " Node { core USE l } Group { } ] core Transform { } }\n"
    "Node { attachments [ DEF t FileSheet { target Node { attachments [ USE t USE s ] } } ] }\n"
    "DEF stray FileItem { next USE i }\n";

/// Opens the circles of references of a scene out of kTangle, and lets it go.
void untie(NodePtr root, UInt32 firstId) {
    addRefCP(root);
    const UInt32 end = getContainerId(root) + 1000;
    for (UInt32 id = firstId; id < end; ++id) {
        const FieldContainerPtr container = FieldContainerFactory::the()->getContainer(id);
        if (const FileSheetPtr sheet = FileSheetPtr::dcast(container)) {
            sheet->setTarget(NullFC);
            sheet->setAnything(NullFC);
        } else if (const FileItemPtr item = FileItemPtr::dcast(container)) {
            item->setFollower(NullFC);
        } else if (const PointLightPtr light = PointLightPtr::dcast(container)) {
            light->setBeacon(NullFC);
        }
    }
    subRefCP(root);
}

TEST(AsciiMalformed, textCutOffAnywhereIsRefusedWithoutALeak) {
    const std::string text(kTangle);
    const std::size_t before = countContainers();
    UInt32 scenes = 0;
    for (std::size_t length = 0; length <= text.size() + 1; ++length) {
        // The last one is the whole text and a brace too many.
        const std::string part = length > text.size() ? text + "}" : text.substr(0, length);
        NodePtr first = Node::create();
        const UInt32 firstId = getContainerId(first);
        addRefCP(first);
        subRefCP(first);
        LogLines log;
        const NodePtr root = readText(part);
        if (root == NullFC) {
            ASSERT_EQ(log.take().size(), 1u) << length;
            continue;
        }
        // Behind a closing brace at the top the text is a scene.
        ++scenes;
        untie(root, firstId);
    }
    EXPECT_GT(scenes, 0u);
    EXPECT_LT(scenes, 12u);
    EXPECT_EQ(countContainers(), before);
}

TEST(AsciiMalformed, theSceneOfOpenSG18CutOffAnywhereIsRefused) {
    const std::string text = testData("cores.osg");
    const std::size_t before = countContainers();
    const std::size_t end = text.rfind('}') + 1;
    for (std::size_t length = 0; length < end; length += 97) {
        LogLines log;
        ASSERT_EQ(readText(text.substr(0, length)), NullFC) << length;
        ASSERT_EQ(log.take().size(), 1u) << length;
    }
    LogLines log;
    EXPECT_EQ(readText(text.substr(0, end - 1)), NullFC);
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_EQ(countContainers(), before);
}

TEST(AsciiMalformed, damagedCharactersNeverHarm) {
    const std::string text = testData("cores.osg");
    const std::size_t before = countContainers();
    const char damages[] = {'{', '}', '[', ']', '"', '#', '\0', 'x', '9', ' ', '\\', '\n', '-'};
    unsigned number = 0;
    for (std::size_t place = 0; place < text.size(); place += 211) {
        std::string damaged = text;
        damaged[place] = damages[number++ % sizeof damages];
        LogLines log;
        const Scene scene(readText(damaged));
        if (scene.isNull()) {
            ASSERT_EQ(log.take().size(), 1u) << place;
        }
    }
    EXPECT_EQ(countContainers(), before);
}

} // namespace
