// kvanim as its users meet it: what it prints, what it writes, and how it refuses bad input.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <sstream>

using kv::test::lineCount;
using kv::test::Outcome;
using kv::test::Program;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

namespace {

/// One clear line on standard error, exit code 1.
void expectRefused(const Outcome& outcome, const std::string& file, const std::string& reason) {
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(lineCount(outcome.error), 1) << outcome.error;
    EXPECT_THAT(outcome.error, StartsWith("kvanim: "));
    EXPECT_THAT(outcome.error, HasSubstr(file));
    EXPECT_THAT(outcome.error, HasSubstr(reason));
}

/// A scene that was imported from the small model.
class WithScene : public ::testing::Test {
  protected:
    void SetUp() override {
        program.writeModel("walk.bvh");
        imported = program.run("import walk.bvh -o walk.osg");
        ASSERT_EQ(imported.code, 0) << imported.error;
    }

    std::vector<std::vector<std::string>> rows(const std::string& text) const {
        std::vector<std::vector<std::string>> table;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            table.emplace_back();
            std::istringstream cells(line);
            for (std::string cell; std::getline(cells, cell, ',');)
                table.back().push_back(cell);
        }
        return table;
    }

    Program program;
    Outcome imported;
};

} // namespace

TEST(KvanimUsage, everySubcommandHasHelpWithAnExample) {
    const Program program;
    for (const char* command :
         {"import", "info", "dump", "eval", "play", "plot", "check", "fields", "convert"}) {
        const Outcome outcome = program.run(std::string(command) + " --help");
        EXPECT_EQ(outcome.code, 0) << command;
        EXPECT_THAT(outcome.out, HasSubstr("Example: kvanim " + std::string(command))) << command;
    }
}

TEST(KvanimUsage, badUsageIsExitCodeTwo) {
    const Program program;
    EXPECT_EQ(program.run("").code, 2);
    EXPECT_EQ(program.run("juggle").code, 2);
    EXPECT_EQ(program.run("info").code, 2);
    EXPECT_EQ(program.run("info a.osg --no-such-option").code, 2);
    EXPECT_EQ(program.run("import a.bvh").code, 2) << "an output file is needed";
    EXPECT_EQ(program.run("import a.bvh -o b.osg --fps 0").code, 2);
    EXPECT_EQ(program.run("play a.osg --fps -1").code, 2);
    EXPECT_EQ(program.run("play a.osg --block b --clip c").code, 2);
    EXPECT_EQ(program.run("dump a.osg --frames 1,x").code, 2);
    for (const char* frames :
         {"5", "5:2", "1:2:0", "1:2:-1", "a:b", "1:2:3:4", "0:1e9:1e-9", "nan:1"})
        EXPECT_EQ(program.run(std::string("eval a.osg --frames ") + frames).code, 2) << frames;
}

TEST(KvanimBadInput, sceneFilesThatCannotBeRead) {
    const Program program;
    program.write("empty.osg", "");
    program.write("truncated.osg", "#OSG V1.0 \nNode {\n    children [\n        Node {\n");
    for (const char* command : {"info", "dump", "play", "plot -o p.svg", "eval --frames 0:1",
                                "check", "fields", "convert -o c.osg"}) {
        const std::string start = std::string(command) + " ";
        expectRefused(program.run(start + "missing.osg"), "missing.osg", "no such file");
        expectRefused(program.run(start + "."), ".", "directory");
        expectRefused(program.run(start + "empty.osg"), "empty.osg", "not a readable scene");
        expectRefused(program.run(start + "truncated.osg"), "truncated.osg", "ine ");
    }
    EXPECT_EQ(program.fileCount(), 2) << "no output file may be left behind";
}

TEST(KvanimBadInput, modelsThatCannotBeImported) {
    const Program program;
    program.write("broken.bvh", "HIERARCHY\nROOT\n");
    program.write("plain.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    program.writeModel("walk.bvh");
    expectRefused(program.run("import missing.bvh -o s.osg"), "missing.bvh", "cannot be read");
    expectRefused(program.run("import broken.bvh -o s.osg"), "broken.bvh", "cannot be read");
    expectRefused(program.run("import plain.obj -o s.osg"), "plain.obj", "no animation");
    expectRefused(program.run("import . -o s.osg"), ".", "cannot be read");
    expectRefused(program.run("import walk.bvh --animation Run -o s.osg"), "walk.bvh", "\"Run\"");
    EXPECT_FALSE(program.exists("s.osg"));
    EXPECT_EQ(program.fileCount(), 3) << "no output file may be left behind";
}

TEST_F(WithScene, outputThatCannotBeWrittenIsRefusedAndLeavesNothing) {
    const int files = program.fileCount();
    expectRefused(program.run("import walk.bvh -o no/such/folder.osg"), "folder.osg",
                  "does not exist");
    expectRefused(program.run("import walk.bvh -o ."), ".", "directory");
    expectRefused(program.run("plot walk.osg -o picture.gif"), "picture.gif", ".svg or .png");
    expectRefused(program.run("plot walk.osg -o no/p.svg"), "p.svg", "does not exist");
    expectRefused(program.run("eval walk.osg --frames 0:1 -o no/e.csv"), "e.csv", "does not exist");
    EXPECT_EQ(program.fileCount(), files);
}

TEST_F(WithScene, aSaveThatFailsLeavesTheOldFileAsItWas) {
    for (const std::string name : {"old.osg", "old.osb", "old.osg.gz", "old.osb.gz"}) {
        program.write(name, "old");
        const int files = program.fileCount();
        // Files of more than one block cannot be written: the disk is full, as far as the program
        // knows.
        const Outcome outcome =
            program.run("import walk.bvh -o " + name, "trap '' XFSZ; ulimit -f 1;");
        EXPECT_EQ(outcome.code, 1) << outcome.out;
        EXPECT_THAT(outcome.error, HasSubstr(name));
        EXPECT_EQ(program.read(name), "old");
        EXPECT_EQ(program.fileCount(), files);
    }
}

TEST_F(WithScene, namesThatTheSceneLacksAreRefusedWithWhatThereIs) {
    expectRefused(program.run("eval walk.osg --frames 0:1 --node Hip"), "walk.osg", "Hips");
    expectRefused(program.run("eval walk.osg --frames 0:1 --block Hip"), "walk.osg", "Knee");
    expectRefused(program.run("eval walk.osg --frames 0:1 --attribute rotate"), "walk.osg",
                  "rotateX");
    expectRefused(program.run("play walk.osg --block Hip"), "walk.osg", "no block");
    expectRefused(program.run("play walk.osg --clip Dance"), "walk.osg", "no clip");
    expectRefused(program.run("plot walk.osg -o p.svg --node Hip"), "walk.osg", "no node");
    expectRefused(program.run("plot walk.osg -o p.svg --clip Dance"), "walk.osg", "no clip");
    EXPECT_FALSE(program.exists("p.svg"));
}

TEST_F(WithScene, importReportsCountsRateAndDeviation) {
    // Two joints are animated (the end site is not): nine curves each. Knee turns about Z, Hips
    // about X and moves along X; every other channel is constant and keeps two keys.
    EXPECT_THAT(imported.out, HasSubstr("2 animated"));
    EXPECT_THAT(imported.out, HasSubstr("18 curves"));
    EXPECT_THAT(imported.out, HasSubstr("100 frames a second"));
    EXPECT_THAT(imported.out, HasSubstr("kvanim play walk.osg --fps 100"));
    std::istringstream lines(imported.out);
    int channels = 0;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string channel;
        double distance = NAN;
        if (line.rfind("  ", 0) != 0 || !(words >> channel >> distance)) continue;
        ++channels;
        EXPECT_LT(distance, 2e-5) << channel;
    }
    EXPECT_EQ(channels, 9);
}

TEST_F(WithScene, framesFollowTheRateThatIsAskedFor) {
    ASSERT_EQ(program.run("import walk.bvh --fps 50 -o half.osg").code, 0);
    const Json json = Json::parse(program.run("info half.osg --json").out);
    EXPECT_EQ(json["range"]["start"], 0.0);
    EXPECT_NEAR(json["range"]["end"].get<double>(), 1.5, 1e-6); // three hundredths at 50 a second
}

TEST_F(WithScene, infoListsBlocksCurvesKeysRangesAndFlags) {
    const Outcome text = program.run("info walk.osg");
    EXPECT_EQ(text.code, 0);
    EXPECT_THAT(text.out, HasSubstr("block \"Knee\" on Knee: 9 curves, frames 0 to 3"));
    EXPECT_THAT(text.out, HasSubstr("rotateZ: 4 keys, frames 0 to 3"));

    const Json json = Json::parse(program.run("info walk.osg --json").out);
    EXPECT_EQ(json["blocks"], 2);
    EXPECT_EQ(json["curves"], 18);
    const Json& hips = json["sceneBlocks"][0];
    EXPECT_EQ(hips["name"], "Hips");
    EXPECT_EQ(hips["active"], true);
    EXPECT_EQ(hips["repeat"], false);
    EXPECT_EQ(hips["curves"][0]["attribute"], "translateX");
    EXPECT_EQ(hips["curves"][0]["keys"], 4);
    EXPECT_EQ(hips["curves"][1]["keys"], 2) << "a constant channel keeps two keys";
    EXPECT_EQ(hips["curves"][0]["field"]["of"], "translation");
}

TEST_F(WithScene, evalPrintsARowAFrameAndAColumnACurve) {
    const Outcome outcome =
        program.run("eval walk.osg --frames 0:3:1 --node Hips --attribute translateX");
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(outcome.out, "frame,Hips.translateX\n0,0\n1,1\n2,2\n3,4\n");
}

TEST_F(WithScene, anglesDoNotJumpByAWholeTurn) {
    const auto table =
        rows(program.run("eval walk.osg --frames 0:3:1 --node Knee --attribute rotateZ").out);
    ASSERT_EQ(table.size(), 5u);
    const double expected[] = {170.0, 179.0, 188.0, 200.0};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(std::stod(table[i + 1][1]), expected[i], 1e-3);
}

TEST_F(WithScene, valuesRunStraightFromKeyToKey) {
    const auto table =
        rows(program.run("eval walk.osg --frames 2:3:0.25 --node Hips --attribute translateX").out);
    ASSERT_EQ(table.size(), 6u);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(std::stod(table[i + 1][1]), 2.0 + 0.5 * static_cast<double>(i), 1e-5);
}

TEST_F(WithScene, aCurveWithoutAValueLeavesTheCellEmpty) {
    // In a segment of three frames with handles at exact thirds the closed form has no answer. The
    // last key of the curve is moved from frame 3 to frame 5, and the handles between with it.
    std::string scene = program.read("walk.osg");
    std::size_t at = 0;
    // Finds the next field of that name that holds these numbers, however they are written.
    const auto replace = [&](const std::string& field, float x, float y, const std::string& to) {
        for (at = scene.find(field, at); at != std::string::npos; at = scene.find(field, at + 1)) {
            const std::size_t end = scene.find('\n', at);
            std::istringstream numbers(scene.substr(at + field.size(), end - at - field.size()));
            float foundX = 0, foundY = 0;
            if (numbers >> foundX >> foundY && foundX == x && foundY == y) {
                scene.replace(at, end - at, field + to);
                return;
            }
        }
        FAIL() << "no " << field << x << ' ' << y;
    };
    replace(" ControlPoint ", 2, 2, "2 2"); // frame 2 of translateX
    replace(" OutTangent ", 2.5F, 3, "3 3");
    replace(" ControlPoint ", 3, 4, "5 4");
    replace(" InTangent ", 2.5F, 3, "4 3");
    program.write("walk.osg", scene);
    const Outcome outcome =
        program.run("eval walk.osg --frames 1:5:1 --node Hips --attribute translateX");
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(outcome.out, "frame,Hips.translateX\n1,1\n2,\n3,\n4,\n5,4\n");
}

TEST_F(WithScene, dumpOfTheFileEqualsTheDumpMadeBeforeSaving) {
    ASSERT_EQ(program.run("import walk.bvh --dump before.txt -o again.osb").code, 0);
    ASSERT_EQ(program.run("dump again.osb -o after.txt").code, 0);
    EXPECT_EQ(program.read("before.txt"), program.read("after.txt"));
    EXPECT_THAT(program.read("after.txt"), HasSubstr("world Knee"));
}

TEST_F(WithScene, playRunsOnTheClockAndEndsWithTheRange) {
    // Four frames at 20 frames a second: 0.15 s.
    const Outcome outcome = program.run("play walk.osg --fps 20");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_THAT(outcome.out, HasSubstr("frame      3.00"));
    EXPECT_THAT(outcome.out, HasSubstr("ended after the next was due"));
}

TEST_F(WithScene, playBackwardsEndsAtTheStart) {
    const Outcome outcome = program.run("play walk.osg --fps 20 --reverse --speed 2");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    const std::size_t last = outcome.out.rfind("frame ");
    EXPECT_EQ(outcome.out.substr(last, 15), "frame      0.00");
}

TEST_F(WithScene, playStopsAfterTheSecondsThatAreAskedFor) {
    const Outcome outcome =
        program.run("play walk.osg --block Knee --fps 10 --speed 0.1 --seconds 0.2");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_THAT(outcome.out, HasSubstr("ticks"));
}

TEST_F(WithScene, aLocaleWithADecimalCommaChangesNothing) {
    const std::string german = "export LC_ALL=de_DE.UTF-8;";
    const std::string eval = "eval walk.osg --frames 0:3:0.5";
    EXPECT_EQ(program.run(eval, german).out, program.run(eval).out);
    ASSERT_EQ(program.run("import walk.bvh -o german.osg", german).code, 0);
    EXPECT_EQ(program.run("dump german.osg", german).out, program.run("dump walk.osg").out);
}

TEST_F(WithScene, plotsAreCompletePictures) {
    EXPECT_EQ(program.run("plot walk.osg -o p.svg --node Hips").code, 0);
    const std::string svg = program.read("p.svg");
    EXPECT_THAT(svg, StartsWith("<?xml"));
    EXPECT_THAT(svg, HasSubstr("</svg>"));
    EXPECT_EQ(program.run("plot walk.osg -o p.PNG --attribute rotateX").code, 0);
    EXPECT_EQ(program.read("p.PNG").substr(1, 3), "PNG");
}

TEST_F(WithScene, importOntoAClipPutsEachBlockOnATrackOfItsOwn) {
    const Outcome outcome = program.run("import walk.bvh --clip -o clip.osg");
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    const Json json = Json::parse(program.run("info clip.osg --json").out);
    EXPECT_TRUE(json["sceneBlocks"].empty());
    ASSERT_EQ(json["clips"].size(), 1u);
    const std::string name = json["clips"][0]["name"];
    EXPECT_THAT(outcome.out, HasSubstr("--clip \"" + name + "\""));
    ASSERT_EQ(json["clips"][0]["tracks"].size(), 2u);
    EXPECT_EQ(json["clips"][0]["tracks"][1]["blocks"][0]["name"], "Knee");
    EXPECT_THAT(program.run("info clip.osg").out, HasSubstr("track 1"));
    EXPECT_EQ(program.run("play clip.osg --fps 50 --clip \"" + name + "\"").code, 0);
    EXPECT_EQ(program.run("plot clip.osg -o clip.svg --clip \"" + name + "\"").code, 0);
    EXPECT_THAT(program.read("clip.svg"), HasSubstr("</svg>"));
    expectRefused(program.run("play clip.osg"), "clip.osg", "--clip");
}

TEST_F(WithScene, everyNumberOfTheDumpIsKeptInBinaryForm) {
    ASSERT_EQ(program.run("import walk.bvh --dump before.txt -o again.osb").code, 0);
    ASSERT_EQ(program.run("dump again.osb -o after.txt").code, 0);
    EXPECT_EQ(program.read("before.txt"), program.read("after.txt"));
    EXPECT_NE(program.read("after.txt"), "");
}

TEST_F(WithScene, theGroupThatReadingPutsAboveTheSceneIsTakenOff) {
    const Json json = Json::parse(program.run("info walk.osg --json").out);
    EXPECT_EQ(json["nodes"], 4) << "Hips, Knee, the end site, and the stick figure of the importer";
}
