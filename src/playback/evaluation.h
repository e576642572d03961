#pragma once

#include "manager/frameEvaluation.h"

#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>

#include <vector>

namespace kv {
namespace detail {

using FieldList = std::vector<kvAnimationUtils2::AnimationField>;

/// The three evaluations that playback makes. Without a manager, or without the item, there are no
/// records. Motion blur never restricts playback.
void evaluate(kvAnimationManager2* manager, kvAnimationBlock* block, float frame,
              bool ignoreActivity, FieldSink& records);
void evaluate(kvAnimationManager2* manager, kvAnimationClip* clip, float frame, bool ignoreActivity,
              FieldSink& records);
void evaluateSelected(kvAnimationManager2* manager, float frame, FieldSink& records);

} // namespace detail
} // namespace kv
