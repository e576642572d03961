// The value of a curve at a frame, quickly: the interval and the segment's constants are taken from
// what the curve remembers, the root is found without the C library, and whenever the result is not
// certain to have the literal evaluator's bits, the literal evaluator is asked.
#include "keys/curveEvaluation.h"

#include "keys/curveBatch.h"
#include "keys/evaluationKernel.h"

#if defined(__GNUC__)

namespace kv::detail::baseline {
#define KV_KERNEL_LANES 2
#include "keys/kernel/all.inl"
} // namespace kv::detail::baseline

#if defined(KV_HAS_AVX2_KERNEL)
#include "keys/kernel/beginAvx2.inl"

namespace kv::detail::avx2 {
#define KV_KERNEL_LANES 4
#define KV_KERNEL_FUSES
#include "keys/kernel/all.inl"
} // namespace kv::detail::avx2

#include "keys/kernel/endAvx2.inl"
#endif

#else

namespace kv::detail::baseline {
#define KV_KERNEL_LANES 1
#include "keys/kernel/all.inl"
} // namespace kv::detail::baseline

#endif

namespace kv::detail {

namespace {

// Known before any constructor runs, since hosts' global objects may evaluate curves.
EvaluationKernel bestKernel = {"baseline", &baseline::evaluateOne, &baseline::evaluateMany};

#if defined(KV_HAS_AVX2_KERNEL)
[[maybe_unused]] const bool isChosen = [] {
    if (hasAvx2()) bestKernel = {"avx2", &avx2::evaluateOne, &avx2::evaluateMany};
    return true;
}();
#endif

} // namespace

const std::vector<EvaluationKernel>& evaluationKernels() {
    static const std::vector<EvaluationKernel> kernels = [] {
        std::vector<EvaluationKernel> found = {
            {"baseline", &baseline::evaluateOne, &baseline::evaluateMany}};
        if (bestKernel.evaluateOne != found.front().evaluateOne) found.push_back(bestKernel);
        return found;
    }();
    return kernels;
}

float evaluateCurve(const kvControlPointManager* curve, float frame) {
    return bestKernel.evaluateOne(curve, frame);
}

void evaluateCurves(CurveBatch& batch, float frame, LastRoots& last) {
    bestKernel.evaluateMany(batch, frame, last);
}

} // namespace kv::detail
