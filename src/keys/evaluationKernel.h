#pragma once

/// @file
/// The evaluation of curves, compiled once for each instruction set that it gains by. The files
/// under kernel/ are included inside a namespace of their own for each, with KV_KERNEL_LANES set to
/// the number of doubles that are computed with side by side, and KV_KERNEL_FUSES defined where a
/// product and a sum can be rounded at once (which multiplyAdd() does, and nothing else):
///
///     namespace kv::detail::baseline {
///     #define KV_KERNEL_LANES 2
///     #include "keys/kernel/all.inl"
///     }
///
/// What has to have the literal bits goes through the same operations in every form and every lane;
/// the rest has bounds that hold in all of them. So all give the same values. This header has all
/// that those files need.

#include "keys/constants.h"
#include "keys/curveBatch.h"
#include "keys/keyListReader.h"
#include "keys/literalEvaluation.h"
#include "keys/rootTables.h"
#include "keys/segmentConstants.h"
#include "keys/segmentMemory.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

// Vectors of numbers with operators are an extension of these compilers.
#if defined(__GNUC__)
#define KV_KERNEL_INLINE inline __attribute__((always_inline))
#define KV_KERNEL_SEPARATE inline __attribute__((noinline))
#else
#define KV_KERNEL_INLINE inline
#define KV_KERNEL_SEPARATE inline
#endif

// Where a form for AVX2 and FMA can be compiled, between kernel/beginAvx2.inl and endAvx2.inl.
#if defined(__x86_64__) && defined(__GNUC__)
#define KV_HAS_AVX2_KERNEL
#endif

namespace kv::detail {

#if defined(KV_HAS_AVX2_KERNEL)
/// Whether this processor can run that form.
inline bool hasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}
#endif

/// How wide the band around 0 is in which the discriminant counts as 0, how far a root may lie
/// below 0, and below which a value counts as 0.
constexpr double kTolerance = 1e-6;

/// One compiled form.
struct EvaluationKernel {
    const char* name;
    float (*evaluateOne)(const kvControlPointManager* curve, float frame);
    void (*evaluateMany)(CurveBatch& batch, float frame, LastRoots& last);
};

/// Those that this processor can run, the best one last.
const std::vector<EvaluationKernel>& evaluationKernels();

} // namespace kv::detail
