// Saving a scene to a file: what is there afterwards.
#include "opensg/sceneSaving.h"

#include <OpenSG/OSGGroup.h>

#include <gtest/gtest.h>

using namespace osg;
using namespace sceneSaving;

namespace {

namespace fs = std::filesystem;

TEST(SceneSaving, leavesTheFileAndNothingElse) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    for (const char* name : {"a.osg", "a.osb", "a.osg.gz", "a.osb.gz", "A.OSG", "b.c.osg"}) {
        EXPECT_TRUE(save(scene.root(), directory / name)) << name;
        EXPECT_FALSE(Scene(SceneFileHandler::the().read((directory / name).c_str())).isNull());
    }
    EXPECT_EQ(directory.size(), 6u);
}

TEST(SceneSaving, replacesAnOlderFileAndKeepsItsPermissions) {
    const Directory directory;
    const std::string path = directory / "a.osg";
    writeContents(path, "something else, and longer than what follows" + std::string(9999, '.'));
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    const Scene scene(makeCoredNode<Group>());
    EXPECT_TRUE(save(scene.root(), path));
    EXPECT_EQ(contentsOf(path), writeText(scene.root()));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(directory.size(), 1u);
}

TEST(SceneSaving, writesWhereASymbolicLinkLeads) {
    const Directory directory;
    writeContents(directory / "real.osg", "old");
    fs::create_symlink(directory / "real.osg", directory / "link.osg");
    const Scene scene(makeCoredNode<Group>());
    EXPECT_TRUE(save(scene.root(), directory / "link.osg"));
    EXPECT_TRUE(fs::is_symlink(directory / "link.osg"));
    EXPECT_EQ(contentsOf(directory / "real.osg"), writeText(scene.root()));
}

TEST(SceneSaving, unknownFormatsAreRefused) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    EXPECT_FALSE(save(scene.root(), directory / "a.obx"));
    EXPECT_FALSE(save(scene.root(), directory / "a"));
    EXPECT_GE(log.take().size(), 2u);
    EXPECT_EQ(directory.size(), 0u);
}

TEST(SceneSaving, intoAMissingDirectoryFails) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    EXPECT_FALSE(save(scene.root(), directory / "missing/a.osg"));
    EXPECT_GE(log.take().size(), 1u);
    EXPECT_EQ(directory.size(), 0u);
}

TEST(SceneSaving, aDirectoryIsNotReplaced) {
    const Directory directory;
    fs::create_directory(directory / "a.osg");
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    EXPECT_FALSE(save(scene.root(), directory / "a.osg"));
    EXPECT_GE(log.take().size(), 1u);
    EXPECT_TRUE(fs::is_directory(directory / "a.osg"));
}

} // namespace
