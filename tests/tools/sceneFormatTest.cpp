// The formats of scene files that kvanim takes, told by the extension, and the one it recommends.
#include "tools/program.h"
#include "tools/sceneText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace kv::test;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

constexpr char kRecommended[] = "recommended: .osb";

/// A scene with one curve of that many keys.
std::string sceneWithKeys(int count) {
    CurveText curve;
    curve.keys.clear();
    for (int i = 0; i < count; ++i)
        curve.keys += "AnimationControlPoint{ControlPoint " + std::to_string(i) + " 0}\n";
    return sceneText(blockText("Walk", text(curve)));
}

std::string startOf(const std::string& content) {
    if (content.compare(0, 2, "\x1f\x8b") == 0) return "packed";
    if (content.compare(0, 4, "#OSG") == 0) return "text";
    return content.find("OpenSG binary") < 16 ? "binary" : "other";
}

class KvanimFormats : public ::testing::Test {
  protected:
    void SetUp() override { program.writeModel("walk.bvh"); }

    Program program;
};

} // namespace

TEST_F(KvanimFormats, everyExtensionIsWrittenAndReadBackAlike) {
    const struct {
        const char* extension;
        const char* start;
        bool isText;
    } formats[] = {{"osg", "text", true},         {"osb", "binary", false},
                   {"osg.gz", "packed", true},    {"osb.gz", "packed", false},
                   {"OSG", "text", true},         {"Osb", "binary", false},
                   {"tar.osg.gz", "packed", true}};
    // An installed OpenSG keeps seven digits in text: text is compared with text.
    std::string firstText;
    std::string firstBinary;
    for (const auto& format : formats) {
        SCOPED_TRACE(format.extension);
        const std::string name = std::string("walk.") + format.extension;
        ASSERT_EQ(program.run("import walk.bvh -o " + name).code, 0);
        EXPECT_EQ(startOf(program.read(name)), format.start);
        const Outcome dump = program.run("dump " + name);
        ASSERT_EQ(dump.code, 0) << dump.error;
        std::string& first = format.isText ? firstText : firstBinary;
        if (first.empty()) first = dump.out;
        EXPECT_EQ(dump.out, first);
    }
}

TEST_F(KvanimFormats, everyExtensionIsConverted) {
    ASSERT_EQ(program.run("import walk.bvh -o walk.osg").code, 0);
    std::string from = "walk.osg";
    for (const char* to : {"a.osb", "b.osg.gz", "c.osb.gz", "d.osg"}) {
        const Outcome outcome = program.run("convert " + from + " -o " + to);
        ASSERT_EQ(outcome.code, 0) << to << ": " << outcome.error;
        EXPECT_THAT(program.run(std::string("info ") + to).out, HasSubstr("4 nodes")) << to;
        from = to;
    }
}

TEST_F(KvanimFormats, otherExtensionsAreRefusedBeforeTheWork) {
    ASSERT_EQ(program.run("import walk.bvh -o walk.osg").code, 0);
    const int files = program.fileCount();
    for (const char* name :
         {"walk.txt", "walk", "walk.gz", "walk.osg.txt", "osg", "walk.osg.gz.gz"}) {
        for (const char* command : {"import walk.bvh", "convert walk.osg"}) {
            const Outcome outcome = program.run(std::string(command) + " -o " + name);
            EXPECT_EQ(outcome.code, 1) << command << name;
            EXPECT_EQ(lineCount(outcome.error), 1) << outcome.error;
            EXPECT_THAT(outcome.error, HasSubstr(std::string(name) + ": scene files end in .osg"));
        }
    }
    EXPECT_EQ(program.fileCount(), files);
}

TEST_F(KvanimFormats, theNameOfAFolderSaysNothing) {
    std::filesystem::create_directory(program.path("all.osg"));
    ASSERT_EQ(program.run("import walk.bvh -o walk.osb").code, 0);
    ASSERT_EQ(program.run("import walk.bvh -o all.osg/walk.osb").code, 0);
    // Text has a group above the scene that is taken off again; a binary scene has none.
    EXPECT_EQ(program.run("dump walk.osb").out, program.run("dump all.osg/walk.osb").out);
}

TEST_F(KvanimFormats, theBinaryFormatIsRecommendedAboveAHundredThousandKeys) {
    program.write("few.osg", sceneWithKeys(100000));
    program.write("many.osg", sceneWithKeys(100001));
    EXPECT_THAT(program.run("info few.osg").out, Not(HasSubstr(kRecommended)));
    EXPECT_THAT(program.run("info many.osg").out, HasSubstr(kRecommended));

    // Converted, every key becomes a point; what counts is the format of what is written.
    EXPECT_THAT(program.run("convert few.osg -o out.osg").out, Not(HasSubstr(kRecommended)));
    EXPECT_THAT(program.run("convert many.osg -o out.osg.gz").out,
                HasSubstr(std::string(kRecommended) + " for a scene of 100001 keys"));
    EXPECT_THAT(program.run("convert many.osg -o out.osb").out, Not(HasSubstr(kRecommended)));
}

TEST_F(KvanimFormats, theHelpNamesThem) {
    for (const char* command : {"", "import ", "convert "}) {
        const std::string help = program.run(std::string(command) + "--help").out;
        for (const char* word : {".osg", ".osb", ".gz", "100,000"})
            EXPECT_THAT(help, HasSubstr(word)) << command;
    }
}
