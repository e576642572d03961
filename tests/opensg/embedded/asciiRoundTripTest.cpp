// What only the writer of the embedded scene graph keeps in a text. OpenSG's keeps seven digits of
// a number, follows the locale, turns any blanks into one, escapes nothing, uses names that are no
// words, or that two nodes have, for what it refers to, and breaks no lines between vectors; its
// reader has no tokens for many types of values.
#include "opensg/asciiRoundTrip.h"
#include "opensg/embedded/fileContainers.h"
#include "support/commaLocale.h"

#include <OpenSG/OSGLoader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <set>
#include <sstream>

using namespace osg;
using namespace asciiRoundTrip;

namespace {

typedef std::vector<std::string> Lines;

bool sameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(AsciiRoundTrip, everyFloatComesBackBitForBit) {
    std::vector<float> floats = {0.f,
                                 -0.f,
                                 1.f / 3,
                                 1.57079637f,
                                 16777217.f,
                                 (std::numeric_limits<float>::max)(),
                                 -(std::numeric_limits<float>::max)(),
                                 (std::numeric_limits<float>::min)(),
                                 std::numeric_limits<float>::denorm_min(),
                                 -5 * std::numeric_limits<float>::denorm_min()};
    std::mt19937 random(7);
    while (floats.size() < 20000) {
        const std::uint32_t bits = static_cast<std::uint32_t>(random());
        float value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) floats.push_back(value);
    }
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (const float value : floats)
        values->getReal32s().push_back(value);
    values->setReal32(1.f / 3);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const FileValuesPtr found = copy.attachment<FileValues>();
    ASSERT_EQ(found->getReal32s().size(), floats.size());
    for (std::size_t i = 0; i < floats.size(); ++i)
        ASSERT_TRUE(sameBits(found->getReal32s()[i], floats[i])) << floats[i];
    EXPECT_TRUE(sameBits(found->getReal32(), 1.f / 3));
}

TEST(AsciiRoundTrip, floatsHaveNoMoreDigitsThanTheyNeed) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    values->setReal32(0.1f);
    attach<FileRareValues>(scene.root())->setReal64(0.1);
    values->setVec2f(Vec2f(1.57079637f, -2));
    const std::string text = writeText(scene.root());
    EXPECT_TRUE(contains(text, "real32 0.1\n"));
    EXPECT_TRUE(contains(text, "real64 0.1\n"));
    EXPECT_TRUE(contains(text, "vec2f 1.5707964 -2\n"));
}

TEST(AsciiRoundTrip, everyDoubleComesBackBitForBit) {
    const double doubles[] = {0.1, 1. / 3, -1e308, 4.9406564584124654e-324, 123456789.123456789};
    for (const double value : doubles) {
        const Scene scene(makeNode());
        attach<FileRareValues>(scene.root())->setReal64(value);
        const Copy copy(scene);
        ASSERT_NE(copy.root(), NullFC);
        EXPECT_EQ(copy.attachment<FileRareValues>()->getReal64(), value);
    }
}

TEST(AsciiRoundTrip, numbersThatAreNotFiniteComeBackWithOneWarning) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    const float inf = std::numeric_limits<float>::infinity();
    for (const float value : {std::numeric_limits<float>::quiet_NaN(), inf, -inf})
        values->getReal32s().push_back(value);
    values->setVec2f(Vec2f(-std::numeric_limits<float>::quiet_NaN(), 1));
    attach<FileRareValues>(scene.root())->setReal64(-std::numeric_limits<double>::infinity());
    LogLines log;
    const Copy copy(scene);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_TRUE(contains(log.take()[0], "not finite"));
    EXPECT_TRUE(contains(copy.text(), "nan, inf, -inf\n"));
    EXPECT_TRUE(contains(copy.text(), "vec2f nan 1\n"));
    const FileValuesPtr found = copy.attachment<FileValues>();
    EXPECT_TRUE(std::isnan(found->getReal32s()[0]));
    EXPECT_EQ(found->getReal32s()[1], inf);
    EXPECT_EQ(found->getReal32s()[2], -inf);
    EXPECT_TRUE(std::isnan(found->getVec2f()[0]));
    EXPECT_EQ(copy.attachment<FileRareValues>()->getReal64(),
              -std::numeric_limits<double>::infinity());
}

TEST(AsciiRoundTrip, valuesOfTypesThatOpenSGsReaderHasNoTokenFor) {
    const Scene scene(makeNode());
    const FileRareValuesPtr values = attach<FileRareValues>(scene.root());
    values->setInt64((std::numeric_limits<Int64>::min)());
    values->setUInt64((std::numeric_limits<UInt64>::max)());
    values->setMask(1ull << 63);
    values->setVec4d(Vec4d(0.1, 0.2, 1e-300, 4));
    values->setVec3s(Vec3s(-1, 2, 32767));
    values->getMatrices().push_back(someMatrix());
    values->getMatrices().push_back(Matrix());
    for (const bool value : {true, false, true})
        values->getBools().push_back(value);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const FileRareValuesPtr found = copy.attachment<FileRareValues>();
    EXPECT_EQ(found->getInt64(), (std::numeric_limits<Int64>::min)());
    EXPECT_EQ(found->getUInt64(), (std::numeric_limits<UInt64>::max)());
    EXPECT_EQ(found->getMask(), 1ull << 63);
    for (UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(found->getVec4d()[i], values->getVec4d()[i]);
    EXPECT_EQ(found->getVec3s()[2], 32767);
    ASSERT_EQ(found->getMatrices().size(), 2u);
    EXPECT_TRUE(found->getMatrices()[0].equals(someMatrix(), 0));
    ASSERT_EQ(found->getBools().size(), 3u);
    EXPECT_FALSE(found->getBools()[1]);
}

TEST(AsciiRoundTrip, spheresStaySpheres) {
    const Scene scene(makeNode());
    DynamicVolume sphere;
    sphere.setSphere(Pnt3f(1, 2, 1.f / 3), 5);
    attach<FileValues>(scene.root())->setVolume(sphere);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const FileValuesPtr found = copy.attachment<FileValues>();
    EXPECT_EQ(found->getVolume().getType(), DynamicVolume::SPHERE_VOLUME);
    Pnt3f center;
    found->getVolume().getCenter(center);
    EXPECT_TRUE(sameBits(center[2], 1.f / 3));
}

TEST(AsciiRoundTrip, rotationsComeBackWithinTheLastBitAndThenStay) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> numbers(-1, 1);
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (unsigned i = 0; i < 200; ++i) {
        Quaternion rotation;
        rotation.setValueAsQuat(numbers(random), numbers(random), numbers(random), numbers(random));
        rotation.normalize();
        values->setQuaternion(rotation);
        const Copy once(scene);
        const Quaternion first = once.attachment<FileValues>()->getQuaternion();
        for (UInt32 k = 0; k < 4; ++k)
            EXPECT_NEAR(first[k], rotation[k], 1.2e-7f);
        values->setQuaternion(first);
        const Copy twice(scene);
        const Quaternion second = twice.attachment<FileValues>()->getQuaternion();
        for (UInt32 k = 0; k < 4; ++k)
            EXPECT_NEAR(second[k], first[k], 6e-8f);
    }
    values->setQuaternion(Quaternion());
    EXPECT_TRUE(contains(Copy(scene).text(), "quaternion 0 0 1 0\n"));
}

TEST(AsciiRoundTrip, textsComeBackToTheLetter) {
    const std::string texts[] = {"",
                                 "plain",
                                 "two  words\tand\n lines \r\n",
                                 " leading and trailing ",
                                 "\"",
                                 "\\",
                                 "a \"quoted\" word",
                                 "C:\\dir\\\"file\"\\",
                                 "# { } [ ] , '",
                                 "\xC3\xA4\xE6\x89\x8B",
                                 std::string(1000, 'x')};
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (const std::string& text : texts) {
        values->setString(text);
        const Copy copy(scene);
        ASSERT_NE(copy.root(), NullFC) << text;
        EXPECT_EQ(copy.attachment<FileValues>()->getString(), text);
        values->getStrings().push_back(text);
    }
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const FileValuesPtr found = copy.attachment<FileValues>();
    ASSERT_EQ(found->getStrings().size(), std::size(texts));
    for (UInt32 i = 0; i < std::size(texts); ++i)
        EXPECT_EQ(found->getStrings()[i], texts[i]);
}

TEST(AsciiRoundTrip, longTextsAndListsGoBeyondEveryBuffer) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    values->setString(std::string(3000000, 'y') + "\"");
    for (unsigned i = 0; i < 300000; ++i)
        values->getReal32s().push_back(static_cast<float>(i) / 3);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_EQ(copy.attachment<FileValues>()->getString(), values->getString());
    EXPECT_TRUE(copy.attachment<FileValues>()->getReal32s().getValues() ==
                values->getReal32s().getValues());
}

TEST(AsciiRoundTrip, listsAreBrokenIntoLines) {
    const Scene scene(makeNode());
    const FileValuesPtr values = attach<FileValues>(scene.root());
    for (int i = 0; i < 100; ++i)
        values->getVec3fs().push_back(Vec3f(0.25f, 0.5f, 0.75f));
    std::istringstream text(writeText(scene.root()));
    for (std::string line; std::getline(text, line);)
        EXPECT_LT(line.size(), 100u);
}

// --- names and shared containers ---------------------------------------------------------------

/// Two nodes of one name, each the target of a sheet, so that both get names in the text.
class SharedNames : public ::testing::TestWithParam<const char*> {};

TEST_P(SharedNames, comeBackWhateverTheyAre) {
    const Scene scene(makeNode());
    for (unsigned i = 0; i < 2; ++i) {
        const NodePtr child = makeNode();
        setName(child, GetParam());
        child->setTravMask(i + 1);
        const NodePtr carrier = makeNode();
        scene->addChild(child);
        scene->addChild(carrier);
        attach<FileSheet>(carrier)->setTarget(child);
    }
    LogLines log;
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    EXPECT_EQ(log.take(), Lines());
    ASSERT_EQ(copy.root()->getNChildren(), 4u);
    for (UInt32 i = 0; i < 2; ++i) {
        const NodePtr child = copy.root()->getChild(2 * i);
        EXPECT_EQ(nameOf(child), GetParam());
        EXPECT_EQ(child->getTravMask(), i + 1);
        const AttachmentPtr sheet =
            copy.root()->getChild(2 * i + 1)->findAttachment(FileSheet::getClassType());
        EXPECT_EQ(FileSheetPtr::dcast(sheet)->getTarget(), child);
    }
    // The names in the text are such as every reader accepts, and differ.
    std::istringstream text(copy.text());
    std::set<std::string> names;
    for (std::string word; text >> word;) {
        if (word != "DEF") continue;
        text >> word;
        EXPECT_TRUE(names.insert(word).second);
        EXPECT_EQ(word.find_first_of("\"#'+,-.[]\\{}0123456789"),
                  word.find_first_of("0123456789") == 0 ? std::string::npos
                                                        : word.find_first_of("0123456789"));
        EXPECT_NE(word, "TRUE");
        std::string type;
        text >> type;
        EXPECT_EQ(type, "Node");
    }
    EXPECT_EQ(names.size(), 2u);
    const bool valid = std::string(GetParam()) == "arm" || std::string(GetParam()) == "\xC3\xA4rm";
    EXPECT_EQ(names.count(GetParam()), valid ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(AsciiRoundTrip, SharedNames,
                         ::testing::Values("arm", "my arm", "arm.001", "1st", "", "a\"b", "'", "#",
                                           "[x]", "DEF", "NULL", "TRUE", "false", "SFBool",
                                           "MFVec3f", "PROTO", "a\\b", "a,b", "a\nb", "\xC3\xA4rm",
                                           "-x", "+x"));

TEST(AsciiRoundTrip, aMadeUpNameGivesWayToOneThatIsTaken) {
    const Scene scene(makeNode());
    const NodePtr unnamed = makeNode();
    const NodePtr named = makeNode();
    setName(named, "Node" + std::to_string(getContainerId(unnamed)));
    scene->addChild(named);
    scene->addChild(unnamed);
    for (const NodePtr& child : {named, unnamed})
        attach<FileSheet>(child)->setTarget(child == named ? unnamed : named);
    const Copy copy(scene);
    ASSERT_NE(copy.root(), NullFC);
    const NodePtr first = copy.root()->getChild(0);
    const NodePtr second = copy.root()->getChild(1);
    const auto sheetOf = [](const NodePtr& node) {
        return FileSheetPtr::dcast(node->findAttachment(FileSheet::getClassType()));
    };
    EXPECT_EQ(sheetOf(first)->getTarget(), second);
    EXPECT_EQ(sheetOf(second)->getTarget(), first);
    EXPECT_EQ(nameOf(first), nameOf(named));
    // Circles of references have to be opened by hand.
    for (const NodePtr& node : {first, second, named, unnamed})
        sheetOf(node)->setTarget(NullFC);
}

TEST(AsciiRoundTrip, internalAttachmentsAndFieldsAreLeftOut) {
    const Scene scene(makeNode());
    setName(scene.root(), "secret");
    scene->findAttachment(Name::getClassType())->setInternal(true);
    const FileSecretPtr item = FileSecret::create();
    item->setSecret(7);
    attach<FileSheet>(scene.root())->setAnything(item);
    // A node that is shared must not betray its internal name either.
    const NodePtr child = makeNode();
    setName(child, "hidden");
    child->findAttachment(Name::getClassType())->setInternal(true);
    scene->addChild(child);
    FileSheetPtr::dcast(scene->findAttachment(FileSheet::getClassType()))->setTarget(child);
    const std::string text = writeText(scene.root());
    EXPECT_FALSE(contains(text, "secret"));
    EXPECT_FALSE(contains(text, "hidden"));
    EXPECT_FALSE(contains(text, "parent"));
    EXPECT_FALSE(Scene(readText(text)).isNull());
}

TEST(AsciiRoundTrip, theLocaleDoesNotMatter) {
    const Scene scene(readText(testData("cores.osg")));
    ASSERT_FALSE(scene.isNull());
    FileValuesPtr values = FileValues::create();
    values->setReal32(1234567.5f);
    values->setUInt32(1234567);
    scene->addAttachment(values);
    const std::string text = writeText(scene.root());
    const std::string binary = writeText(Scene(readText(text)).root(), "osb");
    ASSERT_TRUE(contains(text, "real32 1234567.5\n"));

    const kvtest::CommaLocale comma;
    EXPECT_EQ(writeText(scene.root()), text);
    const Scene copy(readText(text));
    ASSERT_FALSE(copy.isNull());
    const FileValuesPtr read = copy.attachment<FileValues>(copy.at({0}));
    EXPECT_EQ(read->getReal32(), 1234567.5f);
    EXPECT_EQ(read->getUInt32(), 1234567u);
    EXPECT_EQ(writeText(copy.root(), "osb").size(), binary.size());
    EXPECT_EQ(writeText(copy.at({0})), text);
    RecordProperty("localeWithCommaFound", comma.isInstalled() ? 1 : 0);
}

// --- the writer and the loader by themselves ---------------------------------------------------

TEST(AsciiRoundTrip, aSceneThatNobodyAsksTheLoaderForGoesWithIt) {
    const std::size_t before = countContainers();
    {
        OSGLoader loader;
        std::istringstream stream("Node { travMask 3 }");
        loader.scanStream(stream);
        loader.scanFile((std::string(KV_TEST_DATA) + "/cores.osg").c_str());
    }
    EXPECT_EQ(countContainers(), before);
}

} // namespace
