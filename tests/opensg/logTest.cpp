// The log: levels, where lines go, what they look like.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGLog.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using namespace osg;

class LogLines : public ::testing::Test {
  protected:
    void SetUp() override {
        _level = osgLog().getLogLevel();
        _type = osgLog().getLogType();
        osgLog().setLogLevel(LOG_WARNING);
        osgLog().setLogType(LOG_STDERR);
        ::testing::internal::CaptureStderr();
    }
    void TearDown() override {
        osgLog().setLogLevel(_level);
        osgLog().setLogType(_type);
    }
    static std::string lines() { return ::testing::internal::GetCapturedStderr(); }

  private:
    LogLevel _level = LOG_WARNING;
    LogType _type = LOG_STDERR;
};

TEST_F(LogLines, beginWithTheirLevel) {
    SWARNING << "the number is " << 7 << std::endl;
    EXPECT_EQ(lines(), "WARNING:  the number is 7\n");
}

TEST_F(LogLines, areFormattedAsByPrintf) {
    FWARNING(("%s is %d\n", "six", 6));
    EXPECT_EQ(lines(), "WARNING:  six is 6\n");
}

TEST_F(LogLines, ofLessImportanceAreLeftOut) {
    SNOTICE << "a" << std::endl;
    SINFO << "b" << std::endl;
    FDEBUG(("c\n"));
    FNOTICE(("d\n"));
    EXPECT_EQ(lines(), "");
}

TEST_F(LogLines, ofTheLevelAskedForAreShown) {
    osgLog().setLogLevel(LOG_NOTICE);
    SNOTICE << "a" << std::endl;
    SINFO << "b" << std::endl;
    const std::string text = lines();
    EXPECT_NE(text.find("a\n"), std::string::npos);
    EXPECT_EQ(text.find("b\n"), std::string::npos);
}

TEST_F(LogLines, withoutLevelAreAlwaysShown) {
    osgLog().setLogLevel(LOG_FATAL);
    SWARNING << "hidden" << std::endl;
    SLOG << "shown" << std::endl;
    const std::string text = lines();
    EXPECT_EQ(text.find("hidden"), std::string::npos);
    EXPECT_NE(text.find("shown\n"), std::string::npos);
    EXPECT_EQ(text.compare(0, 4, "LOG:"), 0) << text;
}

TEST_F(LogLines, areAllSilencedByNone) {
    osgLog().setLogType(LOG_NONE);
    SLOG << "a" << std::endl;
    SFATAL << "b" << std::endl;
    FWARNING(("c\n"));
    EXPECT_EQ(lines(), "");
}

TEST_F(LogLines, canBeContinued) {
    SWARNING << "one";
    PWARNING << ", two" << std::endl;
    EXPECT_EQ(lines(), "WARNING:  one, two\n");
}

} // namespace
