#pragma once

// The parts of curve evaluation, for those who look at more than its result: as the library has
// them on any processor, the plain form without vectors, and the form that rounds products and sums
// at once.

#include "keys/evaluationKernel.h"

#include <vector>

namespace kv::detail {

struct BoundedNumber {
    double value, error;
};

/// The steps of one compiled form.
struct KernelParts {
    BoundedNumber (*rootOf)(const Segment& s, bool exact, double frame);
    BoundedNumber (*valueOf)(const Segment& s, BoundedNumber root);
    bool (*isCertain)(const Segment& s, bool exact, double frame);
    double (*cubeRootOf)(double z);
    double (*inverseSquareOf)(double z); ///< roughly |z|^(-2/3)
    double (*cosineOfTwoThirds)(double z);
};

} // namespace kv::detail

namespace kv::detail::plain {
#define KV_KERNEL_LANES 1
#include "keys/kernel/all.inl"
} // namespace kv::detail::plain

namespace kv::detail::parts {
#if defined(__GNUC__)
#define KV_KERNEL_LANES 2
#else
#define KV_KERNEL_LANES 1
#endif
#include "keys/kernel/all.inl"

#include "support/kernelParts.inl"
} // namespace kv::detail::parts

#if defined(KV_HAS_AVX2_KERNEL)
#include "keys/kernel/beginAvx2.inl"

namespace kv::detail::fused {
#define KV_KERNEL_LANES 4
#define KV_KERNEL_FUSES
#include "keys/kernel/all.inl"

#include "support/kernelParts.inl"
} // namespace kv::detail::fused

#include "keys/kernel/endAvx2.inl"
#endif

namespace kv::test {

/// Those that this processor can run.
inline std::vector<kv::detail::KernelParts> kernelParts() {
    std::vector<kv::detail::KernelParts> found = {kv::detail::parts::kParts};
#if defined(KV_HAS_AVX2_KERNEL)
    if (kv::detail::hasAvx2()) found.push_back(kv::detail::fused::kParts);
#endif
    return found;
}

} // namespace kv::test
