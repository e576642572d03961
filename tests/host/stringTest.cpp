// Lists of floats to and from text.
#include "support/commaLocale.h"

#include <kvString.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

namespace {

typedef std::vector<float> Floats;

Floats read(const std::string& text) {
    return kvString::getValuesFromString(text);
}
std::string write(const Floats& values) {
    return kvString::createStringFromValues(values);
}

TEST(StringToValues, splitsAtBlanksTabsLineEndsAndCommas) {
    EXPECT_EQ(read("1 2\t3\n4\r\n5,6, 7"), (Floats{1, 2, 3, 4, 5, 6, 7}));
}

TEST(StringToValues, emptyTextAndSeparatorsAloneHoldNothing) {
    EXPECT_TRUE(read("").empty());
    EXPECT_TRUE(read(" ,\t\n, ").empty());
}

TEST(StringToValues, readsWhatOpenSGPrints) {
    EXPECT_EQ(read("1.000000e+00  2.500000e-01  -3.000000e+02"), (Floats{1.0f, 0.25f, -300.0f}));
}

TEST(StringToValues, leavesOutWhatIsNoNumberAsAWhole) {
    EXPECT_EQ(read("1 x 2"), (Floats{1, 2}));
    EXPECT_TRUE(read("TRUE FALSE 12px 0x10 1e \"3\" - + . +-1 -+1 1;2").empty());
}

TEST(StringToValues, takesSignsPointsAndExponents) {
    EXPECT_EQ(read("+1.5 -.5 5. 1E3 2e-2"), (Floats{1.5f, -0.5f, 5.0f, 1000.0f, 0.02f}));
}

TEST(StringToValues, takesNotANumberAndInfinity) {
    const Floats values = read("nan -nan inf -INF infinity");
    ASSERT_EQ(values.size(), 5u);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[2], std::numeric_limits<float>::infinity());
    EXPECT_EQ(values[3], -std::numeric_limits<float>::infinity());
    EXPECT_EQ(values[4], std::numeric_limits<float>::infinity());
}

TEST(StringToValues, beyondTheRangeOfAFloatIsInfiniteOrZero) {
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(read("3.4028235e38"), Floats{std::numeric_limits<float>::max()});
    EXPECT_EQ(read("3.4028236e38 1e39 -1e39 1e400 -1e400"), (Floats{inf, inf, -inf, inf, -inf}));
    EXPECT_EQ(read("1e-46 1e-400 0e-400"), (Floats{0, 0, 0}));
    EXPECT_EQ(read("1.4e-45"), Floats{std::numeric_limits<float>::denorm_min()});
    const Floats negative = read("-1e-400");
    ASSERT_EQ(negative.size(), 1u);
    EXPECT_EQ(negative[0], 0.0f);
    EXPECT_TRUE(std::signbit(negative[0]));
}

TEST(StringToValues, readsIntoAVectorThatIsKept) {
    Floats values{9, 9, 9};
    kvString::getValuesFromString("1 2", values);
    EXPECT_EQ(values, (Floats{1, 2}));
    kvString::getValuesFromString("", values);
    EXPECT_TRUE(values.empty());
}

TEST(ValuesToString, usesTheFewestDigitsWithoutAnExponent) {
    EXPECT_EQ(write({0.1f, -2.0f, 0.0f, -0.0f, 1e-7f, 16777216.0f}),
              "0.1 -2 0 -0 0.0000001 16777216");
    EXPECT_EQ(write({1.57079637f}), "1.5707964");
}

TEST(ValuesToString, ofNothingIsEmpty) {
    EXPECT_EQ(write({}), "");
}

TEST(ValuesToString, namesWhatIsNotFinite) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(write({nan, -nan, inf, -inf}), "nan nan inf -inf");
}

TEST(ValuesToString, everyFloatReadsBackBitForBit) {
    std::mt19937 random(20240229);
    for (int i = 0; i < 200000; ++i) {
        const std::uint32_t bits = static_cast<std::uint32_t>(random());
        float value;
        std::memcpy(&value, &bits, sizeof(value));
        if (std::isnan(value)) continue;
        const std::string text = write({value});
        EXPECT_EQ(text.find_first_of("eE,"), std::string::npos) << text;
        const Floats back = read(text);
        ASSERT_EQ(back.size(), 1u) << text;
        EXPECT_EQ(std::memcmp(&back[0], &value, sizeof(value)), 0) << text;
    }
}

TEST(ValuesToString, theExtremesReadBack) {
    const Floats extremes{std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest(),
                          std::numeric_limits<float>::min(),
                          -std::numeric_limits<float>::denorm_min()};
    EXPECT_EQ(read(write(extremes)), extremes);
}

TEST(ValuesToString, doesNotFollowALocaleWithADecimalComma) {
    const kvtest::CommaLocale comma;
    EXPECT_EQ(write({0.5f, 1234567.0f}), "0.5 1234567");
    EXPECT_EQ(read("0.5 1234567 1,5"), (Floats{0.5f, 1234567.0f, 1.0f, 5.0f}));
    RecordProperty("localeWithCommaFound", comma.isInstalled() ? 1 : 0);
}

} // namespace
