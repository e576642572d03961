#pragma once

// The parts of curve evaluation, for those who look at more than its result: as the library has
// them on any processor, and the plain form without vectors.

#include "keys/evaluationKernel.h"

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
} // namespace kv::detail::parts
