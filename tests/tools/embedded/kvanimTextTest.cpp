// kvanim with text files, where these are more than OpenSG makes of them: its reader does not say
// where a text is no scene, and its writer keeps seven digits.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
