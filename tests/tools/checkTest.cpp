// kvanim check: every finding just outside what is sound, and what is sound just inside.
#include "tools/binaryScene.h"
#include "tools/program.h"
#include "tools/sceneText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace kv::test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;

namespace {

class KvanimCheck : public ::testing::Test {
  protected:
    /// The findings in a scene; the exit code must agree with them.
    std::vector<Json> findings(const std::string& scene, const std::string& name = "scene.osg") {
        program.write(name, scene);
        const Outcome outcome = program.run("check " + name + " --json");
        EXPECT_EQ(outcome.error, "");
        const Json json = Json::parse(outcome.out, nullptr, false);
        if (json.is_discarded()) {
            ADD_FAILURE() << "exit code " << outcome.code << ": " << outcome.out;
            return {};
        }
        const std::vector<Json> found = json["findings"];
        EXPECT_EQ(outcome.code, found.empty() ? 0 : 3);
        return found;
    }

    std::vector<std::string> kinds(const std::string& scene,
                                   const std::string& name = "scene.osg") {
        std::vector<std::string> found;
        for (const Json& finding : findings(scene, name))
            found.push_back(finding["kind"]);
        return found;
    }

    static std::string withKeys(const std::string& keys) {
        CurveText curve;
        curve.keys = keys;
        return sceneText(blockText("Walk", text(curve)));
    }

    Program program;
};

} // namespace

TEST_F(KvanimCheck, aSoundSceneIsCleanAndCounted) {
    program.write("scene.osg", withKeys(heldKey("0") + heldKey("5") + heldKey("10")));
    const Outcome outcome = program.run("check scene.osg");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(outcome.out, "scene.osg: clean in 1 blocks, 1 curves, 3 keys\n");
}

TEST_F(KvanimCheck, whatTheImporterWritesIsClean) {
    program.writeModel("walk.bvh");
    for (const char* option : {"", " --clip"}) {
        ASSERT_EQ(program.run(std::string("import walk.bvh -o walk.osg") + option).code, 0);
        const Outcome outcome = program.run("check walk.osg");
        EXPECT_EQ(outcome.code, 0) << outcome.out;
        EXPECT_THAT(outcome.out, HasSubstr("clean in 2 blocks, 18 curves"));
    }
}

TEST_F(KvanimCheck, aFindingIsOneLineWithItsPlace) {
    program.write("scene.osg", withKeys(heldKey("0") + heldKey("10") + heldKey("5")));
    const Outcome outcome = program.run("check scene.osg");
    EXPECT_EQ(outcome.code, 3);
    EXPECT_EQ(outcome.out, "unsorted-frames: node \"Hips\", block \"Walk\", curve translateX, key "
                           "2, frame 5: the key is stored behind one at frame 10\n"
                           "scene.osg: 1 finding in 1 blocks, 1 curves, 3 keys\n");
}

TEST_F(KvanimCheck, jsonHasEveryMemberForEveryFinding) {
    const auto found = findings(withKeys(heldKey("0") + heldKey("10") + heldKey("5")));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["node"], "Hips");
    EXPECT_EQ(found[0]["clip"], nullptr);
    EXPECT_EQ(found[0]["block"], "Walk");
    EXPECT_EQ(found[0]["curve"], "translateX");
    EXPECT_EQ(found[0]["key"], 2);
    EXPECT_EQ(found[0]["frame"], 5.0);
    EXPECT_EQ(found[0]["lastFrame"], nullptr);
}

TEST_F(KvanimCheck, aSegmentWithHandlesAtExactThirdsHasNoValueAnywhere) {
    // The leading coefficient 3*1 - 0 - 3*2 + 3 is 0; the last frame of the gap is the float before
    // 3.
    const auto found = findings(withKeys(keyText("0", "0", "1") + keyText("3", "2", "3")));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "no-value");
    EXPECT_EQ(found[0]["key"], 0);
    EXPECT_EQ(found[0]["frame"], 0.0);
    EXPECT_FLOAT_EQ(found[0]["lastFrame"].get<float>(), 2.9999998F);
    EXPECT_THAT(found[0]["reason"].get<std::string>(), HasSubstr("anywhere"));
    EXPECT_THAT(kinds(withKeys(keyText("0", "0", "1.5") + keyText("3", "1.5", "3"))), IsEmpty());
}

TEST_F(KvanimCheck, theFramesOfAGapWithinASegmentAreFound) {
    // Handles at the frames 0 and 5 of 0 to 10: the discriminant is (f/10 - 1)^2 - 1 at frame f, so
    // that it lies within the millionth of 0 that counts as 0 up to frame 5e-6. The roots of that
    // branch are NaN there.
    const auto found = findings(withKeys(keyText("0", "0", "0") + keyText("10", "5", "10")));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "no-value");
    EXPECT_EQ(found[0]["frame"], 0.0);
    EXPECT_NEAR(found[0]["lastFrame"].get<double>(), 5e-6, 1e-9);
    EXPECT_THAT(found[0]["reason"].get<std::string>(), HasSubstr("in a part"));
}

TEST_F(KvanimCheck, aCurveNeedsTwoKeysForAValue) {
    EXPECT_THAT(kinds(withKeys("")), ElementsAre("no-value"));
    EXPECT_THAT(kinds(withKeys(heldKey("0"))), ElementsAre("no-value"));
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("1"))), IsEmpty());
}

TEST_F(KvanimCheck, aHandleBeforeItsKeyMakesTimeRunBackwards) {
    EXPECT_THAT(kinds(withKeys(keyText("0", "0", "0.5") + keyText("10", "9.5", "10"))), IsEmpty());
    const auto found = findings(withKeys(keyText("0", "0", "-0.5") + keyText("10", "9.5", "10")));
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found[0]["kind"], "time-backwards");
    EXPECT_EQ(found[0]["key"], 0);
    EXPECT_EQ(found[0]["frame"], 0.0);
    EXPECT_EQ(found[0]["lastFrame"], 10.0);
    EXPECT_THAT(kinds(withKeys(keyText("0", "0", "0.5") + keyText("10", "10.5", "10"))),
                Contains("time-backwards"));
}

TEST_F(KvanimCheck, handlesThatCrossRunBackwardsOnceTheyReachBeyondBothKeys) {
    // With both handles on the other key time stands still in the middle, for an instant.
    EXPECT_THAT(kinds(withKeys(keyText("0", "0", "10") + keyText("10", "0", "10"))),
                Not(Contains("time-backwards")));
    EXPECT_THAT(kinds(withKeys(keyText("0", "0", "10.1") + keyText("10", "-0.1", "10"))),
                Contains("time-backwards"));
}

TEST_F(KvanimCheck, keysAreComparedInTheOrderInWhichTheyAreStored) {
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("9.5") + heldKey("10"))), IsEmpty());
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("10") + heldKey("9.5"))),
                ElementsAre("unsorted-frames"));
    const auto found = findings(withKeys(heldKey("0") + heldKey("10") + heldKey("10", "3")));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "equal-frames");
    EXPECT_EQ(found[0]["key"], 2);
    EXPECT_EQ(found[0]["frame"], 10.0);
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("10") + heldKey("0"))),
                ElementsAre("equal-frames"))
        << "also when other keys stand between them";
}

TEST_F(KvanimCheck, anEvaluatedSegmentIsNamedByItsStoredKey) {
    const auto found = findings(withKeys(keyText("3", "2", "3") + keyText("0", "0", "1")));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0]["kind"], "unsorted-frames");
    EXPECT_EQ(found[1]["kind"], "no-value");
    EXPECT_EQ(found[1]["key"], 1) << "the segment begins at the key at frame 0, stored second";
}

TEST_F(KvanimCheck, numbersMustBeFinite) {
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("10", "3.4e38"))), IsEmpty());
    EXPECT_THAT(kinds(withKeys(heldKey("0") + heldKey("10", "3.5e38"))), ElementsAre("not-finite"));
    const auto with = [](float number, const std::string& keys) {
        return binaryScene(withKeys(keys), 77, number);
    };
    EXPECT_THAT(kinds(with(NAN, heldKey("0") + heldKey("10", "77")), "scene.osb"),
                ElementsAre("not-finite"));
    EXPECT_THAT(kinds(with(NAN, heldKey("0") + heldKey("1") + heldKey("77")), "scene.osb"),
                Contains("not-finite"));
    const auto found =
        findings(with(INFINITY, keyText("0", "0", "77") + keyText("10", "10", "10")), "scene.osb");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["key"], 0);
    EXPECT_THAT(found[0]["reason"].get<std::string>(), HasSubstr("outgoing handle"));
}

TEST_F(KvanimCheck, framesEndWhereWholeFramesAreNoLongerToldApart) {
    EXPECT_THAT(kinds(withKeys(heldKey("-16777216") + heldKey("16777216"))), IsEmpty());
    EXPECT_THAT(kinds(withKeys(heldKey("-16777218") + heldKey("16777218"))),
                ElementsAre("imprecise-frame", "imprecise-frame"));
}

TEST_F(KvanimCheck, curvesAndBlocksNeedTheirNode) {
    CurveText gone;
    gone.node = "";
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(gone)))), ElementsAre("node-gone"));
    EXPECT_THAT(kinds(sceneText("", text(gone))), ElementsAre("node-gone"));
    EXPECT_THAT(kinds(sceneText("", text(CurveText()))), IsEmpty());
    const auto found = findings(sceneText(blockText("Walk", text(CurveText()), "")));
    ASSERT_EQ(found.size(), 1u) << "and not again for each of its curves";
    EXPECT_EQ(found[0]["kind"], "node-gone");
    EXPECT_EQ(found[0]["curve"], nullptr);
}

TEST_F(KvanimCheck, aBlockWithoutANodeSpeaksForItsCurvesButNotForTheirFields) {
    CurveText curve;
    curve.node = "";
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(curve), ""))), ElementsAre("node-gone"));
    curve = CurveText();
    curve.globalFieldName = "transportation";
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(curve), ""))),
                ElementsAre("node-gone", "field-gone"));
}

TEST_F(KvanimCheck, aNameWithALineEndMakesNoSecondLine) {
    program.write("scene.osg", sceneText(blockText("Walk\nnode-gone", "")));
    EXPECT_EQ(program.run("check scene.osg").out,
              "empty-block: node \"Hips\", block \"Walk?node-gone\": the block has no curves\n"
              "scene.osg: 1 finding in 1 blocks, 0 curves, 0 keys\n");
}

TEST_F(KvanimCheck, aBlockOfATrackWithoutANodeIsSeenAlthoughLoadingDropsIt) {
    const auto found = findings(
        sceneText("", "", clipText("Dance", trackText(blockText("Walk", text(CurveText()), "")))));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "node-gone");
    EXPECT_EQ(found[0]["clip"], "Dance");
    EXPECT_EQ(found[0]["block"], "Walk");
    EXPECT_THAT(found[0]["reason"].get<std::string>(), HasSubstr("drops"));
}

TEST_F(KvanimCheck, aNodeThatOnlyTheRecordsHoldIsNotInTheScene) {
    // The node hangs nowhere but on the curve.
    std::string scene = sceneText("", text(CurveText()));
    const std::string own = "AppropriateNode USE Hips";
    scene.replace(scene.find(own), own.size(), "AppropriateNode Node {\n}\n");
    const auto found = findings(scene);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "node-gone");
    EXPECT_THAT(found[0]["reason"].get<std::string>(), HasSubstr("not in the scene"));
}

TEST_F(KvanimCheck, aBindingToANodeOutsideTheSceneIsLost) {
    std::string scene = sceneText("", text(CurveText()));
    const std::string own = "AFAppNode USE Hips";
    scene.replace(scene.find(own), own.size(),
                  "AFAppNode Node {\ncore ComponentTransform {\n}\n}\n");
    EXPECT_THAT(kinds(scene), ElementsAre("field-gone"));
}

TEST_F(KvanimCheck, aBindingNeedsItsFieldAndItsNode) {
    CurveText curve;
    curve.globalFieldName = "transportation";
    EXPECT_THAT(kinds(sceneText("", text(curve))), ElementsAre("field-gone"));
    curve = CurveText();
    curve.fieldNode = "";
    EXPECT_THAT(kinds(sceneText("", text(curve))), ElementsAre("field-gone"));
}

TEST_F(KvanimCheck, aCurveSavedWithoutABindingIsBoundByItsAttribute) {
    CurveText curve;
    curve.fieldNode = curve.fieldName = curve.globalFieldName = "";
    EXPECT_THAT(kinds(sceneText("", text(curve))), IsEmpty());
    curve.attribute = "juggle";
    EXPECT_THAT(kinds(sceneText("", text(curve))), ElementsAre("field-gone"));
}

TEST_F(KvanimCheck, twoCurvesOfOneBlockOnOneScalar) {
    CurveText first, second;
    second.attribute = "another";
    const auto found = findings(sceneText(blockText("Walk", text(first) + text(second))));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "same-scalar");
    EXPECT_EQ(found[0]["curve"], "another");
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(first)) + blockText("Run", text(second)))),
                IsEmpty())
        << "two blocks may share a scalar";
    second.position = 1;
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(first) + text(second)))), IsEmpty());
}

TEST_F(KvanimCheck, anglesAreToldApartByNameAndNotByPosition) {
    CurveText first, second;
    first.fieldName = "rotationX";
    second.fieldName = "rotationY";
    first.globalFieldName = second.globalFieldName = "rotationAngles";
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(first) + text(second)))), IsEmpty());
    second.fieldName = "rotationX";
    EXPECT_THAT(kinds(sceneText(blockText("Walk", text(first) + text(second)))),
                ElementsAre("same-scalar"));
}

TEST_F(KvanimCheck, aBlockWithoutCurves) {
    EXPECT_THAT(kinds(sceneText(blockText("Walk", ""))), ElementsAre("empty-block"));
    EXPECT_THAT(kinds(sceneText(heldBlock("Walk", 0, 1))), IsEmpty());
}

TEST_F(KvanimCheck, aBlockThatOutlastsTheOneThatStartsLastLiesOutsideItsClip) {
    const auto scene = [](int last) {
        return sceneText(
            "", "",
            clipText("Dance", trackText(heldBlock("Long", 0, last) + heldBlock("Late", 5, 10))));
    };
    EXPECT_THAT(kinds(scene(10)), IsEmpty());
    const auto found = findings(scene(40));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "outside-clip");
    EXPECT_EQ(found[0]["clip"], "Dance");
    EXPECT_EQ(found[0]["block"], "Long");
    EXPECT_EQ(found[0]["node"], "Hips");
    EXPECT_EQ(found[0]["frame"], 0.0);
    EXPECT_EQ(found[0]["lastFrame"], 40.0);
}

TEST_F(KvanimCheck, aSequenceDoesNotWidenItsClip) {
    const auto scene = [](const char* end) {
        return sceneText("", "",
                         clipText("Dance", trackText(heldBlock("Walk", 0, 9),
                                                     sequenceText("fanfare", "5", end))));
    };
    EXPECT_THAT(kinds(scene("9")), IsEmpty());
    const auto found = findings(scene("9.5"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["kind"], "outside-clip");
    EXPECT_EQ(found[0]["block"], "fanfare");
}

TEST_F(KvanimCheck, sequencesHaveFramesToo) {
    const auto scene = [](const char* start) {
        return sceneText("", "",
                         clipText("Dance", trackText(heldBlock("Walk", 0, 9),
                                                     sequenceText("fanfare", start, "9"))));
    };
    EXPECT_THAT(kinds(binaryScene(scene("77"), 77, NAN), "scene.osb"), ElementsAre("not-finite"));
    EXPECT_THAT(kinds(scene("-16777218")), Contains("imprecise-frame"));
}

TEST_F(KvanimCheck, nestedClipsAreCheckedAgainstTheirOwnClip) {
    const std::string inner =
        clipText("Inner", trackText(heldBlock("Long", 0, 40) + heldBlock("Late", 5, 10)));
    const auto found = findings(sceneText(
        "", "", clipText("Outer", trackText("", "", inner) + trackText(heldBlock("Walk", 0, 50)))));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["clip"], "Inner");
}

TEST_F(KvanimCheck, clipsThatAreNestedInThemselvesAreRefused) {
    program.write("loop.osg", "#OSG V1.0 \nNode { core Group { } attachments [ AnimationAttachment "
                              "{ clips [ DEF c AnimationClip { Name \"Loop\" tracks [ "
                              "AnimationTrack { clips [ USE c ] } ] } ] } ] }\n");
    for (const char* command : {"check", "info", "convert -o out.osg"}) {
        const Outcome outcome = program.run(std::string(command) + " loop.osg");
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_EQ(lineCount(outcome.error), 1);
        EXPECT_THAT(outcome.error, HasSubstr("\"Loop\" is nested in itself"));
    }
    EXPECT_FALSE(program.exists("out.osg"));
}

TEST_F(KvanimCheck, clipsMayBeNestedToTheDepthOf256) {
    const auto nested = [](int depth) {
        std::string clip = clipText("Inner", trackText(heldBlock("Walk", 0, 1)));
        for (int i = 1; i < depth; ++i)
            clip = clipText("Outer", trackText("", "", clip));
        return sceneText("", "", clip);
    };
    EXPECT_THAT(kinds(nested(256)), IsEmpty());
    program.write("deep.osg", nested(257));
    const Outcome outcome = program.run("check deep.osg");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.error, HasSubstr("more than 256"));
}

TEST_F(KvanimCheck, clipsThatDoubleAtEveryLevelAreRefused) {
    // Thirty levels, each holding the next twice: a billion copies.
    std::string clip = "DEF c0 AnimationClip { Name \"Leaf\" }";
    for (int i = 1; i <= 30; ++i)
        clip = "DEF c" + std::to_string(i) + " AnimationClip { tracks [ AnimationTrack { clips [ " +
               clip + " USE c" + std::to_string(i - 1) + " ] } ] }";
    program.write("many.osg", sceneText("", "", clip));
    const Outcome outcome = program.run("check many.osg");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.error, HasSubstr("more than a million"));
}
