// Saving that fails: the embedded scene graph says so in one line with the reason and keeps the
// older file. OpenSG notices neither a full disk nor a stream that fails, writes a null node as an
// empty file, and takes obj for a format.
#include "opensg/sceneSaving.h"

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGOSGWriter.h>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <ostream>
#include <streambuf>

#if defined(__unix__)
#include <sys/resource.h>
#endif

using namespace osg;
using namespace sceneSaving;

namespace {

namespace fs = std::filesystem;

TEST(SceneSaving, aNullNodeAndUnknownFormatsAreRefused) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    EXPECT_FALSE(save(NullFC, directory / "a.osg"));
    EXPECT_FALSE(save(scene.root(), directory / "a.obj"));
    EXPECT_FALSE(save(scene.root(), directory / "a"));
    EXPECT_FALSE(save(scene.root(), ""));
    EXPECT_FALSE(SceneFileHandler::the().write(scene.root(), nullptr));
    EXPECT_EQ(log.take().size(), 5u);
    EXPECT_EQ(directory.size(), 0u);
}

TEST(SceneSaving, aMissingDirectoryIsToldWithTheReason) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    const std::string path = directory / "missing/a.osg";
    LogLines log;
    EXPECT_FALSE(save(scene.root(), path));
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find(path), std::string::npos);
    EXPECT_NE(log.take()[0].find("No such file"), std::string::npos);
}

#if defined(__unix__)

/// Lets files of this process grow to a size and no further, as on a full disk.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t size) : _handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &_before);
        rlimit limited = _before;
        limited.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &_before);
        std::signal(SIGXFSZ, _handler);
    }

  private:
    rlimit _before = {};
    void (*_handler)(int);
};

TEST(SceneSaving, aFullDiskLeavesTheOldFileAndNothingElse) {
    const Directory directory;
    const Scene scene(makeCoredNode<Group>());
    for (int i = 0; i < 2000; ++i) {
        NodePtr child = makeCoredNode<Group>();
        setName(child, "child " + std::to_string(i * 7919 % 2000));
        scene->addChild(child);
    }
    for (const char* name : {"a.osg", "a.osb", "a.osg.gz", "a.osb.gz"}) {
        SCOPED_TRACE(name);
        writeContents(directory / name, "old");
        LogLines log;
        {
            const FileSizeLimit full(4096);
            EXPECT_FALSE(save(scene.root(), directory / name));
        }
        ASSERT_EQ(log.take().size(), 1u);
        EXPECT_NE(log.take()[0].find(name), std::string::npos);
        EXPECT_NE(log.take()[0].find("File too large"), std::string::npos);
        EXPECT_EQ(contentsOf(directory / name), "old");
    }
    EXPECT_EQ(directory.size(), 4u);
}

TEST(SceneSaving, aDeviceThatIsFullIsAFailure) {
    if (!fs::exists("/dev/full")) return;
    const Directory directory;
    fs::create_symlink("/dev/full", directory / "full.osg");
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    EXPECT_FALSE(save(scene.root(), directory / "full.osg"));
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_TRUE(fs::exists("/dev/full"));
}

TEST(SceneSaving, aFileThatMayNotBeWrittenIsNotReplaced) {
    const Directory directory;
    const std::string path = directory / "a.osg";
    writeContents(path, "old");
    fs::permissions(path, fs::perms::owner_read);
    const Scene scene(makeCoredNode<Group>());
    LogLines log;
    // The superuser may write everywhere.
    const bool may = static_cast<bool>(std::ofstream(path, std::ios::app));
    EXPECT_EQ(save(scene.root(), path), may);
    EXPECT_EQ(contentsOf(path) == "old", !may);
    EXPECT_EQ(log.take().size(), may ? 0u : 1u);
}

#endif

/// A stream that takes a number of characters and then fails.
class ShortStream : public std::ostream, private std::streambuf {
  public:
    explicit ShortStream(std::size_t room) : std::ostream(this), _room(room) {}

  private:
    int overflow(int c) override {
        if (_room == 0) return std::char_traits<char>::eof();
        --_room;
        return std::char_traits<char>::not_eof(c);
    }
    std::size_t _room;
};

TEST(SceneSaving, aStreamThatFailsIsAFailure) {
    const Scene scene(makeCoredNode<Group>());
    const std::size_t size = writeText(scene.root()).size();
    for (const std::size_t room : {std::size_t(0), std::size_t(10), size - 1}) {
        LogLines log;
        ShortStream stream(room);
        EXPECT_FALSE(SceneFileHandler::the().write(scene.root(), stream, "osg"));
        EXPECT_EQ(log.take().size(), 1u);
    }
    ShortStream stream(size);
    EXPECT_TRUE(SceneFileHandler::the().write(scene.root(), stream, "osg"));
    LogLines log;
    ShortStream other(3);
    EXPECT_FALSE(OSGWriter(other).write(scene.root()));
    EXPECT_EQ(log.take().size(), 1u);
}

} // namespace
