// The text of every value type: what fields print, and what they make of text that somebody typed.
// Expected texts are OpenSG 1.8's.

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGSysFieldDataType.h>
#include <OpenSG/OSGVecFieldDataType.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace {

template <class T, template <class> class Traits = osg::FieldDataTraits>
std::string textOf(const T& value) {
    std::string text("left over");
    Traits<T>::putToString(value, text);
    return text;
}

template <class T, template <class> class Traits = osg::FieldDataTraits>
T parsed(const char* text, T start = T()) {
    Traits<T>::getFromString(start, text);
    return start;
}

bool readBool(const char* text, bool before) {
    return parsed<bool, osg::FieldDataTraits2>(text, before);
}

TEST(BoolText, isWrittenInCapitals) {
    EXPECT_EQ((textOf<bool, osg::FieldDataTraits2>(true)), "TRUE");
    EXPECT_EQ((textOf<bool, osg::FieldDataTraits2>(false)), "FALSE");
}

TEST(BoolText, readsWordsInAnyLetterCaseByTheirStart) {
    for (const char* text : {"TRUE", "true", "True", "tRuE", "truest"})
        EXPECT_TRUE(readBool(text, false)) << text;
    for (const char* text : {"FALSE", "false", "False", "falsehood"})
        EXPECT_FALSE(readBool(text, true)) << text;
}

TEST(BoolText, leavesTheValueAloneForAnythingElse) {
    for (const char* text : {"1", "0", "1.0", "", "tru", "fals", "yes", " true"}) {
        EXPECT_TRUE(readBool(text, true)) << text;
        EXPECT_FALSE(readBool(text, false)) << text;
    }
}

TEST(IntegerText, isDecimal) {
    EXPECT_EQ(textOf<osg::Int8>(-128), "-128");
    EXPECT_EQ(textOf<osg::UInt8>(65), "65");
    EXPECT_EQ(textOf<osg::UInt32>(4294967295u), "4294967295");
    EXPECT_EQ(textOf<osg::UInt64>(18446744073709551615ull), "18446744073709551615");
    EXPECT_EQ(textOf<osg::Int64>(std::numeric_limits<osg::Int64>::min()), "-9223372036854775808");
    EXPECT_EQ((textOf<GLenum, osg::FieldDataTraits1>(4609)), "4609");
}

TEST(IntegerText, readsDecimalHexadecimalAndOctal) {
    EXPECT_EQ(parsed<osg::Int32>("10"), 10);
    EXPECT_EQ(parsed<osg::Int32>("0x1f"), 31);
    EXPECT_EQ(parsed<osg::Int32>("010"), 8);
    EXPECT_EQ(parsed<osg::Int32>("  -42"), -42);
    EXPECT_EQ(parsed<osg::Int32>("+7"), 7);
}

TEST(IntegerText, stopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(parsed<osg::Int32>("-3.7"), -3);
    EXPECT_EQ(parsed<osg::Int32>("1.000000e+01"), 1);
    EXPECT_EQ(parsed<osg::Int32>("089"), 0);
    EXPECT_EQ(parsed<osg::Int32>("word", 5), 0);
    EXPECT_EQ(parsed<osg::Int32>("", 5), 0);
    EXPECT_EQ(parsed<osg::UInt32>("0x", 5), 0u);
}

TEST(IntegerText, wrapsIntoNarrowTypes) {
    EXPECT_EQ(parsed<osg::UInt8>("255"), 255);
    EXPECT_EQ(parsed<osg::UInt8>("256"), 0);
    EXPECT_EQ(parsed<osg::UInt8>("300"), 44);
    EXPECT_EQ(parsed<osg::Int8>("127"), 127);
    EXPECT_EQ(parsed<osg::Int8>("128"), -128);
    EXPECT_EQ(parsed<osg::Int16>("32768"), -32768);
    EXPECT_EQ(parsed<osg::UInt16>("65537"), 1);
    EXPECT_EQ(parsed<osg::UInt32>("-1"), 4294967295u);
}

TEST(IntegerText, keepsAll64Bits) {
    EXPECT_EQ(parsed<osg::UInt64>("18446744073709551615"), 18446744073709551615ull);
    EXPECT_EQ(parsed<osg::Int64>("-9223372036854775808"), std::numeric_limits<osg::Int64>::min());
}

TEST(RealText, hasSevenDigits) {
    EXPECT_EQ(textOf<osg::Real32>(0.1f), "1.000000e-01");
    EXPECT_EQ(textOf<osg::Real32>(-0.f), "-0.000000e+00");
    EXPECT_EQ(textOf<osg::Real32>(1.57079637f), "1.570796e+00");
    EXPECT_EQ(textOf<osg::Real32>(1.f / 3.f), "3.333333e-01");
    EXPECT_EQ(textOf<osg::Real32>(1e30f), "1.000000e+30");
    EXPECT_EQ(textOf<osg::Real64>(1e300), "1.000000e+300");
    EXPECT_EQ(textOf<osg::Real64>(123456789.), "1.234568e+08");
    EXPECT_EQ((textOf<osg::Time, osg::FieldDataTraits1>(0.5)), "5.000000e-01");
}

TEST(RealText, namesWhatIsNotFinite) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(textOf<osg::Real32>(infinity), "inf");
    EXPECT_EQ(textOf<osg::Real32>(-infinity), "-inf");
    EXPECT_EQ(textOf<osg::Real32>(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(RealText, readsAllThatTheCLibraryReads) {
    EXPECT_EQ(parsed<osg::Real32>("1.5"), 1.5f);
    EXPECT_EQ(parsed<osg::Real32>(" \t\n\r\v\f-2"), -2.f);
    EXPECT_EQ(parsed<osg::Real32>("+.5"), .5f);
    EXPECT_EQ(parsed<osg::Real32>("5."), 5.f);
    EXPECT_EQ(parsed<osg::Real32>("1e2"), 100.f);
    EXPECT_EQ(parsed<osg::Real32>("1E-2"), .01f);
    EXPECT_EQ(parsed<osg::Real32>("0x1.8p1"), 3.f);
    EXPECT_EQ(parsed<osg::Real32>("-0X.8"), -.5f);
    EXPECT_EQ(parsed<osg::Real32>("inf"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(parsed<osg::Real32>("-INFINITY"), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(parsed<osg::Real32>("nan")));
    EXPECT_TRUE(std::signbit(parsed<osg::Real32>("-0.0")));
    EXPECT_EQ(parsed<osg::Real64>("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(RealText, ignoresTextAfterTheNumber) {
    EXPECT_EQ(parsed<osg::Real32>("1.5 2.5"), 1.5f);
    EXPECT_EQ(parsed<osg::Real32>("1,5"), 1.f);
    EXPECT_EQ(parsed<osg::Real32>("2e"), 2.f);
    EXPECT_EQ(parsed<osg::Real32>("2e+"), 2.f);
    EXPECT_EQ(parsed<osg::Real32>("0x"), 0.f);
    EXPECT_EQ(parsed<osg::Real32>("0xg"), 0.f);
}

TEST(RealText, isZeroForJunk) {
    for (const char* text : {"", " ", "word", ";1", "[1", "--1", "+-1", "-+1", ".", "e5"})
        EXPECT_EQ(parsed<osg::Real32>(text, 9.f), 0.f) << text;
}

TEST(RealText, goesToInfinityAndToZeroAtTheEndsOfTheRange) {
    EXPECT_EQ(parsed<osg::Real32>("3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(parsed<osg::Real32>("3.5e38"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(parsed<osg::Real32>("-1e999999999999999999999"),
              -std::numeric_limits<float>::infinity());
    EXPECT_EQ(parsed<osg::Real32>("1e-45"), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(parsed<osg::Real32>("1e-60"), 0.f);
    EXPECT_TRUE(std::signbit(parsed<osg::Real32>("-1e-400")));
    EXPECT_EQ(parsed<osg::Real32>("1e-999999999999999999999"), 0.f);
    EXPECT_EQ(parsed<osg::Real32>((std::string(400, '9')).c_str()),
              std::numeric_limits<float>::infinity());
    EXPECT_EQ(parsed<osg::Real32>(("0." + std::string(400, '0') + "1").c_str()), 0.f);
    EXPECT_EQ(parsed<osg::Real32>("0e999999"), 0.f);
    EXPECT_EQ(parsed<osg::Real64>("1e309"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(parsed<osg::Real64>("1e-400"), 0.);
    EXPECT_EQ(parsed<osg::Real64>("0x1p5000"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(parsed<osg::Real64>("0x1p-5000"), 0.);
}

TEST(RealText, doesNotFollowTheLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    bool found = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
        found = found || std::setlocale(LC_NUMERIC, name) != nullptr;
    const std::string text = textOf<osg::Real32>(1.5f);
    const float value = parsed<osg::Real32>("2.5");
    const osg::Vec2f vector = parsed<osg::Vec2f>("1.5, 2.5");
    std::setlocale(LC_NUMERIC, before.c_str());
    EXPECT_EQ(text, "1.500000e+00");
    EXPECT_EQ(value, 2.5f);
    EXPECT_EQ(vector, osg::Vec2f(1.5f, 2.5f));
    RecordProperty("localeWithCommaFound", found ? 1 : 0);
}

TEST(RealText, roundsOnceAndNotAgain) {
    float value = 0.f;
    for (int i = 0; i < 20000; ++i) {
        value += 0.000737f * static_cast<float>(i % 97);
        const float once = parsed<osg::Real32>(textOf(value).c_str());
        EXPECT_LE(std::abs(once - value), 5.2e-7f * std::abs(value));
        EXPECT_EQ(parsed<osg::Real32>(textOf(once).c_str()), once);
    }
}

TEST(VectorText, hasTwoBlanksBetweenItsComponents) {
    EXPECT_EQ(textOf(osg::Vec3f(1, 2, 3)), "1.000000e+00  2.000000e+00  3.000000e+00");
    EXPECT_EQ(textOf(osg::Vec2f(.5f, -1)), "5.000000e-01  -1.000000e+00");
    EXPECT_EQ(textOf(osg::Pnt4f(1, 2, 3, 4)),
              "1.000000e+00  2.000000e+00  3.000000e+00  4.000000e+00");
    EXPECT_EQ(textOf(osg::Vec3s(1, -2, 3)), "1  -2  3");
    EXPECT_EQ(textOf(osg::Vec2ub(65, 66)), "65  66");
    EXPECT_EQ(textOf(osg::Vec2d(.25, 1e300)), "2.500000e-01  1.000000e+300");
}

TEST(VectorText, takesBlanksTabsNewlinesAndCommasBetweenNumbers) {
    EXPECT_EQ(parsed<osg::Vec3f>("1 2 3"), osg::Vec3f(1, 2, 3));
    EXPECT_EQ(parsed<osg::Vec3f>(" 1,2\t3\n"), osg::Vec3f(1, 2, 3));
    EXPECT_EQ(parsed<osg::Vec3f>("1,,\n ,2  ,3"), osg::Vec3f(1, 2, 3));
}

TEST(VectorText, fillsWithZerosAndIgnoresTheRest) {
    const osg::Vec3f before(7, 7, 7);
    EXPECT_EQ(parsed<osg::Vec3f>("", before), osg::Vec3f(0, 0, 0));
    EXPECT_EQ(parsed<osg::Vec3f>("1 2", before), osg::Vec3f(1, 2, 0));
    EXPECT_EQ(parsed<osg::Vec3f>("1 2 3 4", before), osg::Vec3f(1, 2, 3));
    EXPECT_EQ(parsed<osg::Vec3f>("1 word 3", before), osg::Vec3f(1, 0, 3));
}

TEST(VectorText, takesNeitherSemicolonsNorBracketsAsSeparators) {
    EXPECT_EQ(parsed<osg::Vec3f>("1;2;3"), osg::Vec3f(1, 0, 0));
    EXPECT_EQ(parsed<osg::Vec3f>("[1 2 3]"), osg::Vec3f(0, 2, 3));
    EXPECT_EQ(parsed<osg::Vec3f>("(1) 2 3"), osg::Vec3f(0, 2, 3));
}

TEST(ColorText, hasOneBlankBetweenItsComponents) {
    EXPECT_EQ(textOf(osg::Color3f(1, .5f, 0)), "1.000000e+00 5.000000e-01 0.000000e+00");
    EXPECT_EQ(textOf(osg::Color4f(1, .5f, 0, 1)),
              "1.000000e+00 5.000000e-01 0.000000e+00 1.000000e+00");
    EXPECT_EQ(textOf(osg::Color4ub(255, 0, 7, 128)), "255 0 7 128");
}

TEST(ColorText, isReadAsAVectorIs) {
    EXPECT_EQ(parsed<osg::Color3f>("1, 0.5"), osg::Color3f(1, .5f, 0));
    EXPECT_EQ(parsed<osg::Color4f>("1\t2 3 4 5"), osg::Color4f(1, 2, 3, 4));
}

TEST(QuaternionText, isAxisAndRadians) {
    EXPECT_EQ(textOf(osg::Quaternion()), "0.000000e+00 0.000000e+00 1.000000e+00 0.000000e+00");
    EXPECT_EQ(textOf(osg::Quaternion(osg::Vec3f(0, 3, 0), .5f)),
              "0.000000e+00 1.000000e+00 0.000000e+00 5.000000e-01");
}

TEST(QuaternionText, normalisesTheAxisThatItReads) {
    const osg::Quaternion quaternion = parsed<osg::Quaternion>("0 4 0 0.5");
    // sin(0.25) and cos(0.25)
    EXPECT_NEAR(quaternion[1], 0.2474039593, 1e-7);
    EXPECT_NEAR(quaternion[3], 0.9689124217, 1e-7);
    EXPECT_EQ(quaternion[0], 0.f);
    EXPECT_EQ(quaternion[2], 0.f);
}

TEST(QuaternionText, withoutAnAxisIsTheIdentity) {
    const osg::Quaternion before(osg::Vec3f(1, 0, 0), 1);
    EXPECT_EQ(parsed<osg::Quaternion>("0 0 0 2", before), osg::Quaternion());
    EXPECT_EQ(parsed<osg::Quaternion>("", before), osg::Quaternion());
}

TEST(MatrixText, goesRowByRow) {
    const osg::Matrix matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    std::string expected;
    for (int i = 1; i <= 16; ++i)
        expected += (i > 1 ? " " : "") + textOf(static_cast<float>(i));
    EXPECT_EQ(textOf(matrix), expected);
    EXPECT_EQ(parsed<osg::Matrix>(expected.c_str()), matrix);
    EXPECT_EQ(parsed<osg::Matrix>("1 0 0 5")[3][0], 5.f);
    EXPECT_EQ(parsed<osg::Matrix>("1 0 0 5")[3][3], 0.f);
}

TEST(StringText, getsQuotesThatAreNotTakenOffAgain) {
    EXPECT_EQ(textOf(std::string("a \"b\" \\")), "\"a \"b\" \\\"");
    EXPECT_EQ(textOf(std::string()), "\"\"");
    EXPECT_EQ(parsed<std::string>("\"quoted\""), "\"quoted\"");
    EXPECT_EQ(parsed<std::string>("  plain "), "  plain ");
}

} // namespace
