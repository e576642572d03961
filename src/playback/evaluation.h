#pragma once

#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>

#include <vector>

namespace kv {
namespace detail {

using FieldList = std::vector<kvAnimationUtils2::AnimationField>;

/// The three evaluations that playback makes, appended to a list that is there already, so that a
/// warm tick allocates nothing. Without a manager, or without the item, nothing is appended. Motion
/// blur never restricts playback.
void appendFields(kvAnimationManager2* manager, kvAnimationBlock* block, float frame,
                  bool ignoreActivity, FieldList& fields);
void appendFields(kvAnimationManager2* manager, kvAnimationClip* clip, float frame,
                  bool ignoreActivity, FieldList& fields);
void appendSelectedFields(kvAnimationManager2* manager, float frame, FieldList& fields);

/// Writes `fields` into the scene, in order.
void writeFields(const FieldList& fields);

} // namespace detail
} // namespace kv
