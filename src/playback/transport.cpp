// The transport: what is played, from where to where, and whether. Everything here sets state; only
// the resets and the jumps evaluate and write a frame themselves.

#include <kvAnimationController2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationEvent.h>
#include <kvAnimationSequence2.h>

#include "playback/evaluation.h"
#include "playback/playedValues.h"

#include <cstddef>

using kv::detail::evaluate;
using kv::detail::evaluateSelected;
using kv::detail::FieldList;
using kv::detail::FieldSink;
using kv::detail::TickRecords;

kvAnimationManager2* kvAnimationController2::_am = nullptr;
bool kvAnimationController2::_blocking = false;
float kvAnimationController2::_minFrame = 0.0F;
float kvAnimationController2::_maxFrame = 0.0F;
float kvAnimationController2::_startFrame = 0.0F;
float kvAnimationController2::_endFrame = 0.0F;
float kvAnimationController2::_actualFrame = 0.0F;
kv::detail::PlayedValues kvAnimationController2::_values;
kvAnimationBlock* kvAnimationController2::_playingBlock = nullptr;
kvAnimationClip* kvAnimationController2::_playingClip = nullptr;
kvAnimationSequence2* kvAnimationController2::_playingSequence = nullptr;
osg::NodePtr kvAnimationController2::_node;
bool kvAnimationController2::_playing = false;
bool kvAnimationController2::_pausing = false;
bool kvAnimationController2::_repeating = false;
bool kvAnimationController2::_ffw = false;
bool kvAnimationController2::_fbw = false;
bool kvAnimationController2::_reverse = false;
bool kvAnimationController2::_connectedGlobalSlider = false;
bool kvAnimationController2::_ignoreActivity = false;
float kvAnimationController2::_oldFrame = 0.0F;
float kvAnimationController2::_duration = 0.0F;
float kvAnimationController2::_fps = 25.0F;
double kvAnimationController2::_simTime = 0.0;
double kvAnimationController2::_startTime = 0.0;
double kvAnimationController2::_timeDiff = 0.0;
kvAnimationController2::PlayType kvAnimationController2::_pt = kvAnimationController2::PT_GLOBAL;

namespace {

// Showing a first frame is repeated: a host's camera may need several updates to settle.
constexpr int kWritesToSettle = 5;

// Fast forward and backward, as a factor of the rate.
constexpr float kFastFactor = 3.0F;

} // namespace

void kvAnimationController2::setAnimationManager(kvAnimationManager2* manager) {
    _am = manager;
}
void kvAnimationController2::blockCalls(bool block) {
    _blocking = block;
}
void kvAnimationController2::setMinFrame(float frame) {
    _minFrame = frame;
}
void kvAnimationController2::setMaxFrame(float frame) {
    _maxFrame = frame;
}
void kvAnimationController2::setStartFrame(float frame) {
    _startFrame = frame;
}
void kvAnimationController2::setEndFrame(float frame) {
    _endFrame = frame;
}
void kvAnimationController2::setPlayType(int type) {
    _pt = static_cast<PlayType>(type);
}
void kvAnimationController2::setFPS(float fps) {
    _fps = fps;
}
float kvAnimationController2::getFPS() {
    return _fps;
}
float kvAnimationController2::getActualFrame() {
    return _actualFrame;
}
FieldList kvAnimationController2::getValues() {
    return _values.all();
}

osg::NodePtr kvAnimationController2::resolveTransformNode(const osg::NodePtr& node) {
    return kvAnimationManager2::resolveTransformNode(node);
}

// --- starting

void kvAnimationController2::play(kvAnimationBlock* block, bool reverse, bool ignoreActivity) {
    if (block == nullptr) return;
    const float first = block->getStartFrame();
    const float last = block->getEndFrame();
    play(block, reverse ? last : first, reverse ? first : last, reverse, ignoreActivity);
}

void kvAnimationController2::play(kvAnimationBlock* block, float start, float end, bool reverse,
                                  bool ignoreActivity) {
    if (block == nullptr) return;
    _startTime = kvAnimationManager2::getSimulationTime();
    _startFrame = start;
    _endFrame = end;
    _duration = block->getEndFrame() - block->getStartFrame(); // the block's, not the arguments'
    _playingBlock = block;
    _pt = PT_BLOCK;
    _playing = true;
    _reverse = reverse;
    _repeating = block->getRepeat();
    _ignoreActivity = ignoreActivity;
}

void kvAnimationController2::play(kvAnimationSequence2* sequence, bool reverse) {
    if (sequence == nullptr) return;
    const float first = sequence->getStartFrame();
    const float last = sequence->getEndFrame();
    _startTime = kvAnimationManager2::getSimulationTime();
    _startFrame = reverse ? last : first;
    _endFrame = reverse ? first : last;
    _duration = last - first;
    _playingSequence = sequence;
    _pt = PT_SEQUENCE;
    _playing = true;
    _reverse = reverse;
    _ignoreActivity = false;
}

void kvAnimationController2::play(kvAnimationClip* clip, bool reverse, bool ignoreActivity) {
    if (clip == nullptr) return;
    const float first = clip->getStartFrame();
    const float last = clip->getEndFrame();
    play(clip, reverse ? last : first, reverse ? first : last, reverse, ignoreActivity);
    _duration = last - first;
}

void kvAnimationController2::play(kvAnimationClip* clip, float start, float end, bool reverse,
                                  bool ignoreActivity) {
    if (clip == nullptr) return;
    _startTime = kvAnimationManager2::getSimulationTime();
    _startFrame = start;
    _endFrame = end;
    _duration = end - start;
    _playingClip = clip;
    _pt = PT_CLIP;
    _playing = true;
    _reverse = reverse;
    _repeating = clip->getRepeat();
    _ignoreActivity = ignoreActivity;
    clip->setAllSequencesDirty();
}

void kvAnimationController2::play(const osg::NodePtr& node, bool reverse) {
    // The flags stay set, so the next call divides once more.
    if (_ffw || _fbw) _fps /= kFastFactor;
    if (_pausing) {
        _playing = true;
        _pausing = false;
        return;
    }
    play(reverse);
    _duration = -1.0F;
    _node = node;
}

void kvAnimationController2::play(bool reverse) {
    _startTime = kvAnimationManager2::getSimulationTime();
    _startFrame = kvAnimationManager2::getActualFrame();
    _pt = PT_LOCAL;
    _playing = true;
    _reverse = reverse;
}

void kvAnimationController2::playGlobal(bool reverse, bool connectedGlobalSlider,
                                        bool ignoreActivity) {
    _startTime = kvAnimationManager2::getSimulationTime();
    _startFrame = kvAnimationManager2::getActualFrame();
    _pt = PT_GLOBAL;
    _playing = true;
    _reverse = reverse;
    _connectedGlobalSlider = connectedGlobalSlider;
    _ignoreActivity = ignoreActivity;
}

// --- stopping, speed

void kvAnimationController2::pause() {
    _pausing = !_pausing;
}

void kvAnimationController2::stop() {
    _playing = false;
    _reverse = false;
    _ignoreActivity = false;
    _blocking = false;
}

void kvAnimationController2::fastForward() {
    _ffw = true;
    _playing = true;
    _fps *= kFastFactor;
}

void kvAnimationController2::fastBackward() {
    _fbw = true;
    _playing = true;
    _reverse = true;
    _fps *= kFastFactor;
}

void kvAnimationController2::repeat(bool) {}

// --- resets

void kvAnimationController2::reset(kvAnimationBlock* block) {
    stop();
    if (block == nullptr) return;
    evaluate(_am, block, block->getStartFrame(), false, _values.replace());
    const int writes = block->isCameraBlock() ? kWritesToSettle : 1;
    for (int i = 0; i < writes; ++i)
        _values.write();
}

void kvAnimationController2::reset(kvAnimationClip* clip) {
    stop();
    if (clip == nullptr) return;
    // Blocking the sub-clips' notifications has no effect, since each reset starts by clearing the
    // flag: every sub-clip notifies. Hosts count on it.
    const std::vector<kvAnimationClip*> subclips = clip->getSubclips(false, false);
    for (std::size_t i = subclips.size(); i-- > 0;) {
        _blocking = true;
        reset(subclips[i]);
        _blocking = false;
    }
    const std::vector<kvAnimationBlock*> blocks = clip->getBlocks(false, false);
    for (std::size_t i = blocks.size(); i-- > 0;) {
        if (blocks[i] != nullptr && blocks[i]->getActive()) reset(blocks[i]);
    }
    if (!_blocking) {
        kvAnimationManager2::setActualFrame(clip->getStartFrame());
        kvAnimationEvent::updateClipMakerFrame();
    }
}

// --- jumps of a block or a clip: apply, then notify; the list of played values is left alone

void kvAnimationController2::gotoStart(kvAnimationBlock* block) {
    if (block != nullptr) jump(block, block->getStartFrame(), kWritesToSettle);
}

void kvAnimationController2::gotoEnd(kvAnimationBlock* block) {
    if (block != nullptr) jump(block, block->getEndFrame(), 1);
}

void kvAnimationController2::gotoStart(kvAnimationClip* clip) {
    if (clip != nullptr) jump(clip, clip->getStartFrame(), 1);
}

void kvAnimationController2::gotoEnd(kvAnimationClip* clip) {
    if (clip != nullptr) jump(clip, clip->getEndFrame(), 1);
}

template <class Item>
void kvAnimationController2::jump(Item* item, float frame, int writes) {
    stop();
    TickRecords records;
    evaluate(_am, item, frame, false, records);
    kvAnimationManager2::setActualFrame(frame);
    for (int i = 0; i < writes; ++i)
        records.write();
    if (!_blocking) kvAnimationEvent::callAllPlayListeners();
}

// --- jumps of a play type: notify, then apply

void kvAnimationController2::gotoStart(PlayType type) {
    jump(type, true);
    for (int i = 0; i < kWritesToSettle; ++i)
        _values.write();
}

void kvAnimationController2::gotoEnd(PlayType type) {
    jump(type, false);
    _values.write();
}

void kvAnimationController2::jump(PlayType type, bool toStart) {
    stop();
    switch (type) {
    case PT_BLOCK: {
        TickRecords& records = _values.replace();
        if (_playingBlock == nullptr) break;
        const float frame = toStart ? _playingBlock->getStartFrame() : _playingBlock->getEndFrame();
        evaluate(_am, _playingBlock, frame, false, records);
        kvAnimationManager2::setActualFrame(frame);
        break;
    }
    case PT_CLIP: {
        TickRecords& records = _values.replace();
        if (_playingClip != nullptr) {
            const float frame =
                toStart ? _playingClip->getStartFrame() : _playingClip->getEndFrame();
            evaluate(_am, _playingClip, frame, false, records);
            kvAnimationManager2::setActualFrame(frame);
        }
        notifyClipMaker();
        break;
    }
    case PT_GLOBAL:
        jumpGlobal(toStart);
        break;
    case PT_LOCAL:
        evaluateSelected(_am, selectedFrame(toStart), _values.replace());
        kvAnimationManager2::setActualFrame(toStart ? _minFrame : _maxFrame);
        notifyLocal();
        break;
    default:
        break;
    }
}

void kvAnimationController2::jumpGlobal(bool toStart) {
    FieldSink& records = _values.accumulate();
    for (kvAnimationBlock* block : kvAnimationManager2::_animationBlocks) {
        if (block == nullptr) continue;
        evaluate(_am, block, toStart ? block->getStartFrame() : block->getEndFrame(), false,
                 records);
    }
    if (_connectedGlobalSlider) evaluateSelected(_am, selectedFrame(toStart), records);
    kvAnimationManager2::setActualFrame(toStart ? _minFrame : _maxFrame);
    notifyGlobal();
}

// At the start the selected curves are taken one frame early, deliberately; not so at the end.
float kvAnimationController2::selectedFrame(bool toStart) {
    return toStart ? _minFrame - 1.0F : _maxFrame;
}

// --- notifications, all of them silent while calls are blocked

void kvAnimationController2::notifyClipMaker() {
    if (!_blocking) kvAnimationEvent::updateClipMakerFrame();
}

void kvAnimationController2::notifyGlobal() {
    if (_blocking) return;
    kvAnimationEvent::updateGlobalTimeLine();
    kvAnimationEvent::updateCurveEditorFrame();
}

void kvAnimationController2::notifyLocal() {
    if (_blocking) return;
    kvAnimationEvent::updateLocalTimeLine();
    kvAnimationEvent::updateCurveEditorFrame();
}
