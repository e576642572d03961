// Clips at a frame: which sub-clips and blocks count, in which order, with which flags, and that
// the fast evaluation leaves records and tracks exactly as the plain one does.

#include "manager/fixture.h"
#include "manager/frameEvaluation.h"
#include "manager/literalEvaluation.h"
#include "support/allocationCount.h"

#include <cstring>
#include <limits>
#include <random>

using namespace kv::test;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

using Names = std::vector<std::string>;

/// A block whose curve's record and attribute bear the block's name.
kvAnimationBlock* namedBlock(const std::string& name, float start, float end) {
    kvAnimationBlock* made = newBlock(name, start, end);
    kvAnimationUtils2::AnimationField field;
    field.fieldName = name;
    made->getLastInsertedCurve()->setAnimationField(field);
    return made;
}

Names names(const Fields& fields) {
    Names result;
    for (const auto& field : fields)
        result.push_back(field.fieldName);
    return result;
}

Names names(const Maps& maps) {
    Names result;
    for (const auto& map : maps)
        result.push_back(map.attribute);
    return result;
}

class ClipEvaluation : public ManagerTest {
  protected:
    Names at(kvAnimationClip* clip, float frame, bool motionBlurOnly = false,
             bool ignoreActivity = false) {
        return names(
            manager.getUpdatedAnimationFields(clip, frame, motionBlurOnly, ignoreActivity));
    }
    Names mapsAt(kvAnimationClip* clip, float frame, bool motionBlurOnly = false) {
        return names(manager.computeCurveValues(clip, frame, motionBlurOnly));
    }
};

TEST_F(ClipEvaluation, subclipsComeBeforeBlocksEachInOrderOfStart) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("lateBlock", 5, 20));
    top->addBlock(namedBlock("earlyBlock", 0, 20));
    kvAnimationClip* lateClip = top->newSubclip();
    lateClip->addBlock(namedBlock("inLateClip", 2, 20));
    kvAnimationClip* earlyClip = top->newSubclip();
    earlyClip->addBlock(namedBlock("inEarlyClip", 1, 20));
    const Names expected{"inEarlyClip", "inLateClip", "earlyBlock", "lateBlock"};
    EXPECT_EQ(at(top, 10), expected);
    EXPECT_EQ(mapsAt(top, 10), expected);
}

TEST_F(ClipEvaluation, itemsThatStartTogetherKeepTrackOrder) {
    kvAnimationClip* top = clip("top");
    for (const char* name : {"c", "a", "b"})
        top->addBlock(namedBlock(name, 0, 20));
    EXPECT_EQ(at(top, 10), (Names{"c", "a", "b"}));
    EXPECT_EQ(mapsAt(top, 10), (Names{"c", "a", "b"}));
}

TEST_F(ClipEvaluation, theHoldRuleAppliesToBlocksWithinTheClip) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("early", -10, 5));
    top->addBlock(namedBlock("late", 0, 20));
    EXPECT_EQ(at(top, 5), (Names{"early", "late"}));
    EXPECT_EQ(at(top, 6), (Names{"late"}));
    EXPECT_EQ(at(top, 20), (Names{"early", "late"})) << "at exactly the end every child counts";
    EXPECT_EQ(at(top, 21), (Names{"late"}));
    EXPECT_EQ(at(top, -10), (Names{"early", "late"}));
    EXPECT_EQ(at(top, -11), (Names{"early"}));
    EXPECT_TRUE(at(top, kNaN).empty());
    EXPECT_EQ(mapsAt(top, 6), (Names{"early", "late"})) << "maps know no hold rule";
    EXPECT_EQ(mapsAt(top, 100), (Names{"early", "late"}));
}

TEST_F(ClipEvaluation, theHoldRuleAppliesToSubclipsAtEveryLevel) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("frame", 0, 100));
    kvAnimationClip* inner = top->newSubclip();
    inner->addBlock(namedBlock("innerEarly", 10, 20));
    inner->addBlock(namedBlock("innerLate", 30, 40));
    EXPECT_EQ(at(top, 25), (Names{"frame"})) << "between the blocks of the sub-clip";
    EXPECT_EQ(at(top, 40), (Names{"innerEarly", "innerLate", "frame"})) << "at its own end";
    EXPECT_EQ(at(top, 41), (Names{"frame"})) << "it ended within its parent";
    EXPECT_EQ(at(top, 100), (Names{"innerLate", "frame"}))
        << "at the parent's end it counts; within it only what ends at its end";
    EXPECT_EQ(at(top, 101), (Names{"frame"}));
}

TEST_F(ClipEvaluation, anInactiveClipGivesNothingUnlessActivityIsIgnored) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("a", 0, 10));
    top->setActive(false);
    EXPECT_TRUE(at(top, 5).empty());
    EXPECT_EQ(at(top, 5, false, true), (Names{"a"}));
    EXPECT_EQ(mapsAt(top, 5), (Names{"a"})) << "maps do not ask the clip itself";
}

TEST_F(ClipEvaluation, inactiveBlocksAreSkippedByMapsButNotWhenActivityIsIgnored) {
    kvAnimationClip* top = clip("top");
    kvAnimationBlock* sleeping = namedBlock("sleeping", 0, 10);
    sleeping->setActive(false);
    top->addBlock(sleeping);
    top->addBlock(namedBlock("awake", 0, 10));
    EXPECT_EQ(mapsAt(top, 5), (Names{"awake"}));
    EXPECT_EQ(at(top, 5), (Names{"awake"}));
    EXPECT_EQ(at(top, 5, false, true), (Names{"sleeping", "awake"}));
}

TEST_F(ClipEvaluation, inactiveSubclipsAreSkippedButIgnoringActivityReachesThem) {
    kvAnimationClip* top = clip("top");
    kvAnimationClip* inner = top->newSubclip();
    inner->addBlock(namedBlock("inner", 0, 10));
    inner->setActive(false);
    EXPECT_TRUE(at(top, 5).empty());
    EXPECT_TRUE(mapsAt(top, 5).empty());
    EXPECT_EQ(at(top, 5, false, true), (Names{"inner"}));
}

TEST_F(ClipEvaluation, mapsTakeSubclipsInRangeOnlyBothEndsIncluded) {
    kvAnimationClip* top = clip("top");
    top->newSubclip()->addBlock(namedBlock("inner", 10, 20));
    EXPECT_TRUE(mapsAt(top, 9.5F).empty());
    EXPECT_EQ(mapsAt(top, 10), (Names{"inner"}));
    EXPECT_EQ(mapsAt(top, 20), (Names{"inner"}));
    EXPECT_TRUE(mapsAt(top, 20.5F).empty());
    EXPECT_TRUE(mapsAt(top, kNaN).empty());
    EXPECT_EQ(at(top, 21), (Names{"inner"})) << "the records hold it";
}

TEST_F(ClipEvaluation, motionBlurOnlyKeepsBlocksWithTheFlagAtEveryDepth) {
    kvAnimationClip* top = clip("top");
    kvAnimationClip* middle = top->newSubclip();
    kvAnimationClip* deep = middle->newSubclip();
    for (kvAnimationClip* each : {top, middle, deep}) {
        kvAnimationBlock* blurred = namedBlock("blurred", 0, 10);
        blurred->setMotionBlur(true);
        each->addBlock(blurred);
        each->addBlock(namedBlock("sharp", 0, 10));
    }
    EXPECT_EQ(at(top, 5, true), (Names{"blurred", "blurred", "blurred"}));
    EXPECT_EQ(mapsAt(top, 5, true), (Names{"blurred", "blurred", "blurred"}));
    EXPECT_EQ(at(top, 5).size(), 6U);
}

TEST_F(ClipEvaluation, aTracksOwnActiveFlagIsNotAsked) {
    kvAnimationClip* top = clip("top");
    kvAnimationBlock* made = namedBlock("a", 0, 10);
    top->addBlock(made);
    top->getTrack(0)->setActive(false); // pushes the flag down
    made->setActive(true);
    EXPECT_EQ(at(top, 5), (Names{"a"}));
    EXPECT_EQ(mapsAt(top, 5), (Names{"a"}));
}

TEST_F(ClipEvaluation, sequenceItemsWidenTheStartOfAClipButNotItsEnd) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("a", 0, 10));
    top->addSequence(newSequence("s", -50, 90));
    EXPECT_TRUE(at(top, -20).empty()) << "the clip starts at -50 now, and the block does not";
    EXPECT_EQ(at(top, -50), (Names{"a"}));
    EXPECT_EQ(at(top, 50), (Names{"a"})) << "the clip still ends with the block";
}

TEST_F(ClipEvaluation, recordsAreAppendedBehindWhatIsThere) {
    kvAnimationClip* top = clip("top");
    top->addBlock(namedBlock("a", 0, 10));
    Fields kept(1);
    kv::detail::appendUpdatedFields(kept, top, 5.0F, false, false);
    EXPECT_EQ(names(kept), (Names{"unknown", "a"}));
}

TEST_F(ClipEvaluation, anEmptyClipGivesNothing) {
    kvAnimationClip* top = clip("top");
    EXPECT_TRUE(at(top, 0).empty());
    for (int i = 0; i < 1000; ++i)
        top->createTrack();
    EXPECT_TRUE(at(top, 0).empty());
    EXPECT_TRUE(mapsAt(top, 0).empty());
}

// --- against the plain model ------------------------------------------------------------------

/// Random clips: the same seed makes the same clip.
class RandomClip {
  public:
    explicit RandomClip(unsigned seed) : _random(seed) {}

    kvAnimationClip* make(int depth) {
        auto* made = new kvAnimationClip("clip" + std::to_string(_count++));
        made->setActive(!one(6));
        const int tracks = upTo(4);
        for (int t = 0; t < tracks; ++t)
            fill(*made, made->createTrack(), depth);
        // Moved after they were sorted in, so that evaluation meets lists out of order.
        for (kvAnimationTrack* track : made->getTracks()) {
            for (kvAnimationBlock* block : track->getBlocks()) {
                if (one(4)) block->moveBlock(static_cast<float>(upTo(20) - 10));
            }
            for (kvAnimationSequence2* item : track->getSequences()) {
                if (one(4)) item->setStartFrame(one(5) ? kNaN : frame());
            }
        }
        return made;
    }

    float frame() { return static_cast<float>(upTo(24) - 6); }

  private:
    int upTo(int limit) { return static_cast<int>(_random() % static_cast<unsigned>(limit)); }
    bool one(int in) { return upTo(in) == 0; }

    void fill(kvAnimationClip& into, int track, int depth) {
        for (int i = upTo(4); i > 0; --i)
            into.insertBlock(makeBlock(), track);
        for (int i = upTo(3); i > 0; --i)
            into.insertSequence(makeSequence(), track);
        if (depth > 0) {
            for (int i = upTo(3); i > 0; --i)
                into.insertSubclip(make(depth - 1), track);
        }
    }

    kvAnimationBlock* makeBlock() {
        auto* made = new kvAnimationBlock("block" + std::to_string(_count++));
        made->setActive(!one(5));
        made->setMotionBlur(one(2));
        for (int i = upTo(4); i > 0; --i)
            made->addCurve(one(8) ? nullptr : makeCurve());
        return made;
    }

    kvAnimationCurve* makeCurve() {
        const std::string name = "curve" + std::to_string(_count++);
        Keys keys;
        for (int i = upTo(4); i > 0; --i)
            keys.emplace_back(frame(), static_cast<float>(_count));
        if (one(12)) keys.emplace_back(kNaN, 5.0F);
        kvAnimationCurve* made = newCurve(name, keys);
        kvAnimationUtils2::AnimationField field;
        field.fieldName = name;
        made->setAnimationField(field);
        return made;
    }

    kvAnimationSequence2* makeSequence() {
        const float start = frame();
        return newSequence("sequence" + std::to_string(_count++), start,
                           start + static_cast<float>(upTo(8) - 2));
    }

    std::mt19937 _random;
    int _count = 0;
};

/// The order of everything on the tracks, at every depth.
void appendLayout(const kvAnimationClip& clip, std::string& text) {
    text += clip.getName() + "(";
    for (const kvAnimationTrack* track : clip.getTracks()) {
        text += "[";
        for (const kvAnimationBlock* block : track->getBlocks())
            text += block->getBlockName() + " ";
        for (const kvAnimationSequence2* item : track->getSequences())
            text += item->getSequence() + " ";
        for (const kvAnimationClip* subclip : track->getClips())
            appendLayout(*subclip, text);
        text += "]";
    }
    text += ")";
}

std::string layout(const kvAnimationClip& clip) {
    std::string text;
    appendLayout(clip, text);
    return text;
}

bool sameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void expectSame(const Fields& actual, const Fields& expected) {
    ASSERT_EQ(names(actual), names(expected));
    for (std::size_t i = 0; i != actual.size(); ++i)
        EXPECT_TRUE(sameBits(actual[i].value, expected[i].value)) << "record " << i;
}

void expectSame(const Maps& actual, const Maps& expected) {
    ASSERT_EQ(names(actual), names(expected));
    for (std::size_t i = 0; i != actual.size(); ++i)
        EXPECT_TRUE(sameBits(actual[i].value, expected[i].value)) << "record " << i;
}

std::vector<float> frames() {
    std::vector<float> result{kNaN, kInf, -kInf, 1.0e23F, -1.0e23F, 99999.0F, -99999.0F};
    for (int half = -40; half <= 70; ++half)
        result.push_back(static_cast<float>(half) / 2.0F);
    return result;
}

TEST_F(ClipEvaluation, randomClipsGiveTheRecordsAndTheOrderOfThePlainModel) {
    std::size_t records = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        const std::unique_ptr<kvAnimationClip> fast(RandomClip(seed).make(3));
        const std::unique_ptr<kvAnimationClip> plain(RandomClip(seed).make(3));
        ASSERT_EQ(layout(*fast), layout(*plain));
        const std::vector<float> all = frames();
        for (std::size_t i = 0; i != all.size(); ++i) {
            SCOPED_TRACE(all[i]);
            const bool motionBlurOnly = (i + seed) % 5 == 0;
            const bool ignoreActivity = (i + seed) % 3 == 0;
            const Fields expected =
                literalFields(plain.get(), all[i], motionBlurOnly, ignoreActivity);
            expectSame(manager.getUpdatedAnimationFields(fast.get(), all[i], motionBlurOnly,
                                                         ignoreActivity),
                       expected);
            ASSERT_EQ(layout(*fast), layout(*plain));
            records += expected.size();
        }
    }
    EXPECT_GT(records, 5000U) << "the clips must have something to compare";
}

TEST_F(ClipEvaluation, randomClipsGiveTheMapsAndTheOrderOfThePlainModel) {
    std::size_t records = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        const std::unique_ptr<kvAnimationClip> fast(RandomClip(seed).make(3));
        const std::unique_ptr<kvAnimationClip> plain(RandomClip(seed).make(3));
        for (const float frame : frames()) {
            SCOPED_TRACE(frame);
            const bool motionBlurOnly = seed % 4 == 0;
            const Maps expected = literalMaps(plain.get(), frame, motionBlurOnly);
            expectSame(manager.computeCurveValues(fast.get(), frame, motionBlurOnly), expected);
            ASSERT_EQ(layout(*fast), layout(*plain));
            records += expected.size();
        }
    }
    EXPECT_GT(records, 5000U) << "the clips must have something to compare";
}

TEST_F(ClipEvaluation, randomSelectionsGiveTheRecordsOfThePlainModel) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        const std::unique_ptr<kvAnimationClip> source(RandomClip(seed).make(0));
        std::vector<kvAnimationCurve*> selected;
        for (kvAnimationBlock* block : source->getBlocks(false, false))
            selected.insert(selected.end(), block->getBlockCurves().begin(),
                            block->getBlockCurves().end());
        manager.setSelectedCurves(selected);
        for (const float frame : frames())
            expectSame(manager.getUpdatedAnimationFields(frame), literalFields(selected, frame));
    }
}

TEST_F(ClipEvaluation, clipsNestedADozenDeepAreEvaluatedInOneWalk) {
    // With a fresh question for every range at every level this would take 4 to the power of the
    // depth; told once, it is instant.
    kvAnimationClip* top = clip("top");
    kvAnimationClip* at12 = top;
    for (int depth = 0; depth < 12; ++depth)
        at12 = at12->newSubclip();
    at12->addBlock(namedBlock("deep", 0, 10));
    EXPECT_EQ(at(top, 5), (Names{"deep"}));
    EXPECT_EQ(at(top, 50), (Names{"deep"}));
    EXPECT_EQ(mapsAt(top, 5), (Names{"deep"}));
}

TEST_F(ClipEvaluation, aWarmFrameAllocatesNothing) {
    kvAnimationClip* top = clip("top");
    kvAnimationClip* inner = top->newSubclip();
    for (kvAnimationClip* each : {top, inner}) {
        for (int i = 0; i < 40; ++i) {
            // Out of order of start, so that the order has to be found.
            const auto start = static_cast<float>((i * 7) % 40);
            each->addBlock(namedBlock("translateX", start, start + 50.0F));
            each->addSequence(newSequence("step", start, start + 3.0F));
        }
    }
    kvAnimationBlock* single = block("single", 0, 10);
    Fields kept;
    const auto frameAt = [&](float frame) {
        kept.clear();
        kv::detail::appendUpdatedFields(kept, top, frame, false, false);
        kv::detail::appendUpdatedFields(kept, single, frame, false, false);
        manager.checkAndExecSkippedSequences(top, -1.0F); // the tick's question; nothing is due
    };
    for (const float frame : {0.0F, 30.0F, 45.0F, 89.0F})
        frameAt(frame);
    const std::size_t allocations = kvtest::allocationsOf([&]() {
        for (int frame = 0; frame < 90; ++frame)
            frameAt(static_cast<float>(frame));
    });
    EXPECT_EQ(allocations, 0U);
    EXPECT_FALSE(kept.empty());
}

} // namespace
