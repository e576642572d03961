// Compressed scenes where the embedded scene graph goes further than OpenSG: there the extension
// alone compresses nothing, what is cut off or damaged takes several lines of the log or is half
// read, and nothing bounds what a file unpacks to.

#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGGroup.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace osg;

namespace {

std::string compressed(const NodePtr& root, const char* extension) {
    std::ostringstream stream;
    EXPECT_TRUE(SceneFileHandler::the().write(root, stream, extension, true));
    return stream.str();
}

TEST(CompressedScene, theExtensionAsksForIt) {
    const Scene scene(makeCoredNode<Group>());
    for (const char* extension : {"osg.gz", "osb.gz", "OSG.GZ"}) {
        const std::string packed = writeText(scene.root(), extension);
        EXPECT_EQ(packed.substr(0, 2), "\x1f\x8b") << extension;
        EXPECT_FALSE(Scene(readText(packed, extension)).isNull()) << extension;
    }
}

TEST(CompressedScene, isKnownByItsContents) {
    const Scene scene(makeCoredNode<Group>());
    EXPECT_FALSE(Scene(readText(writeText(scene.root(), "osg.gz"), "osg")).isNull());
    EXPECT_FALSE(Scene(readText(writeText(scene.root(), "osg"), "osg.gz")).isNull());
}

TEST(CompressedScene, severalPackedPartsAreOneFile) {
    const Scene scene(makeCoredNode<Group>());
    const std::string packed = writeText(scene.root(), "osg.gz");
    const Scene both(readText(packed + packed, "osg.gz"));
    ASSERT_FALSE(both.isNull());
    EXPECT_EQ(both->getNChildren(), 2u);
    // Padding of zeros, as on tapes.
    EXPECT_FALSE(Scene(readText(packed + std::string(100, '\0'), "osg.gz")).isNull());
}

TEST(CompressedScene, cutOffAnywhereIsRefusedInOneLine) {
    const Scene scene(makeCoredNode<Group>());
    const std::string packed = writeText(scene.root(), "osg.gz");
    for (std::size_t length = 0; length < packed.size(); ++length) {
        LogLines log;
        ASSERT_EQ(readText(packed.substr(0, length), "osg.gz"), NullFC) << length;
        ASSERT_EQ(log.take().size(), 1u) << length;
    }
}

TEST(CompressedScene, damagedAnywhereIsASceneOrOneLine) {
    const Scene scene(readText(testData("cores.osg")));
    const std::string packed = compressed(scene.root(), "osg");
    for (std::size_t place = 0; place < packed.size(); place += 41) {
        std::string damaged = packed;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
        LogLines log;
        const Scene copy(readText(damaged, "osg"));
        if (copy.isNull()) {
            ASSERT_EQ(log.take().size(), 1u) << place;
        }
    }
}

TEST(CompressedScene, dataThatUnpacksWithoutEndIsRefusedWithTheReason) {
    // Blanks pack to less than a two-hundredth: once 64 MiB are a scene, six times they are not.
    std::string packed;
    {
        const Scene scene(makeCoredNode<Group>());
        setName(scene.root(), std::string(std::size_t(64) << 20, ' '));
        packed = writeText(scene.root(), "osg.gz");
    }
    EXPECT_FALSE(Scene(readText(packed, "osg.gz")).isNull());
    std::string bomb;
    for (int i = 0; i < 6; ++i)
        bomb += packed;
    LogLines log;
    EXPECT_EQ(readText(bomb, "osg.gz"), NullFC);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("unpacks to more than"), std::string::npos);
}

} // namespace
