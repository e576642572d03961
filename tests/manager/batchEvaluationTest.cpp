// Curves are evaluated in batches, while later ones are brought near. None of that may show: as
// many curves as make several batches, of every kind that a batch leaves out or holds, give the
// records of the plain model in their order.

#include "manager/fixture.h"
#include "manager/literalEvaluation.h"

#include "keys/curveBatch.h"
#include "support/access/kvControlPointManager.h"

#include <cstring>
#include <limits>
#include <random>

using namespace kv::test;

namespace {

using State = kvTestAccess<kvControlPointManager>;
constexpr std::size_t kBatch = kv::detail::CurveBatch::kCapacity;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::uint32_t bits(float value) {
    std::uint32_t result = 0;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

void expectSameFields(const Fields& found, const Fields& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].fcId, expected[i].fcId) << i;
        EXPECT_EQ(bits(found[i].value), bits(expected[i].value)) << i;
    }
}

class BatchEvaluation : public SceneTest {
  protected:
    kvAnimationCurve* numbered(kvAnimationCurve* curve) {
        kvAnimationUtils2::AnimationField field;
        field.fcId = ++_lastNumber;
        curve->setAnimationField(field);
        return curve;
    }

    /// Bent segments over [start, start + 30].
    kvAnimationCurve* bent(float start) {
        kvAnimationCurve* made = numbered(curve("bent", {}));
        for (int i = 0; i < 4; ++i) {
            const float x = start + 10.0F * static_cast<float>(i);
            const float y = static_cast<float>(_random() % 100);
            made->importControlPoint(x, y, x - 4.0F, y + 1.0F, x + 3.0F, y - 2.0F, 6);
        }
        return made;
    }

    kvAnimationCurve* anyCurve() {
        switch (_random() % 6) {
        case 0:
            return nullptr;
        case 1:
            return numbered(curve("keyless", {}));
        case 2:
            return numbered(curve("single", {{5, 1}}));
        case 3:
            return numbered(curve("sentinel", {{0, -1.0e23F}, {12, 2}}));
        default:
            return bent(static_cast<float>(_random() % 40));
        }
    }

    void expectTheModel(const std::vector<kvAnimationCurve*>& curves, float frame) {
        manager.setSelectedCurves(curves);
        expectSameFields(manager.getUpdatedAnimationFields(frame), literalFields(curves, frame));
    }

    std::minstd_rand _random{7};

  private:
    std::uint32_t _lastNumber = 0;
};

} // namespace

TEST_F(BatchEvaluation, anyNumberOfCurvesGivesTheRecordsOfThePlainModel) {
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, kBatch - 1, kBatch, kBatch + 1,
                                    2 * kBatch, 3 * kBatch, 3 * kBatch + 1, 5 * kBatch + 3}) {
        std::vector<kvAnimationCurve*> curves;
        for (std::size_t i = 0; i < count; ++i)
            curves.push_back(anyCurve());
        // Twice each: the second time the segments are remembered.
        for (const float frame : {-1.0F, 0.0F, 11.5F, 12.0F, 12.0F, 33.25F, 70.0F, 71.0F})
            for (int i = 0; i < 2; ++i)
                expectTheModel(curves, frame);
    }
}

TEST_F(BatchEvaluation, blocksOfAClipShareBatchesAndKeepTheirOwnHoldRule) {
    kvAnimationClip clip;
    for (int i = 0; i < 60; ++i) {
        auto* const block = new kvAnimationBlock("block");
        for (std::size_t c = _random() % 4; c > 0; --c)
            block->addCurve(numbered(newCurve(
                "held", {{static_cast<float>(_random() % 20), 1.0F},
                         {static_cast<float>(20 + _random() % 20), static_cast<float>(c)}})));
        clip.addBlock(block);
    }
    for (float frame = -2.0F; frame < 45.0F; frame += 1.5F)
        expectSameFields(manager.getUpdatedAnimationFields(&clip, frame, false, false),
                         literalFields(&clip, frame, false, false));
}

TEST_F(BatchEvaluation, aListThatEndsInANaNIsNotWithinItsRangeAnywhere) {
    // However the last frame became a NaN, the segment before it is remembered.
    const std::vector<std::vector<kvAnimationCurve*>> lists = {
        {bent(0), bent(-5)}, {bent(0), bent(-5)}, {bent(0), bent(-5)}};
    for (const auto& curves : lists)
        for (int i = 0; i < 2; ++i)
            expectTheModel(curves, 12.0F);

    const auto last = [](kvAnimationCurve* curve) { return &State::keys(*curve).back(); };
    lists[0][0]->snap2Integer(*last(lists[0][0]), kNaN, 1.0, false, false);
    lists[1][0]->moveCPTo(last(lists[1][0]), static_cast<float>(kNaN), 1.0F);
    lists[2][0]->insertCP(kNaN, 1.0);
    for (const auto& curves : lists) {
        ASSERT_TRUE(curves[0]->getEndFrame() != curves[0]->getEndFrame());
        ASSERT_TRUE(State::isKnownSorted(*curves[0]));
        for (const float frame : {12.0F, 13.0F, 25.0F, 40.0F})
            for (int i = 0; i < 2; ++i)
                expectTheModel(curves, frame);
    }
}
