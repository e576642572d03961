#pragma once

// The evaluation of one frame, appending to a vector that the caller keeps from tick to tick. The
// manager's getUpdatedAnimationFields are these with a fresh vector. Nothing is allocated beyond
// the growth of the result once the working storage is warm.

#include <kvAnimationUtils2.h>

#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationCurve;

namespace kv::detail {

/// Appends a record for every curve that passes the hold rule among its siblings and has a value.
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         const std::vector<kvAnimationCurve*>& curves, float frame);

/// The same for the curves of a block; null, and a block that the flags exclude, append nothing.
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         kvAnimationBlock* block, float frame, bool motionBlurOnly,
                         bool ignoreActivity);

/// The same for a clip with everything below it: sub-clips first, then blocks. Leaves all tracks
/// sorted by start.
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         kvAnimationClip* clip, float frame, bool motionBlurOnly,
                         bool ignoreActivity);

} // namespace kv::detail
