// kvanim with text files, where these are more than OpenSG makes of them: OpenSG's own reader ends
// the program on text that is no scene, and its writer keeps seven digits.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using kv::test::lineCount;
using kv::test::Outcome;
using kv::test::Program;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(KvanimText, thatIsNoSceneIsRefusedWithThePlace) {
    const Program program;
    program.write("text.osg", "hello\n");
    for (const char* command : {"info", "dump", "play", "plot -o p.svg", "eval --frames 0:1"}) {
        const Outcome outcome = program.run(std::string(command) + " text.osg");
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(lineCount(outcome.error), 1) << outcome.error;
        EXPECT_THAT(outcome.error, StartsWith("kvanim: "));
        EXPECT_THAT(outcome.error, HasSubstr("text.osg"));
        EXPECT_THAT(outcome.error, HasSubstr("line 2"));
    }
    EXPECT_EQ(program.fileCount(), 1) << "no output file may be left behind";
}

TEST(KvanimText, keepsEveryNumberOfTheDump) {
    const Program program;
    program.writeModel("walk.bvh");
    ASSERT_EQ(program.run("import walk.bvh --dump before.txt -o again.osg").code, 0);
    ASSERT_EQ(program.run("dump again.osg -o after.txt").code, 0);
    EXPECT_EQ(program.read("before.txt"), program.read("after.txt"));
}
