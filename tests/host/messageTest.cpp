// Messages with named values, and the calls that carry them to the host.
#include <kvMessage.h>
#include <kvOpenSGUtils.h>

#include "held.h"

#include <gtest/gtest.h>

namespace {

TEST(Message, keepsNamesInTheOrderInWhichTheyWereFirstSet) {
    kvMessage message;
    message.set("b", 1);
    message.set("a", std::string("two"));
    message["c"] = 3.0;
    message.set("b", 4);
    ASSERT_EQ(message.size(), 3u);
    EXPECT_EQ(message.entries()[0].first, "b");
    EXPECT_EQ(message.entries()[1].first, "a");
    EXPECT_EQ(message.entries()[2].first, "c");
    EXPECT_EQ(boost::any_cast<int>(message.get("b")), 4);
}

TEST(Message, anAbsentNameHasAnEmptyValueAndIsNotMadeByReading) {
    const kvMessage message;
    EXPECT_TRUE(message.empty());
    EXPECT_TRUE(message.get("x").empty());
    EXPECT_FALSE(message.has("x"));
    EXPECT_EQ(message.size(), 0u);
}

TEST(Message, typedReadingWantsTheExactType) {
    kvMessage message;
    message.set("n", 5);
    int whole = 0;
    long wide = 7;
    EXPECT_TRUE(message.get("n", whole));
    EXPECT_EQ(whole, 5);
    EXPECT_FALSE(message.get("n", wide));
    EXPECT_FALSE(message.get("absent", wide));
    EXPECT_EQ(wide, 7);
}

TEST(Message, removesByName) {
    kvMessage message;
    message.set("a", 1);
    message.set("b", 2);
    EXPECT_TRUE(message.remove("a"));
    EXPECT_FALSE(message.remove("a"));
    EXPECT_EQ(message.entries()[0].first, "b");
    message.clear();
    EXPECT_TRUE(message.empty());
}

TEST(Message, aNodeInAMessageIsNotCounted) {
    const kvtest::Made<osg::Node> node;
    kvMessage message;
    message.set("camNode", node.get());
    EXPECT_EQ(node.get().getRefCount(), 1);
    osg::NodePtr found;
    ASSERT_TRUE(message.get("camNode", found));
    EXPECT_TRUE(found == node.get());
}

class HostCall : public ::testing::Test {
  protected:
    void SetUp() override {
        kvOpenSGUtils::clearLog();
        kvOpenSGUtils::setHandler(nullptr);
    }
    void TearDown() override { SetUp(); }
};

TEST_F(HostCall, isLoggedWithoutAHandler) {
    kvMessage message;
    message.set("n", 1);
    kvOpenSGUtils::call("activateCamera", message, 0);
    ASSERT_EQ(kvOpenSGUtils::getLog().size(), 1u);
    const kvOpenSGUtils::Call& logged = kvOpenSGUtils::getLog().front();
    EXPECT_EQ(logged.name, "activateCamera");
    EXPECT_EQ(boost::any_cast<int>(logged.message.get("n")), 1);
    EXPECT_EQ(logged.flags, 0);
}

TEST_F(HostCall, reachesTheHandlerAfterItIsLogged) {
    std::string heard;
    kvOpenSGUtils::setHandler([&](const std::string& name, const kvMessage&, int flags) {
        heard = name + std::to_string(flags) + std::to_string(kvOpenSGUtils::getLog().size());
    });
    kvOpenSGUtils::call("go", kvMessage(), 3);
    EXPECT_EQ(heard, "go31");
}

TEST_F(HostCall, theHandlerMayInstallAnotherOne) {
    int first = 0, second = 0;
    kvOpenSGUtils::setHandler([&](const std::string&, const kvMessage&, int) {
        ++first;
        kvOpenSGUtils::setHandler([&](const std::string&, const kvMessage&, int) { ++second; });
    });
    kvOpenSGUtils::call("a", kvMessage(), 0);
    kvOpenSGUtils::call("b", kvMessage(), 0);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST_F(HostCall, settingAHandlerGivesBackTheOneBefore) {
    int heard = 0;
    EXPECT_FALSE(
        kvOpenSGUtils::setHandler([&](const std::string&, const kvMessage&, int) { ++heard; }));
    const kvOpenSGUtils::Handler before = kvOpenSGUtils::setHandler(nullptr);
    ASSERT_TRUE(before);
    before("x", kvMessage(), 0);
    EXPECT_EQ(heard, 1);
}

TEST_F(HostCall, theLogForgetsTheOldestWhenItIsFull) {
    for (std::size_t i = 0; i < kvOpenSGUtils::kLogLength; ++i)
        kvOpenSGUtils::call("old", kvMessage(), static_cast<int>(i));
    EXPECT_EQ(kvOpenSGUtils::getLog().size(), kvOpenSGUtils::kLogLength);
    EXPECT_EQ(kvOpenSGUtils::getLog().front().flags, 0);
    kvOpenSGUtils::call("new", kvMessage(), -1);
    EXPECT_EQ(kvOpenSGUtils::getLog().size(), kvOpenSGUtils::kLogLength);
    EXPECT_EQ(kvOpenSGUtils::getLog().front().flags, 1);
    EXPECT_EQ(kvOpenSGUtils::getLog().back().name, "new");
}

} // namespace
