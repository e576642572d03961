// kvanim convert: what becomes animation nodes, and what is dropped and why.
#include "tools/program.h"
#include "tools/sceneText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdlib>
#include <sstream>

using namespace kv::test;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

namespace {

class KvanimConvert : public ::testing::Test {
  protected:
    std::string run(const std::string& scene) {
        program.write("scene.osg", scene);
        const Outcome outcome = program.run("convert scene.osg -o out.osg");
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        return outcome.out;
    }

    static CurveText named(const std::string& attribute) {
        CurveText curve;
        curve.attribute = attribute;
        curve.fieldNode = curve.fieldName = curve.globalFieldName = "";
        return curve;
    }

    Program program;
};

/// Whether two numbers stand in a text one behind the other, in whatever form.
bool holdsNumbers(const std::string& text, double first, double second) {
    std::istringstream words(text);
    double before = NAN;
    for (std::string word; words >> word;) {
        char* end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        const bool isNumber = *end == '\0' || *end == ',';
        if (isNumber && before == first && number == second) return true;
        before = isNumber ? number : NAN;
    }
    return false;
}

} // namespace

TEST_F(KvanimConvert, blocksBecomeNodesWithAllTheirKeys) {
    program.writeModel("walk.bvh");
    ASSERT_EQ(program.run("import walk.bvh -o walk.osg").code, 0);
    const Json before = Json::parse(program.run("info walk.osg --json").out);
    std::size_t hips = 0;
    for (const Json& curve : before["sceneBlocks"][0]["curves"])
        hips += curve["keys"].get<std::size_t>();
    const Outcome outcome = program.run("convert walk.osg -o nodes.osg");
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    // Translation, angles and scale in three axes, and visible.
    EXPECT_THAT(outcome.out, HasSubstr("Hips\n  converted block \"Hips\": 9 curves, " +
                                       std::to_string(hips) + " keys, 10 channels\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("nodes.osg: " + std::to_string(before["keys"].get<std::size_t>()) +
                          " keys became points at 25 frames a second"));
    EXPECT_THAT(outcome.out, HasSubstr("; 0 dropped\n"));
    const Json after = Json::parse(program.run("info nodes.osg --json").out);
    EXPECT_EQ(after["blocks"], 0);
    EXPECT_EQ(after["nodes"], before["nodes"]);
}

TEST_F(KvanimConvert, whatWasWrittenIsReadBackAndHasNothingLeftToConvert) {
    run(sceneText(heldBlock("Walk", 0, 40)));
    // Frame 40 at 25 frames a second.
    EXPECT_TRUE(holdsNumbers(program.read("out.osg"), 1.6, 0.0));
    EXPECT_THAT(program.read("out.osg"), Not(HasSubstr("AnimationBlock")));
    const Outcome again = program.run("convert out.osg -o again.osg");
    EXPECT_EQ(again.code, 0) << again.error;
    EXPECT_EQ(again.out, "again.osg: nothing to convert, out.osg holds no stored animation\n");
    EXPECT_THAT(program.read("again.osg"), HasSubstr("AnimCurve"));
}

TEST_F(KvanimConvert, framesBecomeSecondsAtTheRateThatIsAsked) {
    program.write("scene.osg", sceneText(heldBlock("Walk", 0, 40)));
    const Outcome outcome = program.run("convert scene.osg -o out.osg --fps 160");
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_THAT(outcome.out, HasSubstr("at 160 frames a second"));
    EXPECT_TRUE(holdsNumbers(program.read("out.osg"), 0.25, 0.0));
    EXPECT_EQ(program.run("convert scene.osg -o out.osg --fps 0").code, 2);
}

TEST_F(KvanimConvert, aCurveWithoutAChannelIsDropped) {
    const std::string out =
        run(sceneText(blockText("Walk", text(CurveText()) + text(named("juggle")))));
    EXPECT_THAT(out, HasSubstr("converted block \"Walk\": 1 curve, 2 keys, 10 channels\n"));
    EXPECT_THAT(
        out, HasSubstr("dropped block \"Walk\": curve juggle: the node has no channel \"juggle\""));
    EXPECT_THAT(out, HasSubstr("; 1 dropped\n"));
}

TEST_F(KvanimConvert, onlyBlocksKnowTheOlderSpellings) {
    const std::string older = text(named("translateX"));
    EXPECT_THAT(run(sceneText(blockText("Walk", older))), HasSubstr("1 curve, 2 keys"));
    EXPECT_THAT(run(sceneText("", older)),
                HasSubstr("dropped loose curve translateX: the node has no channel"));
    EXPECT_THAT(run(sceneText("", text(named("translationX")))),
                HasSubstr("converted loose curve translationX: 2 keys to channel translationX"));
    EXPECT_THAT(run(sceneText("", text(named("rotationZ")))),
                HasSubstr("converted loose curve rotationZ: 2 keys to channel eulerRZ"));
}

TEST_F(KvanimConvert, clipsAreDropped) {
    const std::string out =
        run(sceneText("", "", clipText("Dance", trackText(heldBlock("Walk", 0, 1)))));
    EXPECT_EQ(out, "Hips\n  dropped clip \"Dance\": animation nodes have no clips on tracks\n"
                   "out.osg: 0 keys became points at 25 frames a second, without their tangent "
                   "types; 1 dropped\n");
    EXPECT_THAT(program.read("out.osg"), Not(HasSubstr("AnimationClip")));
}

TEST_F(KvanimConvert, aSceneMayReplaceItself) {
    program.write("scene.osg", sceneText(heldBlock("Walk", 0, 1)));
    EXPECT_EQ(program.run("convert scene.osg -o scene.osg").code, 0);
    EXPECT_THAT(program.read("scene.osg"), HasSubstr("AnimBlock"));
    EXPECT_EQ(program.fileCount(), 1);
}

TEST_F(KvanimConvert, nothingIsLeftBehindWhereNothingCanBeWritten) {
    program.write("scene.osg", sceneText(heldBlock("Walk", 0, 1)));
    EXPECT_EQ(program.run("convert scene.osg").code, 2) << "an output file is needed";
    for (const char* output : {".", "no/out.osg"}) {
        const Outcome outcome = program.run(std::string("convert scene.osg -o ") + output);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(lineCount(outcome.error), 1);
    }
    EXPECT_EQ(program.fileCount(), 1);
}
