// kvanim dump --containers: every container of a file with its fields.
#include "tools/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace kv::test;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

/// The dump of one node with these fields.
std::string dumpOf(const std::string& fields) {
    const Program program;
    program.write("scene.osg", "#OSG V1.0 \nNode { " + fields + " }\n");
    const Outcome outcome = program.run("dump scene.osg --containers");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    return outcome.out;
}

int countOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

TEST(KvanimContainerDump, hasEveryFieldThatAFileHolds) {
    EXPECT_EQ(dumpOf("travMask 5 core Group { }"), "#1 Node\n"
                                                   "  attachments []\n"
                                                   "  travMask 5\n"
                                                   "  children []\n"
                                                   "  core #2\n"
                                                   "#2 Group\n"
                                                   "  attachments []\n");
}

TEST(KvanimContainerDump, whatIsSharedHasOneNumber) {
    const std::string text =
        dumpOf("core Group { } children [ Node { core DEF c Switch { } } Node { "
               "core USE c } ]");
    EXPECT_THAT(text, HasSubstr("  children [#2, #3]\n"));
    EXPECT_EQ(countOf(text, "  core #5\n"), 2) << text;
    EXPECT_EQ(countOf(text, " Switch\n"), 1) << text;
    EXPECT_THAT(text, HasSubstr("  choice -1\n"));
}

TEST(KvanimContainerDump, numbersAreExact) {
    const std::string text =
        dumpOf("core CameraSetting { from 0.1 16777216 -0 roll 1.57079637 lensStop 1e-20 }");
    EXPECT_THAT(text, HasSubstr("  from 0.1 16777216 -0\n"));
    EXPECT_THAT(text, HasSubstr("  roll 1.5707964\n"));
    EXPECT_THAT(text, HasSubstr("  lensStop 1e-20\n"));
    EXPECT_THAT(text, HasSubstr("  isViewpoint FALSE\n"));
}

TEST(KvanimContainerDump, stringsKeepToTheirLine) {
    EXPECT_THAT(dumpOf("attachments [ Name { name \"a \\\"b\\\"\tc\nd \\\\ \xC3\xA4\" } ]"),
                HasSubstr("  name \"a \\\"b\\\"\\x09c\\x0ad \\\\ \xC3\xA4\"\n"));
}

TEST(KvanimContainerDump, attachmentsStandInTheOrderOfTheirTypes) {
    const std::string text =
        dumpOf("attachments [ TransformAttachment { rotationOrder 3 } Name { name "
               "\"n\" } LightGeoAttachment { } ]");
    EXPECT_THAT(text, StartsWith("#1 Node\n  attachments [#2, #3, #4]\n"));
    EXPECT_THAT(text, HasSubstr("#2 LightGeoAttachment\n"));
    EXPECT_THAT(text, HasSubstr("#3 Name\n"));
    EXPECT_THAT(text, HasSubstr("#4 TransformAttachment\n"));
    EXPECT_THAT(text, Not(HasSubstr("parents")));
}

TEST(KvanimContainerDump, storedAnimationStandsAsItIsStored) {
    const std::string text = dumpOf("attachments [ AnimationAttachment { blocks [ AnimationBlock { "
                                    "Name \"walk\" Id 18446744073709551615 } ] } ]");
    EXPECT_THAT(text, HasSubstr("  curves []\n  blocks [#4]\n  clips []\n"));
    EXPECT_THAT(text, HasSubstr("#4 AnimationBlock\n  Name \"walk\"\n  AppropriateNode null\n"
                                "  Id 18446744073709551615\n"));
}
