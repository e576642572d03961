// kvanim fields: what can be animated, with the values of the moment.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace kv::test;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// A material with a colour and a single number, a camera, and a node without a core.
const char* const kScene = "#OSG V1.0 \n"
                           R"(DEF Root Node {
    attachments [ Name { name "Root" } ]
    core MaterialGroup { material SimpleMaterial { diffuse 0.25 0.5 0.75 shininess 12.5 } }
    children [
        Node {
            attachments [ Name { name "Camera" } ]
            core CameraSetting { from 1 2 3 lensStop 8 lensLength 0.035 }
        }
        Node { attachments [ Name { name "Bare" } ] }
    ]
}
)";

class KvanimFields : public ::testing::Test {
  protected:
    std::string run(const std::string& options) {
        program.write("scene.osg", kScene);
        const Outcome outcome = program.run("fields scene.osg " + options);
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        return outcome.out;
    }

    Program program;
};

} // namespace

TEST_F(KvanimFields, aVectorIsListedNumberByNumber) {
    program.writeModel("walk.bvh");
    ASSERT_EQ(program.run("import walk.bvh -o walk.osg").code, 0);
    const Outcome outcome = program.run("fields walk.osg --node Knee --attributes translation");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_THAT(outcome.out, HasSubstr("Knee\n  core Transform3D\n"
                                       "    translationX 1 (translation, number 0)\n"
                                       "    translationY -2 (translation, number 1)\n"
                                       "    translationZ 0 (translation, number 2)\n"
                                       "walk.osg: 3 numbers of 1 node can be animated\n"));
}

TEST_F(KvanimFields, materialsBelongToTheirNode) {
    EXPECT_EQ(run("--node Root --attributes diffuse,shininess"),
              "Root\n  material SimpleMaterial\n"
              "    diffuseR 0.25 (diffuse, number 0)\n"
              "    diffuseG 0.5 (diffuse, number 1)\n"
              "    diffuseB 0.75 (diffuse, number 2)\n"
              "    shininess 12.5 (shininess, number 0)\n"
              "scene.osg: 4 numbers of 1 node can be animated\n");
}

TEST_F(KvanimFields, onlyNamedAttributesCount) {
    EXPECT_EQ(run("--node Root --attributes diffusion"),
              "Root\nscene.osg: 0 numbers of 1 node can be animated\n");
    EXPECT_THAT(run("--node Root --attributes shininess"), Not(HasSubstr("diffuse")));
}

TEST_F(KvanimFields, withoutAListEveryFieldCounts) {
    const std::string all = run("--node Root");
    EXPECT_THAT(all, HasSubstr("  node Node\n"));
    EXPECT_THAT(all, HasSubstr("    travMask "));
    EXPECT_THAT(all, HasSubstr("    diffuseR 0.25"));
}

TEST_F(KvanimFields, camerasHaveQuantitiesThatAreNoFields) {
    const std::string camera = run("--node Camera --attributes from");
    EXPECT_THAT(camera, HasSubstr("    fromZ 3 (from, number 2)\n"));
    const std::size_t special = camera.find("  camera quantities\n");
    ASSERT_NE(special, std::string::npos) << camera;
    const std::string rest = camera.substr(special);
    std::size_t last = 0;
    for (const char* name : {"distance", "height", "turnTableAngle", "fStop 8 ", "focalLength"}) {
        const std::size_t at = rest.find(std::string("    ") + name);
        ASSERT_NE(at, std::string::npos) << name;
        EXPECT_GT(at, last) << name;
        last = at;
    }
    EXPECT_THAT(camera, HasSubstr("8 numbers of 1 node"));
}

TEST_F(KvanimFields, allNodesAreListedAlsoThoseWithoutACore) {
    const std::string all = run("--attributes diffuse");
    EXPECT_THAT(all, HasSubstr("Root\n"));
    EXPECT_THAT(all, HasSubstr("Camera\n"));
    EXPECT_THAT(all, HasSubstr("Bare\n"));
    EXPECT_THAT(all, HasSubstr("8 numbers of 3 nodes"));
}

TEST_F(KvanimFields, aNodeThatTheSceneLacksIsRefused) {
    program.write("scene.osg", kScene);
    const Outcome outcome = program.run("fields scene.osg --node Rooot");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.error, "kvanim: scene.osg: no node \"Rooot\"\n");
    EXPECT_EQ(outcome.out, "");
}
