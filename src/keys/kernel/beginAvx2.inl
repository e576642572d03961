// From here to endAvx2.inl, functions are compiled for processors with AVX2 and FMA; see
// hasAvx2() in evaluationKernel.h.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2,fma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2,fma")
#endif
