// Every compiled form of the evaluation, one curve and several at a time, gives the literal bits on
// every processor that can run it.
#include "keys/literalEvaluation.h"

#include "support/access/kvControlPointManager.h"
#include "support/kernels.h"
#include "support/segmentFamilies.h"

#include <kvAnimationCurve.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

using namespace kv::test;
using kv::detail::CurveBatch;
using kv::detail::EvaluationKernel;
using kv::detail::Segment;

namespace {

using State = kvTestAccess<kvControlPointManager>;

constexpr std::uint64_t kEvaluations = KV_EVALUATIONS_PER_FAMILY / 4;

std::uint32_t bits(float v) {
    std::uint32_t result = 0;
    std::memcpy(&result, &v, sizeof result);
    return result;
}

std::vector<EvaluationKernel> allKernels() {
    std::vector<EvaluationKernel> kernels = kv::detail::evaluationKernels();
    kernels.push_back({"plain", &kv::detail::plain::evaluateOne, &kv::detail::plain::evaluateMany});
    return kernels;
}

// As many curves of two keys as a batch has room for.
class Curves {
  public:
    Curves() : _curves(CurveBatch::kCapacity) {
        for (kvAnimationCurve& curve : _curves) {
            curve.insertCP(0.0, 0.0);
            curve.insertCP(1.0, 0.0);
        }
    }

    kvAnimationCurve& operator[](std::size_t i) { return _curves[i]; }

    void set(std::size_t i, const Segment& s) {
        std::vector<kvControlPoint>& keys = State::keys(_curves[i]);
        keys[0].setPoint({s.x0, s.y0});
        keys[0].setOutTangent({s.x1, s.y1});
        keys[1].setInTangent({s.x2, s.y2});
        keys[1].setPoint({s.x3, s.y3});
    }

  private:
    std::vector<kvAnimationCurve> _curves;
};

// The same segment at the place where it has this frame within itself.
Segment around(double frame, Segment s, QuickRandom& random) {
    const double shift = frame - random.between(s.x0, s.x3);
    for (double* x : {&s.x0, &s.x1, &s.x2, &s.x3})
        *x += shift;
    return s;
}

// Random batches at one frame: mostly neighbours of one family, as scenes have them, sometimes a
// mixture; often with all keys and handles at the frames of those before, or all but one. Some of
// the segments are told, the others are to be found.
class RandomBatches {
  public:
    explicit RandomBatches(std::uint64_t seed) : _random(seed) {}

    float newFrame() {
        _frame = static_cast<float>(_random.between(-500.0, 500.0));
        return _frame;
    }

    void fill(CurveBatch& batch, Curves& curves) {
        const auto& families = segmentFamilies();
        const std::size_t first = _random.next() % families.size();
        const bool isMixed = _random.next() % 4 == 0;
        const bool isShared = _random.next() % 2 == 0;
        if (isShared && _random.next() % 2 == 0) {
            double* const frames[] = {&_times.x0, &_times.x1, &_times.x2, &_times.x3};
            double& one = *frames[_random.next() % 4];
            one = std::nextafter(one, 1000.0);
        }
        const double at = static_cast<double>(_frame);
        batch.count = _random.next() % (CurveBatch::kCapacity + 1);
        for (std::size_t i = 0; i < batch.count; ++i) {
            const std::size_t family = isMixed ? _random.next() % families.size() : first;
            Segment s = around(at, families[family].make(_random), _random);
            if (isShared) s = {_times.x0, s.y0, _times.x1, s.y1, _times.x2, s.y2, _times.x3, s.y3};
            if (i == 0) _times = s;
            curves.set(i, s);
            _known[i] = s;
            const bool isWithin = s.x0 <= at && at < s.x3;
            batch.entries[i].known = isWithin && _random.next() % 2 == 0 ? &_known[i] : nullptr;
            batch.entries[i].curve = &curves[i];
            batch.entries[i].after = kv::detail::KeyListReader::firstAfter(curves[i], at, 0);
        }
    }

  private:
    QuickRandom _random;
    float _frame = 0.0F;
    Segment _known[CurveBatch::kCapacity];
    Segment _times{-600.0, 0.0, -300.0, 0.0, 300.0, 0.0, 600.0, 0.0};
};

class EveryKernel : public ::testing::TestWithParam<std::size_t> {};

} // namespace

TEST_P(EveryKernel, hasTheLiteralBitsForOneCurve) {
    const EvaluationKernel kernel = allKernels()[GetParam()];
    QuickRandom random(11);
    Curves curves;
    for (const SegmentFamily& family : segmentFamilies()) {
        for (std::uint64_t done = 0; done < kEvaluations; done += 8) {
            const Segment segment = family.make(random);
            curves.set(0, segment);
            for (int i = 0; i < 8; ++i) {
                const float frame = frameOn(random, segment);
                ASSERT_EQ(bits(kernel.evaluateOne(&curves[0], frame)),
                          bits(kv::detail::evaluateCurveLiterally(&curves[0], frame)))
                    << kernel.name << ' ' << family.name;
            }
        }
    }
}

TEST_P(EveryKernel, hasTheLiteralBitsForEachCurveOfABatch) {
    const EvaluationKernel kernel = allKernels()[GetParam()];
    RandomBatches batches(12);
    Curves curves;
    CurveBatch batch;
    for (std::uint64_t done = 0; done < kEvaluations * segmentFamilies().size();) {
        const float frame = batches.newFrame();
        kv::detail::LastRoots last;
        for (int i = 0; i < 3; ++i) {
            batches.fill(batch, curves);
            kernel.evaluateMany(batch, frame, last);
            for (std::size_t c = 0; c < batch.count; ++c)
                ASSERT_EQ(bits(batch.entries[c].value),
                          bits(kv::detail::evaluateCurveLiterally(&curves[c], frame)))
                    << kernel.name << " lane " << c << " of " << batch.count << " at " << frame;
            done += batch.count + 1;
        }
    }
}

TEST_P(EveryKernel, evaluatesCurvesWithoutASegmentInABatch) {
    const EvaluationKernel kernel = allKernels()[GetParam()];
    kvAnimationCurve empty;
    kvAnimationCurve single;
    single.insertCP(3.0, 4.0);
    kvAnimationCurve two;
    two.insertCP(10.0, 1.0);
    two.insertCP(20.0, 2.0);
    CurveBatch batch;
    for (const kvAnimationCurve* curve : {&empty, &single, &two, &two})
        batch.entries[batch.count++] = {curve, nullptr, 0, 0, 0.0F};
    batch.entries[3].after = 2;
    kv::detail::LastRoots at5;
    kernel.evaluateMany(batch, 5.0F, at5);
    EXPECT_EQ(batch.entries[0].value, kv::detail::kNoCurveValue);
    EXPECT_EQ(batch.entries[1].value, kv::detail::kNoCurveValue);
    EXPECT_EQ(batch.entries[2].value, 1.0F) << "before the first key";
    EXPECT_EQ(batch.entries[3].value, 1.0F);
    kv::detail::LastRoots at25;
    kernel.evaluateMany(batch, 25.0F, at25);
    EXPECT_EQ(batch.entries[2].value, 2.0F) << "behind the last one";
}

INSTANTIATE_TEST_SUITE_P(Kernels, EveryKernel,
                         ::testing::Range<std::size_t>(0, allKernels().size()),
                         [](const ::testing::TestParamInfo<std::size_t>& info) {
                             return std::string(allKernels()[info.param].name);
                         });
