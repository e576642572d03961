// Damaged scene files through the commands that read records before they are loaded: a clear line
// and an exit code, never a crash.
#include "tools/program.h"
#include "tools/sceneText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

using namespace kv::test;
using ::testing::StartsWith;

namespace {

std::string dataFile(const std::string& name) {
    std::ifstream in(std::string(KV_TEST_DATA) + "/" + name, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::string animatedScene() {
    return sceneText(
        heldBlock("Walk", 0, 10), text(CurveText()),
        clipText("Dance", trackText(heldBlock("Jump", 0, 10), sequenceText("fanfare", "1", "2"),
                                    clipText("Inner", trackText(heldBlock("Turn", 0, 5))))));
}

class KvanimMalformed : public ::testing::Test {
  protected:
    /// Either refused in one line with nothing written, or read and answered.
    void expectAnswer(const std::string& name, const std::string& content) {
        program.write(name, content);
        for (const char* command : {"check", "fields", "convert -o out.osg"}) {
            const Outcome outcome = program.run(std::string(command) + " " + name);
            if (outcome.code == 1) {
                EXPECT_THAT(outcome.error, StartsWith("kvanim: " + name + ": ")) << command;
                EXPECT_EQ(lineCount(outcome.error), 1) << outcome.error;
                EXPECT_EQ(outcome.out, "") << command;
                ++refused;
            } else {
                EXPECT_TRUE(outcome.code == 0 || outcome.code == 3)
                    << command << " ended with " << outcome.code << ": " << outcome.error;
                ++answered;
            }
        }
    }

    /// Cuts the content short at `cuts` places.
    void cutShort(const std::string& name, const std::string& content, std::size_t cuts) {
        ASSERT_FALSE(content.empty());
        for (std::size_t i = 0; i < cuts; ++i)
            expectAnswer(name, content.substr(0, content.size() * i / cuts));
    }

    Program program;
    int refused = 0;
    int answered = 0;
};

} // namespace

TEST_F(KvanimMalformed, sceneFilesThatCannotBeRead) {
    const char* const broken[] = {
        "",
        "hello\n",
        "#OSG V1.0 \n",
        "#OSG V1.0 \nNode {\n    children [\n        Node {\n",
        "Node { travMask 12x }",
        "Node { ] }",
        "Node { attachments [ AnimationAttachment { curves [ AnimationCurve { ",
        "Node { attachments [ AnimationAttachment { curves [ AnimationCurve { controlPoints [ "
        "AnimationControlPoint { ControlPoint 1 } ] } ] } ] }",
        "Node { attachments [ AnimationAttachment { blocks [ AnimationBlock { Name \"open } ] } ] "
        "}",
    };
    for (const char* content : broken)
        expectAnswer("broken.osg", content);
    EXPECT_EQ(refused, 3 * static_cast<int>(std::size(broken)));
    EXPECT_EQ(program.fileCount(), 1) << "no output file may be left behind";
}

TEST_F(KvanimMalformed, textThatIsNoSceneIsRefusedByEveryCommand) {
    program.write("text.osg", "hello\n");
    for (const char* command : {"info", "dump", "play", "plot -o p.svg", "eval --frames 0:1"}) {
        const Outcome outcome = program.run(std::string(command) + " text.osg");
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_EQ(lineCount(outcome.error), 1) << outcome.error;
        EXPECT_THAT(outcome.error, StartsWith("kvanim: text.osg: is not a readable scene"));
    }
    EXPECT_EQ(program.fileCount(), 1) << "no output file may be left behind";
}

TEST_F(KvanimMalformed, aNodeBelowItself) {
    // OpenSG passes over the reference, the embedded scene graph refuses the file.
    expectAnswer("circle.osg", "DEF a Node { children [ USE a ] }");
}

TEST_F(KvanimMalformed, recordsOfTheWrongKindInTheLists) {
    expectAnswer("odd.osg",
                 "#OSG V1.0 \nNode { attachments [ AnimationAttachment { curves [ AnimationBlock { "
                 "} Node { } ] blocks [ AnimationClip { } AnimationBlock { curves [ "
                 "AnimationControlPoint { } ] } ] clips [ AnimationTrack { } AnimationClip { "
                 "subclips [ Node { } ] tracks [ AnimationTrack { clips [ AnimationBlock { } ] "
                 "sequences [ AnimationCurve { } ] } ] } ] } ] }\n");
}

TEST_F(KvanimMalformed, textCutShortAnywhere) {
    cutShort("cut.osg", animatedScene(), 16);
    EXPECT_EQ(answered, 0) << "no cut leaves the braces balanced";
}

TEST_F(KvanimMalformed, theScenesOfTheTestDataCutShortAnywhere) {
    cutShort("cut.osg", dataFile("cores.osg"), 6);
    cutShort("cut.osb", dataFile("cores.osb"), 6);
    EXPECT_GT(refused, 0);
}

TEST_F(KvanimMalformed, animatedBinaryScenesWithDamagedBytes) {
    program.write("scene.osg", animatedScene());
    // Through convert, which writes a scene without changing more than its animation.
    ASSERT_EQ(program.run("convert scene.osg -o scene.osb").code, 0);
    const std::string whole = program.read("scene.osb");
    ASSERT_GT(whole.size(), 200u);
    for (std::size_t at = 0; at < whole.size(); at += whole.size() / 12) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x5A);
        expectAnswer("damaged.osb", damaged);
    }
}
