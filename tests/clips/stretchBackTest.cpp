// Stretching there and back. When all curves of a block share one range, the block comes back but
// for rounding; when they do not, it cannot: every curve is stretched over its own range, so that
// the shorter ones end up as long as the longest.

#include "support/clipBuilders.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr int kMost = 500; // no frame is further from 0
// A new length is at least an eighth of the old one, and nothing is shorter than a frame; without
// bounds like these a stretched block may lie between two neighbouring numbers.
constexpr int kMostShrinking = 8;

// How far a frame may be from where it was. A frame of at most M is mapped by four operations in
// single precision, on lengths of at most 2M: that loses up to 3.5 eps M. The way back adds as much
// and magnifies what the way there lost, once for the frame and once for each of the two ends that
// it computes with, by the ratio of the lengths. That makes 14 eps M times the ratio, or 16 to
// cover the products of small terms; and so for every pair of stretches that an item goes through.
double tolerance(int pairs, double ratio) {
    const double eps = static_cast<double>(std::numeric_limits<float>::epsilon());
    return 16.0 * pairs * eps * kMost * std::max(1.0, ratio);
}

float tenths(int i) {
    return 0.1F * static_cast<float>(i);
}

struct Range {
    float first, last;
    float length() const { return last - first; }
};

Range randomRange() {
    const int first = *rc::gen::inRange(-10 * kMost, 10 * kMost - 10);
    const int last = *rc::gen::inRange(first + 10, 10 * kMost + 1);
    return {tenths(first), tenths(last)};
}

// A new place for one end of `range` that keeps to the bounds.
float newEnd(const Range& range, bool left) {
    const float least = std::max(1.0F, range.length() / kMostShrinking);
    const int nearest = static_cast<int>(10.0F * (left ? range.last - least : range.first + least));
    return left ? tenths(*rc::gen::inRange(-10 * kMost, std::max(nearest, 1 - 10 * kMost)))
                : tenths(*rc::gen::inRange(std::min(nearest + 1, 10 * kMost), 10 * kMost + 1));
}

kvAnimationCurve* curveOver(const Range& range, int inner) {
    std::vector<float> frames = {range.first, range.last};
    for (; inner > 0; --inner) {
        const auto part = static_cast<float>(*rc::gen::inRange(1, 100)) / 100.0F;
        frames.push_back(range.first + part * range.length());
    }
    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    auto* const curve = new kvAnimationCurve("translateX");
    for (std::size_t i = 0; i < frames.size(); ++i) {
        // Handles within the range: those outside it would be magnified with their distance.
        const float before = i == 0 ? frames[i] : 0.5F * (frames[i - 1] + frames[i]);
        const float behind =
            i + 1 == frames.size() ? frames[i] : 0.5F * (frames[i] + frames[i + 1]);
        curve->importControlPoint(frames[i], 3.0F, before, 1.0F, behind, 2.0F,
                                  kvControlPoint::User);
    }
    return curve;
}

kvAnimationBlock* blockOver(const Range& range) {
    auto* const block = new kvAnimationBlock(std::string("b"));
    for (int i = *rc::gen::inRange(1, 4); i > 0; --i)
        block->addCurve(curveOver(range, *rc::gen::inRange(0, 5)));
    return block;
}

// Every number of a block: frames first, since only they may change at all.
struct Numbers {
    std::vector<double> frames;
    std::vector<double> values;

    void add(const kvAnimationBlock& block) {
        frames.push_back(static_cast<double>(block.getStartFrame()));
        frames.push_back(static_cast<double>(block.getEndFrame()));
        for (const kvAnimationCurve* curve : block.getBlockCurves()) {
            for (const kvControlPoint& key : curve->getCPs()) {
                for (const auto& point :
                     {key.getPoint(), key.getInTangent(), key.getOutTangent()}) {
                    frames.push_back(point.x);
                    values.push_back(point.y);
                }
            }
        }
    }

    void add(const kvAnimationClip& clip) {
        for (const kvAnimationTrack* track : clip.getTracks()) {
            for (const kvAnimationBlock* block : track->getBlocks())
                add(*block);
            for (const kvAnimationSequence2* sequence : track->getSequences())
                add(*sequence);
            for (const kvAnimationClip* sub : track->getClips())
                add(*sub);
        }
    }
};

template <class Item>
Numbers numbersOf(const Item& item) {
    Numbers numbers;
    numbers.add(item);
    return numbers;
}

void expectRestored(const Numbers& after, const Numbers& before, double allowed) {
    RC_ASSERT(after.values == before.values);
    RC_ASSERT(after.frames.size() == before.frames.size());
    for (std::size_t i = 0; i < before.frames.size(); ++i)
        RC_ASSERT(std::fabs(after.frames[i] - before.frames[i]) <= allowed);
}

// Stretches one end of `item` to a new place and back.
template <class Item>
void stretchThereAndBack(Item& item, int pairs) {
    const Numbers before = numbersOf(item);
    const Range range = {item.getStartFrame(), item.getEndFrame()};
    const bool left = *rc::gen::arbitrary<bool>();
    const float there = newEnd(range, left);
    if (left) {
        item.stretchLeft(there);
        item.stretchLeft(range.first);
    } else {
        item.stretchRight(there);
        item.stretchRight(range.last);
    }
    const float length = left ? range.last - there : there - range.first;
    expectRestored(numbersOf(item), before,
                   tolerance(pairs, static_cast<double>(range.length() / length)));
}

void fill(kvAnimationClip& clip) {
    for (int i = *rc::gen::inRange(1, 4); i > 0; --i)
        clip.addBlock(blockOver(randomRange()));
}

// Sequences lie within what the clip's blocks span: the clip's range does not count them.
void addSequence(kvAnimationClip& clip) {
    const Range range = {clip.getStartFrame(), clip.getEndFrame()};
    clip.addSequence(kvtest::newSequence(range.first + 0.25F * range.length(),
                                         range.first + 0.5F * range.length()));
}

} // namespace

TEST(StretchThereAndBack, restoresABlockWhoseCurvesShareOneRange) {
    EXPECT_TRUE(rc::check([] {
        const kvtest::BlockOwner block(blockOver(randomRange()));
        stretchThereAndBack(*block, 1);
    }));
}

TEST(StretchThereAndBack, restoresAClipOfSuchBlocks) {
    // Both ends of an item are stretched each time.
    EXPECT_TRUE(rc::check([] {
        kvAnimationClip clip;
        fill(clip);
        addSequence(clip);
        stretchThereAndBack(clip, 2);
    }));
}

TEST(StretchThereAndBack, restoresASubclipAlongWithItsClip) {
    EXPECT_TRUE(rc::check([] {
        kvAnimationClip clip;
        fill(clip);
        auto* const sub = new kvAnimationClip;
        fill(*sub);
        addSequence(*sub);
        clip.addSubclip(sub);
        stretchThereAndBack(clip, 4);
    }));
}

TEST(StretchThereAndBack, makesAllCurvesOfABlockAsLongAsTheBlock) {
    kvAnimationBlock block;
    block.addCurve(kvtest::newCurve({10.0F, 20.0F}));
    block.addCurve(kvtest::newCurve({10.0F, 15.0F}));
    block.stretchRight(30.0F);
    block.stretchRight(20.0F);
    EXPECT_EQ(block.getBlockCurves()[1]->getEndFrame(), 20.0) << "it was 15";
}
