// The whole kernel; see evaluationKernel.h.
#include "keys/kernel/lanes.inl"

#include "keys/kernel/constants.inl"

#include "keys/kernel/root.inl"

#include "keys/kernel/segment.inl"

#include "keys/kernel/curve.inl"

#include "keys/kernel/batch.inl"

#undef KV_KERNEL_LANES
#undef KV_KERNEL_FUSES
