// Names of nodes.
#include <kvNodeUtils.h>

#include <OpenSG/OSGSimpleAttachments.h>

#include "held.h"

#include <gtest/gtest.h>

using kvtest::Made;

namespace {

TEST(NodeNames, aNodeWithoutANameAndNoNodeHaveAnEmptyOne) {
    const Made<osg::Node> node;
    EXPECT_EQ(kvNodeUtils::getName(node), "");
    EXPECT_EQ(kvNodeUtils::getName(osg::NullFC), "");
    EXPECT_FALSE(kvNodeUtils::hasUtf8Name(osg::NullFC));
    kvNodeUtils::setName(osg::NullFC, "x");
}

TEST(NodeNames, isTheNameOfTheSceneGraph) {
    const Made<osg::Node> node;
    kvNodeUtils::setName(node, "left arm");
    EXPECT_EQ(kvNodeUtils::getName(node), "left arm");
    ASSERT_NE(osg::getName(node.get()), nullptr);
    EXPECT_STREQ(osg::getName(node.get()), "left arm");
    kvNodeUtils::setName(node, "right arm");
    EXPECT_STREQ(osg::getName(node.get()), "right arm");
}

TEST(NodeNames, anEmptyTextTakesTheNameAway) {
    const Made<osg::Node> node;
    kvNodeUtils::setName(node, "a");
    kvNodeUtils::setName(node, "");
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    EXPECT_EQ(kvNodeUtils::getName(node), "");
}

TEST(NodeNames, utf8IsMoreThanAsciiAndWellFormed) {
    const Made<osg::Node> node;
    const auto is = [&](const char* name) {
        kvNodeUtils::setName(node, name, false);
        EXPECT_EQ(kvNodeUtils::getName(node), name);
        return kvNodeUtils::hasUtf8Name(node);
    };
    EXPECT_FALSE(is("plain"));
    EXPECT_TRUE(is("Stra\xC3\x9F"
                   "e"));
    EXPECT_TRUE(is("\xE2\x82\xAC"));
    EXPECT_TRUE(is("\xF0\x9F\x8E\xAC"));
    EXPECT_FALSE(is("Stra\xDF"
                    "e"));                // Latin-1
    EXPECT_FALSE(is("\xC3"));             // cut short
    EXPECT_FALSE(is("\xC0\xAF"));         // overlong
    EXPECT_FALSE(is("\xE0\x9F\xBF"));     // overlong
    EXPECT_TRUE(is("\xE0\xA0\x80"));      // the first of three bytes
    EXPECT_FALSE(is("\xED\xA0\x80"));     // surrogate
    EXPECT_TRUE(is("\xED\x9F\xBF"));      // the last before the surrogates
    EXPECT_FALSE(is("\xF0\x8F\xBF\xBF")); // overlong
    EXPECT_TRUE(is("\xF4\x8F\xBF\xBF"));  // U+10FFFF
    EXPECT_FALSE(is("\xF4\x90\x80\x80")); // beyond
    EXPECT_FALSE(is("\xC3\x9F\xDF"));     // well formed, then not
}

TEST(NodeNames, whatIsNoUtf8IsReplacedWhereUtf8IsPromised) {
    const Made<osg::Node> node;
    kvNodeUtils::setName(node,
                         "a\xDF"
                         "b",
                         true);
    EXPECT_EQ(kvNodeUtils::getName(node), "a\xEF\xBF\xBD"
                                          "b");
    kvNodeUtils::setName(node, "\xC3\x9F", true);
    EXPECT_EQ(kvNodeUtils::getName(node), "\xC3\x9F");
}

} // namespace
