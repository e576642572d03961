// kvanim with text files, where these are more than OpenSG makes of them: its reader does not say
// where a text is no scene, and its writer keeps seven digits.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using kv::test::Outcome;
using kv::test::Program;
using ::testing::HasSubstr;

TEST(KvanimText, thatIsNoSceneIsRefusedWithThePlace) {
    const Program program;
    program.write("text.osg", "hello\n");
    const Outcome outcome = program.run("info text.osg");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.error, HasSubstr("line 2"));
}

TEST(KvanimText, keepsEveryNumberOfTheDump) {
    const Program program;
    program.writeModel("walk.bvh");
    ASSERT_EQ(program.run("import walk.bvh --dump before.txt -o again.osg").code, 0);
    ASSERT_EQ(program.run("dump again.osg -o after.txt").code, 0);
    EXPECT_EQ(program.read("before.txt"), program.read("after.txt"));
}

// Text, binary and packed scenes are all the same to the last bit; and a packed file may be named
// in capitals, which OpenSG takes for an unknown format.
TEST(KvanimText, holdsWhatTheOtherFormatsHold) {
    const Program program;
    program.writeModel("walk.bvh");
    ASSERT_EQ(program.run("import walk.bvh --dump before.txt -o walk.osg").code, 0);
    for (const char* name : {"walk.osb", "walk.osg.gz", "walk.OSG.GZ", "walk.osb.GZ"}) {
        SCOPED_TRACE(name);
        ASSERT_EQ(program.run(std::string("import walk.bvh -o ") + name).code, 0);
        EXPECT_EQ(program.run(std::string("dump ") + name).out, program.read("before.txt"));
    }
}
