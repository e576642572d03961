// The tick: time elapsed on the host's clock becomes a frame, the frame becomes values in the
// scene.
//
// Beyond the end of a range there is one last evaluation, at the end itself. The manager is told
// that frame; the controller's own actual frame keeps the overshoot.

#include <kvAnimationController2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationEvent.h>
#include <kvAnimationSequence2.h>

#include "keys/rounding.h"
#include "playback/evaluation.h"
#include "playback/playedValues.h"

#include <cmath>

using kv::detail::evaluate;
using kv::detail::evaluateSelected;
using kv::detail::FieldList;
using kv::detail::FieldSink;

void kvAnimationController2::animationLoop() {
    if (!_playing) return;
    _timeDiff = kvAnimationManager2::getSimulationTime() - _startTime;
    double framesRun = static_cast<double>(_fps) * _timeDiff;
    if (_reverse) framesRun = -framesRun;
    _actualFrame = static_cast<float>(framesRun + static_cast<double>(_startFrame));
    kvAnimationManager2::setActualFrame(_actualFrame);

    switch (_pt) {
    case PT_BLOCK:
        tickBlock();
        break;
    case PT_CLIP:
        tickClip();
        break;
    case PT_GLOBAL:
        tickGlobal();
        break;
    case PT_LOCAL:
        tickLocal();
        break;
    case PT_SEQUENCE:
        tickSequence();
        break;
    default:
        break;
    }
}

// In reverse the formula wraps upwards, away from the end frame: a block of 10..40 that starts at
// 40 plays frame 65 when it has run down to 35. Hosts rely on the forward case only.
void kvAnimationController2::wrapIfRepeating() {
    if (!_repeating) return;
    const float turns = std::floor((_actualFrame - _startFrame) / _duration);
    _actualFrame = _actualFrame - turns * _duration;
}

// Blocks and clips know only one bound: the one that playback runs towards. A NaN frame is outside.
bool kvAnimationController2::insideItem() {
    return _reverse ? _endFrame <= _actualFrame : _actualFrame <= _endFrame;
}

void kvAnimationController2::tickBlock() {
    wrapIfRepeating();
    const bool inside = insideItem();
    const float frame = inside ? _actualFrame : _endFrame;
    kvAnimationManager2::setActualFrame(frame);
    evaluate(_am, _playingBlock, frame, _ignoreActivity, _values.replace());
    if (!inside) stop(); // after the evaluation: the last frame still ignores activity
    _values.write();
}

void kvAnimationController2::tickClip() {
    wrapIfRepeating();
    kvAnimationClip* const clip = _playingClip;
    if (insideItem()) {
        kvAnimationManager2::setActualFrame(_actualFrame);
        evaluate(_am, clip, _actualFrame, _ignoreActivity, _values.replace());
        _values.write();
        int frame = 0;
        if (wholeFrameChanged(frame)) {
            const float wholeFrame = static_cast<float>(frame);
            if (_am != nullptr) {
                for (kvAnimationSequence2* sequence : _am->computeSequences(clip, wholeFrame)) {
                    kvAnimationManager2::executeSequence(sequence);
                }
                _am->checkAndExecSkippedSequences(clip, wholeFrame);
            }
            _oldFrame = wholeFrame;
        }
    } else {
        const float frame = _endFrame;
        stop(); // before the evaluation, unlike a block: the last frame of a clip heeds activity
        kvAnimationManager2::setActualFrame(frame);
        evaluate(_am, clip, frame, _ignoreActivity, _values.replace());
        _values.write();
        if (_am != nullptr) _am->checkAndExecSkippedSequences(clip, frame);
    }
    notifyClipMaker();
}

// Local and global playback run between the minimum and the maximum frame. `frame` becomes the
// frame to evaluate; true when the bound has been crossed. A NaN frame crosses nothing.
bool kvAnimationController2::leftRange(float& frame) {
    const float bound = _reverse ? _minFrame : _maxFrame;
    const bool left = _reverse ? _actualFrame < bound : _actualFrame > bound;
    frame = left ? bound : _actualFrame;
    if (left) kvAnimationManager2::setActualFrame(frame);
    return left;
}

void kvAnimationController2::tickGlobal() {
    float frame = 0.0F;
    const bool left = leftRange(frame);
    FieldSink& records = _values.accumulate();
    for (kvAnimationBlock* block : kvAnimationManager2::_animationBlocks)
        evaluate(_am, block, frame, _ignoreActivity, records);
    if (_connectedGlobalSlider) evaluateSelected(_am, frame, records);
    if (left) stop();
    _values.write();
    notifyGlobal();
}

void kvAnimationController2::tickLocal() {
    float frame = 0.0F;
    const bool left = leftRange(frame);
    evaluateSelected(_am, frame, _values.replace());
    if (left) stop();
    _values.write();
    notifyLocal();
}

void kvAnimationController2::tickSequence() {
    const bool left = _reverse ? _actualFrame < _endFrame : _actualFrame > _endFrame;
    if (left) {
        kvAnimationManager2::setActualFrame(_endFrame);
        stop();
        kvAnimationEvent::updateClipMakerFrame(); // blocked calls do not hold this one back
        return;
    }
    int frame = 0;
    if (wholeFrameChanged(frame)) {
        kvAnimationManager2::executeSequence(_playingSequence);
        _oldFrame = static_cast<float>(frame);
    }
    notifyClipMaker();
}

// Sequences run once for every whole frame, halves rounded away from zero. Clip and sequence
// playback share the memory of the last one.
bool kvAnimationController2::wholeFrameChanged(int& frame) {
    frame = kv::detail::roundHalfAway(static_cast<double>(_actualFrame));
    return std::isnan(_actualFrame) || !(static_cast<float>(frame) == _oldFrame);
}

void kvAnimationController2::execute(FieldList fields) {
    for (const kvAnimationUtils2::AnimationField& field : fields)
        kvAnimationUtils2::setRealFieldValue(field);
}
