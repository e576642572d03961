#pragma once

class kvAnimationClip;
class kvAnimationTrack;

/// @file
/// What lies below what: the test that keeps clips from being nested in themselves.

namespace kv::detail {

/// Whether \p target is \p from or a sub-clip below it at any depth.
bool isAtOrBelow(const kvAnimationClip& target, const kvAnimationClip& from);

/// Whether \p target is a track of \p from or of a sub-clip below it at any depth.
bool isAtOrBelow(const kvAnimationTrack& target, const kvAnimationClip& from);

} // namespace kv::detail
