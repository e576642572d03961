// The one descent of frame evaluation beside the getters that it stands for.

#include "clips/clipRanges.h"
#include "support/access/kvAnimationTrack.h"
#include "support/allocationCount.h"
#include "support/clipBuilders.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>

namespace {

using kv::detail::ClipRanges;
using kvtest::newBlock;
using kvtest::newSequence;

// What evaluation by the getters would visit: every clip with its range, its sub-clips and blocks.
struct Visit {
    const kvAnimationClip* clip;
    float start;
    float end;
    std::vector<kvAnimationClip*> subclips;
    std::vector<kvAnimationBlock*> blocks;
    bool operator==(const Visit& other) const {
        return clip == other.clip && start == other.start && end == other.end &&
               subclips == other.subclips && blocks == other.blocks;
    }
};

void visitByGetters(kvAnimationClip& clip, std::vector<Visit>& visits) {
    Visit visit{&clip, clip.getStartFrame(), clip.getEndFrame(), clip.getSubclips(false, false),
                clip.getBlocks(false, false)};
    visits.push_back(visit);
    for (kvAnimationClip* sub : visit.subclips)
        visitByGetters(*sub, visits);
}

void visitByRanges(const ClipRanges& ranges, const ClipRanges::Node& node,
                   std::vector<Visit>& visits) {
    Visit visit{node.clip, node.range.first, node.range.last, {}, {}};
    for (std::size_t i = 0; i < node.subclipCount; ++i)
        visit.subclips.push_back(ranges.subclip(node, i).clip);
    for (std::size_t i = 0; i < node.blockCount; ++i)
        visit.blocks.push_back(ranges.block(node, i));
    visits.push_back(visit);
    for (std::size_t i = 0; i < node.subclipCount; ++i)
        visitByRanges(ranges, ranges.subclip(node, i), visits);
}

// A tree of clips with up to a few of everything, starts drawn from few numbers so that many are
// equal.
void grow(kvAnimationClip& clip, int depth, std::mt19937& random) {
    const auto some = [&random](unsigned below) { return static_cast<int>(random() % below); };
    const int tracks = 1 + some(3);
    for (int t = 0; t < tracks; ++t) {
        clip.createTrack();
        for (int i = some(4); i > 0; --i) {
            const float start = static_cast<float>(some(6));
            clip.insertBlock(newBlock(start, start + 1.0F + static_cast<float>(some(5))), t);
        }
        for (int i = some(3); i > 0; --i)
            clip.insertSequence(newSequence(static_cast<float>(some(6)), 7), t);
        if (depth > 0)
            for (int i = some(3); i > 0; --i) {
                auto* sub = new kvAnimationClip();
                grow(*sub, depth - 1, random);
                clip.insertSubclip(sub, t);
            }
    }
}

void forEachTrack(kvAnimationClip& clip, const std::function<void(kvAnimationTrack&)>& visit) {
    for (kvAnimationTrack* track : clip.getTracks()) {
        visit(*track);
        for (kvAnimationClip* sub : track->getClips())
            forEachTrack(*sub, visit);
    }
}

void moveSomething(kvAnimationClip& clip, std::mt19937& random) {
    forEachTrack(clip, [&random](kvAnimationTrack& track) {
        for (kvAnimationBlock* block : track.getBlocks())
            if (random() % 3 == 0) block->moveBlock(static_cast<float>(random() % 9) - 4.0F);
        for (kvAnimationSequence2* sequence : track.getSequences())
            if (random() % 3 == 0) sequence->moveBlock(static_cast<float>(random() % 9) - 4.0F);
    });
}

// A deep copy keeps the order of all lists, so that both ways can be tried on the same state; only
// the ranges of sequence items have to be carried over.
std::unique_ptr<kvAnimationClip> copyOf(kvAnimationClip& clip) {
    auto copy = std::make_unique<kvAnimationClip>(clip);
    std::vector<kvAnimationSequence2*> sources;
    std::vector<kvAnimationSequence2*> targets;
    const auto gather = [](std::vector<kvAnimationSequence2*>& items) {
        return [&items](kvAnimationTrack& track) {
            items.insert(items.end(), track.getSequences().begin(), track.getSequences().end());
        };
    };
    forEachTrack(clip, gather(sources));
    forEachTrack(*copy, gather(targets));
    for (std::size_t i = 0; i < sources.size(); ++i) {
        targets[i]->setStartFrame(sources[i]->getStartFrame());
        targets[i]->setEndFrame(sources[i]->getEndFrame());
    }
    return copy;
}

std::vector<std::vector<std::string>> orderOf(kvAnimationClip& clip) {
    std::vector<std::vector<std::string>> order;
    forEachTrack(clip, [&order](kvAnimationTrack& track) {
        order.emplace_back();
        for (const kvAnimationBlock* block : track.getBlocks())
            order.back().push_back(block->getBlockName());
    });
    return order;
}

void nameBlocks(kvAnimationClip& clip) {
    int next = 0;
    forEachTrack(clip, [&next](kvAnimationTrack& track) {
        std::vector<kvAnimationBlock*>& blocks = kvTestAccess<kvAnimationTrack>::blocks(track);
        for (kvAnimationBlock*& block : blocks) {
            auto* named = new kvAnimationBlock(std::to_string(next++));
            named->getBlockCurves().swap(block->getBlockCurves());
            named->updateBlockBounds();
            kvtest::BlockOwner(block).reset();
            block = named;
        }
    });
}

} // namespace

TEST(ClipRanges, ofAnEmptyClipIsOneNodeWithTheSentinels) {
    kvAnimationClip clip;
    ClipRanges ranges;
    ranges.collect(clip);
    EXPECT_EQ(ranges.root().clip, &clip);
    EXPECT_EQ(ranges.root().range.first, 1e23F);
    EXPECT_EQ(ranges.root().range.last, -1e23F);
    EXPECT_EQ(ranges.root().subclipCount, 0U);
    EXPECT_EQ(ranges.root().blockCount, 0U);
}

TEST(ClipRanges, giveWhatTheGettersGiveOnRandomTreesThatChange) {
    ClipRanges ranges;
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        kvAnimationClip clip;
        grow(clip, 3, random);
        for (int step = 0; step < 4; ++step) {
            std::vector<Visit> byRanges;
            ranges.collect(clip);
            visitByRanges(ranges, ranges.root(), byRanges);
            std::vector<Visit> byGetters;
            visitByGetters(clip, byGetters);
            ASSERT_EQ(byRanges.size(), byGetters.size()) << seed;
            EXPECT_TRUE(byRanges == byGetters) << "seed " << seed << " step " << step;
            moveSomething(clip, random);
        }
    }
}

TEST(ClipRanges, leaveTheListsSortedAsTheGettersDo) {
    ClipRanges ranges;
    for (unsigned seed = 0; seed < 30; ++seed) {
        std::mt19937 random(seed);
        kvAnimationClip clip;
        grow(clip, 2, random);
        nameBlocks(clip);
        moveSomething(clip, random);
        const std::unique_ptr<kvAnimationClip> copy = copyOf(clip);
        ranges.collect(clip);
        copy->getStartFrame();
        EXPECT_EQ(orderOf(clip), orderOf(*copy)) << seed;
    }
}

TEST(ClipRanges, ofAClipCollectedAgainAllocateNothing) {
    std::mt19937 random(7);
    kvAnimationClip clip;
    grow(clip, 3, random);
    for (int i = 0; i < 600; ++i)
        clip.addBlock(newBlock(static_cast<float>(random() % 100), 200));
    ClipRanges ranges;
    ranges.collect(clip);
    EXPECT_EQ(kvtest::allocationsOf([&] { ranges.collect(clip); }), 0U);
}

TEST(ClipRanges, ofASubclipAtTwoPlacesHaveANodeForEach) {
    kvAnimationClip clip;
    auto* shared = kvtest::newClip({newBlock(3, 4)});
    clip.addSubclip(shared);
    clip.addSubclip(shared);
    ClipRanges ranges;
    ranges.collect(clip);
    EXPECT_EQ(ranges.root().subclipCount, 2U);
    EXPECT_EQ(ranges.subclip(ranges.root(), 0).clip, shared);
    EXPECT_EQ(ranges.subclip(ranges.root(), 1).clip, shared);
    clip.subSubclip(shared, false);
}

TEST(ClipGetters, allocateNothingWhileTheListsAreInOrder) {
    std::mt19937 random(11);
    kvAnimationClip clip;
    grow(clip, 3, random);
    clip.getStartFrame();
    EXPECT_EQ(kvtest::allocationsOf([&] {
                  clip.getStartFrame();
                  clip.getEndFrame();
                  clip.getDuration();
                  clip.frameInClipRange(3);
                  clip.getTrack(0)->getFirstFrame();
                  clip.getTrack(0)->getLastFrame();
              }),
              0U);
}
