// A warm tick allocates nothing: not for the frame, the records, the writes or the notifications.

#include "playback/playbackFixture.h"
#include "support/access/kvAnimationController2.h"
#include "support/allocationCount.h"
#include "support/recordingListener.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;

class WarmTick : public kv::test::PlaybackFixture {
  protected:
    // Allocations of ticks number 61 to 100, one frame apart.
    static std::size_t allocationsWhenWarm() {
        int frame = 0;
        while (frame < 60)
            tickAt(++frame / 25.0);
        return kvtest::allocationsOf([&] {
            while (frame < 100)
                tickAt(++frame / 25.0);
        });
    }
};

TEST_F(WarmTick, ofABlockAllocatesNothing) {
    kvAnimationBlock* const block = makeBlock(node, 0.0F, 1000.0F);
    block->addCurve(makeRamp(node, 0.0F, 1000.0F, 1));
    Controller::play(block, false, false);
    EXPECT_EQ(allocationsWhenWarm(), 0U);
    EXPECT_TRUE(Access::playing());
}

TEST_F(WarmTick, ofAClipAllocatesNothingBetweenWholeFrames) {
    kvAnimationClip* const clip = makeClip();
    auto* const block = new kvAnimationBlock(node, "b");
    block->addCurve(makeRamp(node, 0.0F, 1000.0F));
    clip->addBlock(block);
    auto* const nested = new kvAnimationClip;
    auto* const deep = new kvAnimationBlock(node, "d");
    deep->addCurve(makeRamp(node, 0.0F, 1000.0F, 1));
    nested->addBlock(deep);
    clip->addSubclip(nested);
    Controller::play(clip, false, false);
    for (int i = 1; i < 60; ++i)
        tickAt(i / 25.0);
    const std::size_t count = kvtest::allocationsOf([] {
        for (int i = 0; i < 40; ++i)
            tickAt((59.0 + i / 100.0) / 25.0); // whole frame 59
    });
    EXPECT_EQ(count, 0U);
    EXPECT_NEAR(shown(node, 1), 59.39F, 1e-3);
}

TEST_F(WarmTick, ofAClipAllocatesOnlyTheListOfSequencesThatAreDue) {
    kvAnimationClip* const clip = makeClip();
    for (int i = 0; i < 30; ++i) {
        auto* const block = new kvAnimationBlock(node, "b");
        // Out of order, and two curves on one component: nothing here is a special case.
        const auto start = static_cast<float>((i * 7) % 30);
        block->addCurve(makeRamp(node, start, 1000.0F, static_cast<unsigned>(i) % 3));
        clip->addBlock(block);
        auto* const nested = new kvAnimationClip;
        auto* const deep = new kvAnimationBlock(node, "d");
        deep->addCurve(makeRamp(node, start, 1000.0F));
        nested->addBlock(deep);
        clip->addSubclip(nested);
    }
    clip->addSequence(makeSequence("due", 80.0F, 89.0F));
    Controller::play(clip, false, false);
    for (int frame = 0; frame < 60; ++frame)
        tickAt(frame / 25.0);
    const auto allocationsUpTo = [](int first, int last) {
        return kvtest::allocationsOf([=] {
            for (int frame = first; frame < last; ++frame)
                tickAt(frame / 25.0); // a new whole frame every time
        });
    };
    EXPECT_EQ(allocationsUpTo(60, 80), 0U) << "an empty list allocates nothing";
    // The list that computeSequences returns; the host's side of the call keeps its own list.
    executed().reserve(16);
    EXPECT_EQ(allocationsUpTo(80, 90), 10U);
    EXPECT_EQ(executed().size(), 10U);
    EXPECT_EQ(allocationsUpTo(90, 110), 0U);
}

TEST_F(WarmTick, ofTheSelectedCurvesAllocatesNothing) {
    const std::unique_ptr<kvAnimationCurve> curve(makeRamp(node, 0.0F, 1000.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMaxFrame(1000.0F);
    Controller::play(false);
    EXPECT_EQ(allocationsWhenWarm(), 0U);
    kvAnimationManager2::_the.clearCurveLists();
}

TEST_F(WarmTick, ofTheWholeSceneAllocatesOnlyForThousandsOfRecords) {
    for (unsigned i = 0; i < 10; ++i) {
        kvAnimationManager2::_animationBlocks.push_back(makeBlock(makeMover(), 0.0F, 1000.0F));
    }
    Controller::setMaxFrame(1.0e6F);
    Controller::playGlobal(false, false, false);
    EXPECT_EQ(allocationsWhenWarm(), 0U) << "a thousand records fit into the first chunk";

    // Growing takes a chunk and a place in the list of chunks for 4096 records each.
    const std::size_t count = kvtest::allocationsOf([] {
        for (int i = 101; i <= 4197; ++i)
            tickAt(i / 25.0);
    });
    EXPECT_LE(count, 20U) << "40,970 records";
    EXPECT_EQ(Controller::getValues().size(), 41970U);
}

} // namespace
