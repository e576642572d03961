// Sequence items: a range of frames on a track with the text of what the host shall run there.

#include <kvAnimationSequence2.h>

#include "keys/constants.h"

static_assert(kv::detail::kFrameMin == -1.0e23F, "the frame of a sequence that never ran");

kvAnimationSequence2::kvAnimationSequence2() = default;

kvAnimationSequence2::kvAnimationSequence2(const std::string& text)
    : kvAnimationBlock(text), _sequence(text) {}

// The block part is deliberately a new one and not a copy: see the header.
// NOLINTBEGIN(bugprone-copy-constructor-init,readability-redundant-member-init)
kvAnimationSequence2::kvAnimationSequence2(const kvAnimationSequence2& other)
    : kvAnimationBlock(), _sequence(other._sequence), _zerosFillAmount(other._zerosFillAmount),
      _oldFrame(other._oldFrame), _dirty(other._dirty) {}
// NOLINTEND(bugprone-copy-constructor-init,readability-redundant-member-init)

kvAnimationSequence2& kvAnimationSequence2::operator=(const kvAnimationSequence2& other) = default;

kvAnimationSequence2::~kvAnimationSequence2() = default;

void kvAnimationSequence2::setZerosFillAmount(unsigned int amount) {
    _zerosFillAmount = static_cast<std::uint16_t>(amount);
}

void kvAnimationSequence2::moveBlock(float delta) {
    _startFrame += delta;
    _endFrame += delta;
}

void kvAnimationSequence2::stretchLeft(float frame) {
    setStartFrame(frame);
}

void kvAnimationSequence2::stretchRight(float frame) {
    setEndFrame(frame);
}
