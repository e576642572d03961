// Blocks: the curves of one node, their range, and the gestures of the clip editor that move and
// stretch them in time.

#include <kvAnimationBlock.h>

#include "keys/constants.h"
#include "keys/sceneNodes.h"
#include "manager/identifiers.h"

#include <kvAnimationCurve.h>

#include <iostream>
#include <utility>

std::uint32_t kvAnimationBlock::_idCount = 0;

kvAnimationBlock::kvAnimationBlock() : _id(_idCount++) {}

kvAnimationBlock::kvAnimationBlock(std::string name) : _name(std::move(name)), _id(_idCount++) {}

kvAnimationBlock::kvAnimationBlock(const osg::NodePtr& node) : kvAnimationBlock() {
    setAppropriateNode(node);
}

kvAnimationBlock::kvAnimationBlock(const osg::NodePtr& node, std::string name)
    : kvAnimationBlock(std::move(name)) {
    setAppropriateNode(node);
}

kvAnimationBlock::kvAnimationBlock(const kvAnimationBlock& other)
    : _startFrame(other._startFrame), _endFrame(other._endFrame), _name(other._name),
      _appropriateNode(other._appropriateNode), _appropriateNodeId(other._appropriateNodeId),
      _animatedType(other._animatedType), _cameraBlock(other._cameraBlock), _fliped(other._fliped),
      _active(other._active), _repeat(other._repeat), _motionBlur(other._motionBlur),
      _id(static_cast<std::uint32_t>(kv::detail::createUniqueId())) {
    duplicateBlockCurves(other);
}

kvAnimationBlock& kvAnimationBlock::operator=(const kvAnimationBlock& other) = default;

kvAnimationBlock::~kvAnimationBlock() {
    for (kvAnimationCurve* curve : _blockCurves)
        delete curve;
}

void kvAnimationBlock::setId(unsigned long long id) {
    _id = static_cast<std::uint32_t>(id);
}

void kvAnimationBlock::setAppropriateNode(const osg::NodePtr& node) {
    _appropriateNode = node;
    _appropriateNodeId = kv::detail::idOf(node);
}

osg::NodePtr kvAnimationBlock::getAppropriateNode() const {
    // The stored pointer may be stale; only the id can tell whether the node still exists.
    return kv::detail::nodeById(_appropriateNodeId);
}

void kvAnimationBlock::addCurve(kvAnimationCurve* curve) {
    _blockCurves.push_back(curve);
    if (curve == nullptr) return;
    const double start = curve->getStartFrame();
    const double end = curve->getEndFrame();
    if (start < static_cast<double>(_startFrame)) _startFrame = static_cast<float>(start);
    if (end > static_cast<double>(_endFrame)) _endFrame = static_cast<float>(end);
}

kvAnimationCurve* kvAnimationBlock::getBlockCurve(std::string attribute) const {
    for (kvAnimationCurve* curve : _blockCurves)
        if (curve != nullptr && curve->getAnimatedAttribute() == attribute)
            return std::as_const(*curve).getCPs().empty() ? nullptr : curve;
    return nullptr;
}

kvAnimationCurve* kvAnimationBlock::getLastInsertedCurve() const {
    return _blockCurves.empty() ? nullptr : _blockCurves.back();
}

void kvAnimationBlock::updateBlockBounds() {
    if (_blockCurves.empty()) return;
    _startFrame = kv::detail::kFrameMax;
    _endFrame = kv::detail::kFrameMin;
    for (kvAnimationCurve* curve : _blockCurves) {
        if (curve == nullptr) continue;
        const double start = curve->getStartFrame();
        const double end = curve->getEndFrame();
        if (static_cast<double>(_startFrame) > start) _startFrame = static_cast<float>(start);
        if (end > static_cast<double>(_endFrame)) _endFrame = static_cast<float>(end);
    }
}

void kvAnimationBlock::moveBlock(float delta) {
    if (_blockCurves.empty()) return;
    for (kvAnimationCurve* curve : _blockCurves) {
        if (curve == nullptr) continue;
        curve->shift(delta);
        curve->computeLinkedList();
    }
    _startFrame += delta;
    _endFrame += delta;
}

void kvAnimationBlock::stretchLeft(float frame) {
    if (_blockCurves.empty()) return;
    for (kvAnimationCurve* curve : _blockCurves) {
        if (curve == nullptr) continue;
        curve->stretchLeft(frame);
        curve->computeLinkedList();
    }
    updateBlockBounds();
}

void kvAnimationBlock::stretchRight(float frame) {
    if (_blockCurves.empty()) return;
    for (kvAnimationCurve* curve : _blockCurves) {
        if (curve == nullptr) continue;
        curve->stretchRight(frame);
        curve->computeLinkedList();
    }
    updateBlockBounds();
}

void kvAnimationBlock::flip() {
    if (_blockCurves.empty()) return;
    for (kvAnimationCurve* curve : _blockCurves)
        if (curve != nullptr) curve->flip();
    _fliped = !_fliped;
}

void kvAnimationBlock::printInfo() const {
    std::cout << "#AnimBlockCurves: " << _blockCurves.size() << std::endl;
}

void kvAnimationBlock::duplicateBlockCurves(const kvAnimationBlock& source) {
    _blockCurves.reserve(source._blockCurves.size());
    for (const kvAnimationCurve* curve : source._blockCurves) {
        if (curve == nullptr) continue;
        _blockCurves.push_back(new kvAnimationCurve(*curve));
        _blockCurves.back()->setId(kv::detail::createUniqueId());
    }
}
