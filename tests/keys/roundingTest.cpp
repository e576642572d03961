// Rounding half away from zero, and the constants that are told by their bits.
#include "keys/rounding.h"
#include "keys/constants.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

using kv::detail::roundHalfAway;

TEST(Rounding, halvesGoAwayFromZero) {
    EXPECT_EQ(roundHalfAway(0.5), 1);
    EXPECT_EQ(roundHalfAway(-0.5), -1);
    EXPECT_EQ(roundHalfAway(2.5), 3);
    EXPECT_EQ(roundHalfAway(-2.5), -3);
}

TEST(Rounding, belowAHalfGoesToZero) {
    EXPECT_EQ(roundHalfAway(0.49), 0);
    EXPECT_EQ(roundHalfAway(-0.49), 0);
    EXPECT_EQ(roundHalfAway(-0.0), 0);
}

TEST(Rounding, theSumWithAHalfIsRoundedBeforeItIsCut) {
    // The largest number below a half: adding a half gives 1 exactly. Not what std::round does.
    const double belowHalf = std::nextafter(0.5, 0.0);
    EXPECT_EQ(roundHalfAway(belowHalf), 1);
    EXPECT_EQ(std::lround(belowHalf), 0);
    EXPECT_EQ(roundHalfAway(-belowHalf), -1);
}

TEST(Rounding, theEndsOfIntAreReached) {
    EXPECT_EQ(roundHalfAway(2147483647.0), INT_MAX);
    EXPECT_EQ(roundHalfAway(2147483647.25), INT_MAX);
    EXPECT_EQ(roundHalfAway(-2147483648.0), INT_MIN);
    EXPECT_EQ(roundHalfAway(-2147483648.25), INT_MIN);
}

TEST(Rounding, whatDoesNotFitGivesTheSmallestInt) {
    EXPECT_EQ(roundHalfAway(2147483647.5), INT_MIN);
    EXPECT_EQ(roundHalfAway(-2147483648.5), INT_MIN);
    EXPECT_EQ(roundHalfAway(1e300), INT_MIN);
    EXPECT_EQ(roundHalfAway(-1e300), INT_MIN);
    EXPECT_EQ(roundHalfAway(std::numeric_limits<double>::infinity()), INT_MIN);
    EXPECT_EQ(roundHalfAway(std::numeric_limits<double>::quiet_NaN()), INT_MIN);
}

TEST(Constants, theSentinelHasItsBits) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &kv::detail::kNoCurveValue, sizeof bits);
    EXPECT_EQ(bits, 0xE5A96816U);
    EXPECT_EQ(kv::detail::kFrameMin, kv::detail::kNoCurveValue);
    EXPECT_EQ(kv::detail::kFrameMax, -kv::detail::kNoCurveValue);
}

TEST(Constants, piIsCutAfterElevenDecimals) {
    EXPECT_EQ(kv::detail::kTruncatedPi, 3.14159265358);
    EXPECT_LT(kv::detail::kTruncatedPi, std::acos(-1.0));
}
