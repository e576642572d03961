// The stage on which the rows of the boundary table are played, and what is seen of them.

#include "playback/boundaryStage.h"

#include "support/access/kvAnimationController2.h"

#include <OSGCameraSetting.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace kv::test {

namespace {

using Controller = kvAnimationController2;
using State = kvTestAccess<kvAnimationController2>;

constexpr float kFirst = 10.0F;
constexpr float kLast = 40.0F;
constexpr double kFramesPerSecond = 25.0;
// No operation sets this frame.
constexpr float kUntouched = -12345.0F;
// Added to the value of the selected curve, to tell its writes from those of a block.
constexpr float kSelectedOffset = 1000.0F;

const std::string kWrite = "write ";

NotificationLog* theLog = nullptr; // of the stage that is there

std::string text(float frame) {
    // Evaluation solves a cubic; its last digits are not what is told here.
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", std::round(static_cast<double>(frame) * 1e3) / 1e3);
    return digits;
}

void noteWrite(int, const osg::Pnt3f& from, const osg::Pnt3f&, const osg::Vec3f&) {
    const float value = from[0];
    const bool selected = value > kSelectedOffset / 2.0F;
    theLog->push_back(kWrite + text(selected ? value - kSelectedOffset : value) +
                      (selected ? " (selected)" : ""));
}

void noteSequence(std::string sequence) {
    theLog->push_back("run " + sequence);
}

// One key of a curve whose value is its frame, with handles halfway to its neighbours.
void addKey(kvAnimationCurve& curve, float frame, float before, float after, float offset) {
    const float in = (before + frame) / 2.0F;
    const float out = (frame + after) / 2.0F;
    curve.importControlPoint(frame, frame + offset, in, in + offset, out, out + offset, 6);
}

// Over the frames from `first` to `last`, as a block shall know it; see reachOut.
kvAnimationCurve* newCameraCurve(const osg::NodePtr& camera, float first, float last,
                                 float offset) {
    auto* const curve = new kvAnimationCurve("fromX");
    curve->setAppropriateNode(camera);
    addKey(*curve, first, 0.0F, last, offset);
    addKey(*curve, last, first, 100.0F, offset);
    kvAnimationUtils2::AnimationField field;
    field.node = camera;
    field.fcId = osg::getContainerId(camera->getCore());
    field.fieldName = "fromX";
    field.globalFieldName = "from";
    curve->setAnimationField(field);
    return curve;
}

// Lets the curve reach from 0 to 100 without telling its block.
void reachOut(kvAnimationCurve& curve, float first, float last, float offset) {
    addKey(curve, 0.0F, 0.0F, first, offset);
    addKey(curve, 100.0F, last, 100.0F, offset);
}

} // namespace

bool Seen::operator==(const Seen& other) const {
    return evaluated == other.evaluated && events == other.events &&
           managerFrame == other.managerFrame && controllerFrame == other.controllerFrame &&
           flags == other.flags;
}

BoundaryStage::BoundaryStage(Played what) : _what(what) {
    theLog = &_log;
    kvAnimationManager2::setFromAtUpCB(&noteWrite);
    kvAnimationManager2::setExecuteSequenceCB(&noteSequence);
    Controller::setFPS(static_cast<float>(kFramesPerSecond));
    Controller::setMinFrame(kFirst);
    Controller::setMaxFrame(kLast);
    _camera = makeCamera();
    switch (what) {
    case Played::block:
        makeBlockOver(kFirst, kLast);
        break;
    case Played::clip:
        makeClipWithSequences();
        break;
    case Played::sequence:
        _sequence.reset(makeSequence("item", kFirst, kLast));
        break;
    case Played::local:
        selectCurve();
        break;
    case Played::globalAndSelected:
        selectCurve();
        [[fallthrough]];
    case Played::global:
        makeBlockOver(kFirst + 2.0F, kLast - 2.0F);
        kvAnimationManager2::_animationBlocks.push_back(_block.get());
        break;
    }
}

BoundaryStage::~BoundaryStage() {
    kvAnimationManager2::setFromAtUpCB(nullptr);
    kvAnimationManager2::_the.clearCurveLists();
    kvAnimationManager2::_animationBlocks.clear(); // the stage's own block
    theLog = nullptr;
}

osg::NodePtr BoundaryStage::makeCamera() {
    const osg::NodePtr camera = osg::Node::create();
    hold(camera);
    camera->setCore(osg::CameraSetting::create());
    return camera;
}

void BoundaryStage::makeBlockOver(float first, float last) {
    _block = std::make_unique<kvAnimationBlock>(_camera, "block");
    _block->addCurve(newCameraCurve(_camera, first, last, 0.0F));
    reachOut(*_block->getBlockCurves()[0], first, last, 0.0F);
}

void BoundaryStage::makeClipWithSequences() {
    _clip = makeClip();
    auto* const block = new kvAnimationBlock(_camera, "block");
    block->addCurve(newCameraCurve(_camera, kFirst, kLast, 0.0F));
    _clip->addBlock(block);
    _clip->addSequence(makeSequence("A", 10.0F, 15.0F));
    _clip->addSequence(makeSequence("B", 20.0F, 30.0F));
    _clip->addSequence(makeSequence("C", 38.0F, 45.0F));
    reachOut(*block->getBlockCurves()[0], kFirst, kLast, 0.0F);
}

void BoundaryStage::selectCurve() {
    _selected.reset(newCameraCurve(makeCamera(), kFirst, kLast, kSelectedOffset));
    reachOut(*_selected, kFirst, kLast, kSelectedOffset);
    kvAnimationManager2::_the.setSelectedCurves({_selected.get()});
}

void BoundaryStage::play(bool reverse) {
    _reverse = reverse;
    _startFrame = reverse ? kLast : kFirst;
    kvAnimationManager2::setActualFrame(_startFrame); // where local and global playback start
    switch (_what) {
    case Played::block:
        return Controller::play(_block.get(), reverse, false);
    case Played::clip:
        return Controller::play(_clip, reverse, false);
    case Played::sequence:
        return Controller::play(_sequence.get(), reverse);
    case Played::local:
        return Controller::play(reverse);
    case Played::global:
        return Controller::playGlobal(reverse, false, false);
    case Played::globalAndSelected:
        return Controller::playGlobal(reverse, true, false);
    }
}

void BoundaryStage::repeat() {
    if (_block) _block->setRepeat(true);
    if (_clip != nullptr) _clip->setRepeat(true);
    if (_sequence) _sequence->setRepeat(true);
    Controller::repeat(true);
}

void BoundaryStage::tickAtFrame(float frame) {
    const float framesRun = _reverse ? _startFrame - frame : frame - _startFrame;
    tickAt(static_cast<double>(framesRun) / kFramesPerSecond);
}

void BoundaryStage::record() {
    _log.clear();
    kvAnimationManager2::setActualFrame(kUntouched);
    State::actualFrame() = kUntouched;
}

Seen BoundaryStage::seen() {
    Seen result;
    for (const std::string& entry : _log) {
        const bool isWrite = entry.compare(0, kWrite.size(), kWrite) == 0;
        result.events.push_back(isWrite ? "write" : entry);
        if (!isWrite) continue;
        const std::string frame = entry.substr(kWrite.size());
        auto& frames = result.evaluated;
        if (std::find(frames.begin(), frames.end(), frame) == frames.end()) frames.push_back(frame);
    }
    const auto frameText = [](float frame) {
        return frame == kUntouched ? std::string() : text(frame);
    };
    result.managerFrame = frameText(kvAnimationManager2::getActualFrame());
    result.controllerFrame = frameText(Controller::getActualFrame());
    const std::pair<bool, const char*> flags[] = {
        {State::playing(), "playing"},     {State::reverse(), "reverse"},
        {State::blocking(), "blocking"},   {State::ignoreActivity(), "ignoring activity"},
        {State::repeating(), "repeating"}, {State::pausing(), "pausing"},
        {State::ffw(), "fast forward"},    {State::fbw(), "fast backward"},
    };
    for (const auto& [isSet, name] : flags) {
        if (isSet) result.flags.push_back(name);
    }
    return result;
}

} // namespace kv::test
