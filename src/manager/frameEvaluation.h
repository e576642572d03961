#pragma once

// The evaluation of one frame, handed record by record to whoever keeps them from tick to tick. The
// manager's getUpdatedAnimationFields are these with a fresh vector. Nothing is allocated beyond
// the growth of the result once the working storage is warm.

#include "keys/curveBatch.h"

#include <kvAnimationUtils2.h>

#include <cstddef>
#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationCurve;

namespace kv::detail {

class PlayedSegments;

/// Takes the records of an evaluation, in order.
class FieldSink {
  public:
    /// A record for each: the curve's binding with its value. All have one, even if it is NaN.
    virtual void add(const CurveBatch::Entry* evaluated, std::size_t count) = 0;

    /// Where segments are taken down from one evaluation to the next; null for evaluations of which
    /// none like it follows.
    virtual PlayedSegments* playedSegments() { return nullptr; }

  protected:
    ~FieldSink() = default;
};

/// Hands over a record for every curve that passes the hold rule among its siblings and has a
/// value.
void evaluateFields(FieldSink& sink, const std::vector<kvAnimationCurve*>& curves, float frame);

/// The same for the curves of a block; null, and a block that the flags exclude, have no records.
void evaluateFields(FieldSink& sink, kvAnimationBlock* block, float frame, bool motionBlurOnly,
                    bool ignoreActivity);

/// The same for a clip with everything below it: sub-clips first, then blocks. Leaves all tracks
/// sorted by start.
void evaluateFields(FieldSink& sink, kvAnimationClip* clip, float frame, bool motionBlurOnly,
                    bool ignoreActivity);

/// The same three, appended to a vector: each record is made where it belongs.
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         const std::vector<kvAnimationCurve*>& curves, float frame);
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         kvAnimationBlock* block, float frame, bool motionBlurOnly,
                         bool ignoreActivity);
void appendUpdatedFields(std::vector<kvAnimationUtils2::AnimationField>& result,
                         kvAnimationClip* clip, float frame, bool motionBlurOnly,
                         bool ignoreActivity);

} // namespace kv::detail
