#pragma once

#include <kvAnimationCurve.h>

#include <cstdint>

namespace kv::detail {

/// The binding of a curve without a copy of it, and a number that stands for its content: curves
/// with the same number have equal bindings. Every binding that is set gets a new number, and
/// copies of curves keep theirs. So whoever kept a binding knows by one comparison that it still is
/// what the curve says, whichever curve lies at its address by now.
struct CurveBinding {
    static const kvAnimationUtils2::AnimationField& of(const kvAnimationCurve& curve) {
        return curve.animationField;
    }
    static std::uint64_t stampOf(const kvAnimationCurve& curve) { return curve.bindingStamp; }
};

} // namespace kv::detail
