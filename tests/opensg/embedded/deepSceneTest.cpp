// Scenes that are nested so deep that anything recursive would run out of stack, and so broad that
// a squared cost would show. The reader of OpenSG gives up a thousand nodes deep, and what it reads
// is destroyed by recursion.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGGroup.h>

#include <gtest/gtest.h>

#if defined(__unix__)
#include <pthread.h>
#endif

using namespace osg;

namespace {

/// A million where it does not take long.
#if defined(NDEBUG)
constexpr UInt32 kDepth = 1000000;
#else
constexpr UInt32 kDepth = 200000;
#endif

UInt32 depthOf(NodePtr node) {
    UInt32 depth = 0;
    while (node->getNChildren() > 0) {
        node = node->getChild(0);
        ++depth;
    }
    return depth;
}

std::string nestedText(UInt32 depth, bool closed = true) {
    std::string text = "#OSG V1.0 \n";
    for (UInt32 i = 0; i < depth; ++i)
        text += "Node{children[";
    if (closed)
        for (UInt32 i = 0; i < depth; ++i)
            text += "]}";
    return text;
}

TEST(DeepScene, nestedNodesAreReadWrittenAndDestroyed) {
    const std::size_t before = countContainers();
    {
        const Scene scene(readText(nestedText(kDepth)));
        ASSERT_FALSE(scene.isNull());
        EXPECT_EQ(depthOf(scene.root()), kDepth);
        const std::string text = writeText(scene.at({0}));
        // Indentation must not grow with the depth for ever.
        EXPECT_LT(text.size(), 400u * kDepth);
        const Scene again(readText(text));
        ASSERT_FALSE(again.isNull());
        EXPECT_EQ(depthOf(again.root()), kDepth);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST(DeepScene, nestedNodesInBinaryForm) {
    const std::size_t before = countContainers();
    {
        const Scene scene(readText(nestedText(kDepth)));
        ASSERT_FALSE(scene.isNull());
        const Scene again(readText(writeText(scene.root(), "osb"), "osb"));
        ASSERT_FALSE(again.isNull());
        EXPECT_EQ(depthOf(again.root()), kDepth);
    }
    EXPECT_EQ(countContainers(), before);
}

#if defined(__unix__)

Action::ResultE goOn(NodePtr&) {
    return Action::Continue;
}

/// Everything that is done with a scene, from both formats.
void readTraverseAndDestroy() {
    for (const char* format : {"osg", "osb"}) {
        std::string content = nestedText(kDepth);
        if (format == std::string("osb"))
            content = writeText(Scene(readText(content)).root(), "osb");
        const Scene scene(readText(content, format));
        ASSERT_FALSE(scene.isNull()) << format;
        EXPECT_EQ(
            traverse(scene.root(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(goOn)),
            Action::Continue);
        EXPECT_EQ(depthOf(scene.root()), kDepth);
        scene->updateVolume();
    }
}

void* runOnThread(void*) {
    readTraverseAndDestroy();
    return nullptr;
}

TEST(DeepScene, needsNoMoreThanASmallStack) {
    const std::size_t before = countContainers();
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    // The sanitizer makes frames several times larger; recursion would go beyond this, too.
#if defined(__SANITIZE_ADDRESS__)
    constexpr std::size_t stack = 1024 * 1024;
#else
    constexpr std::size_t stack = 256 * 1024;
#endif
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stack), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, runOnThread, nullptr), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(countContainers(), before);
}

#endif

TEST(DeepScene, thatIsCutOffLeavesNothing) {
    const std::size_t before = countContainers();
    LogLines log;
    EXPECT_EQ(readText(nestedText(kDepth, false)), NullFC);
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_EQ(countContainers(), before);
}

TEST(DeepScene, ofItemsAndUnknownContainers) {
    const std::size_t before = countContainers();
    {
        std::string text = "Node { attachments [ FileSheet { anything ";
        for (UInt32 i = 0; i < kDepth / 4; ++i)
            text += "FileItem{next ";
        text += "NULL";
        for (UInt32 i = 0; i < kDepth / 4; ++i)
            text += "}";
        text += " } ] x ";
        for (UInt32 i = 0; i < kDepth / 4; ++i)
            text += "Strange{x[";
        for (UInt32 i = 0; i < kDepth / 4; ++i)
            text += "]}";
        LogLines log;
        const Scene scene(readText(text + "}"));
        ASSERT_FALSE(scene.isNull());
        FieldContainerPtr item = scene.attachment<FileSheet>(scene.at({0}))->getAnything();
        UInt32 depth = 0;
        for (; item != NullFC; item = FileItemPtr::dcast(item)->getFollower())
            ++depth;
        EXPECT_EQ(depth, kDepth / 4);
        EXPECT_FALSE(writeText(scene.root()).empty());
    }
    EXPECT_EQ(countContainers(), before);
}

/// Two nodes: the children of the first are moved to the second, from the first or the last on.
std::string movingText(UInt32 width, bool fromTheLast) {
    std::string text = "Node { children [ ";
    for (UInt32 i = 0; i < width; ++i)
        text += "DEF n" + std::to_string(i) + " Node { } ";
    text += "] }\nNode { children [ ";
    for (UInt32 i = 0; i < width; ++i)
        text += "USE n" + std::to_string(fromTheLast ? width - 1 - i : i) + " ";
    return text + "] }";
}

TEST(DeepScene, wideScenesAreReadInLinearTime) {
    const Scene scene(readText(movingText(kDepth, true)));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({0})->getNChildren(), 0u);
    EXPECT_EQ(scene.at({1})->getNChildren(), kDepth);
    const Scene small(readText(movingText(1000, false)));
    ASSERT_FALSE(small.isNull());
    EXPECT_EQ(small.at({1})->getNChildren(), 1000u);
}

TEST(DeepScene, thatMovesNodesForEverIsRefused) {
    // The first of many children each time: the square of their number, which is no scene's need.
    const std::size_t before = countContainers();
    LogLines log;
    EXPECT_EQ(readText(movingText(kDepth, false)), NullFC);
    ASSERT_EQ(log.take().size(), 1u);
    EXPECT_NE(log.take()[0].find("moved"), std::string::npos);
    EXPECT_EQ(countContainers(), before);
}

TEST(DeepScene, aCoreInManyNodesIsReadInLinearTime) {
    std::string text = "DEF g Group { }\nNode { children [ ";
    for (UInt32 i = 0; i < kDepth; ++i)
        text += "Node{core USE g}";
    const Scene scene(readText(text + "] }"));
    ASSERT_FALSE(scene.isNull());
    EXPECT_EQ(scene.at({1, 0})->getCore().getRefCount(), static_cast<Int32>(kDepth + 1));
}

} // namespace
