#pragma once

namespace kvanim {

class Scene;

/// Throws InputError when a stored clip is nested in itself, more than 256 levels deep, or so that
/// more than a million copies would be made of nested clips. The library makes a copy of a nested
/// clip wherever it is nested, level by level, and trusts the records in that.
void requireMeasuredClips(const Scene& scene);

} // namespace kvanim
