// How the time of building and looking at clips grows. Times are compared with each other only, and
// with a margin that tells linear from quadratic and not fast from slow.

#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

namespace {

using kvtest::newBlock;

// Processor time of the fastest of a few runs, so that neighbours on the machine do not count.
template <class Work>
double secondsOf(Work work) {
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        work();
        best = (std::min)(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return best;
}

double secondsToBuild(int blocks) {
    return secondsOf([blocks] {
        kvAnimationClip clip;
        for (int i = 0; i < blocks; ++i)
            clip.addBlock(newBlock(static_cast<float>(i % 97), 100));
    });
}

double secondsToAsk(int blocks) {
    kvAnimationClip clip;
    for (int i = 0; i < blocks; ++i)
        clip.addBlock(newBlock(static_cast<float>(i % 97), 100));
    return secondsOf([&clip] {
        for (int i = 0; i < 10; ++i)
            clip.getBlocks(false, false);
        clip.updateBounds();
        clip.getDuration();
    });
}

} // namespace

TEST(Growth, buildingAClipBlockByBlockIsNotQuadratic) {
    secondsToBuild(1000);
    const double few = secondsToBuild(1000);
    const double many = secondsToBuild(16000);
    EXPECT_LT(many, few * 16 * 6) << "quadratic would be 256 times";
}

TEST(Growth, collectingAndUpdatingIsNotQuadratic) {
    const double few = secondsToAsk(1000);
    const double many = secondsToAsk(16000);
    EXPECT_LT(many, few * 16 * 6) << "quadratic would be 256 times";
}

TEST(Growth, aDeepClipIsAskedOnceAtEveryLevel) {
    // Two sub-clips a level, out of order: asking both again for every comparison would take a time
    // that doubles with every level.
    kvAnimationClip top;
    kvAnimationClip* clip = &top;
    kvAnimationBlock* deepest = newBlock(500, 501);
    for (int level = 0; level < 200; ++level) {
        kvAnimationClip* next = clip->newSubclip();
        clip->insertSubclip(kvtest::newClip({newBlock(100, 101)}), 0);
        clip = next;
    }
    clip->addBlock(deepest);
    EXPECT_EQ(top.getStartFrame(), 100.0F);
    EXPECT_EQ(top.getEndFrame(), 501.0F);
    deepest->moveBlock(-499);
    EXPECT_EQ(top.getStartFrame(), 1.0F);
    EXPECT_EQ(top.getEndFrame(), 101.0F);
    top.updateBounds();
    EXPECT_EQ(top.getDuration(), 100.0F);
}
