// Compressed scenes.
#include "opensg/sceneFileSupport.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace osg;

namespace {

std::string compressed(const NodePtr& root, const char* extension) {
    std::ostringstream stream;
    EXPECT_TRUE(SceneFileHandler::the().write(root, stream, extension, true));
    return stream.str();
}

TEST(CompressedScene, comesBackFromBothFormats) {
    const Scene scene(readText(testData("cores.osg")));
    ASSERT_FALSE(scene.isNull());
    for (const char* format : {"osg", "osb"}) {
        const std::string plain = writeText(scene.root(), format);
        const std::string packed = compressed(scene.root(), format);
        EXPECT_LT(packed.size(), plain.size() / 2);
        EXPECT_EQ(packed.substr(0, 2), "\x1f\x8b");
        const Scene copy(readText(packed, format));
        ASSERT_FALSE(copy.isNull()) << format;
        EXPECT_EQ(writeText(copy.root(), "osb").size(),
                  writeText(Scene(readText(plain, format)).root(), "osb").size());
    }
}

TEST(CompressedScene, aFileIsKnownByItsContents) {
    const Scene scene(readText(testData("cores.osg")));
    for (const char* extension : {"osg.gz", "osb.gz", "osg", "osb"}) {
        const TemporaryFile file(extension);
        ASSERT_TRUE(SceneFileHandler::the().write(scene.root(), file.name(), true)) << extension;
        EXPECT_EQ(contentsOf(file.path()).substr(0, 2), "\x1f\x8b") << extension;
        EXPECT_FALSE(Scene(SceneFileHandler::the().read(file.name(), nullptr)).isNull())
            << extension;
    }
}

} // namespace
