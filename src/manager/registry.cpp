// The registry's lists: adding to them, taking out of them and handing them out. They hold plain
// pointers and own nothing.

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>

#include "manager/identifiers.h"

#include <algorithm>
#include <utility>

namespace {

template <class T>
T* lastOf(const std::vector<T*>& list) {
    return list.empty() ? nullptr : list.back();
}

/// Every match goes: curves and clips of equal ids are not told apart.
template <class T>
void removeAllWithId(std::vector<T*>& list, std::uint32_t id) {
    const auto matches = [id](const T* item) { return item && item->getId() == id; };
    list.erase(std::remove_if(list.begin(), list.end(), matches), list.end());
}

/// Only the first match goes: that is the rule for blocks.
void removeFirstWithId(std::vector<kvAnimationBlock*>& list, std::uint32_t id) {
    const auto matches = [id](const kvAnimationBlock* item) { return item && item->getId() == id; };
    const auto found = std::find_if(list.begin(), list.end(), matches);
    if (found != list.end()) list.erase(found);
}

} // namespace

kvAnimationManager2::kvAnimationManager2() = default;

kvAnimationManager2::~kvAnimationManager2() = default;

unsigned long long kvAnimationManager2::createUniqueId() {
    return kv::detail::createUniqueId();
}

bool kvAnimationManager2::checkId(unsigned long long id) {
    return kv::detail::isIssuedId(id);
}

// --- adding -----------------------------------------------------------------------------------

void kvAnimationManager2::addCurve(kvAnimationCurve* curve) {
    if (!curve) return;
    _animCurves.push_back(curve);
    curve->setId(createUniqueId());
}

void kvAnimationManager2::addAnimationBlock(kvAnimationBlock* block) {
    if (!block) return;
    _blocks.push_back(block);
    block->setId(createUniqueId());
}

void kvAnimationManager2::addClip(kvAnimationClip* clip) {
    if (!clip) return;
    _clips.push_back(clip);
    clip->setId(static_cast<std::uint32_t>(createUniqueId()));
}

kvAnimationCurve* kvAnimationManager2::getLastInsertedCurve() const {
    return lastOf(_animCurves);
}

kvAnimationBlock* kvAnimationManager2::getLastInsertedBlock() const {
    return lastOf(_blocks);
}

kvAnimationClip* kvAnimationManager2::getLastInsertedClip() const {
    return lastOf(_clips);
}

// --- removing ---------------------------------------------------------------------------------

void kvAnimationManager2::subCurve(kvAnimationCurve* curve) {
    if (curve) removeAllWithId(_animCurves, curve->getId());
}

void kvAnimationManager2::subCurve(unsigned long id) {
    removeAllWithId(_animCurves, static_cast<std::uint32_t>(id));
}

void kvAnimationManager2::subClip(kvAnimationClip* clip) {
    if (clip) removeAllWithId(_clips, clip->getId());
}

void kvAnimationManager2::subClip(unsigned long id) {
    removeAllWithId(_clips, static_cast<std::uint32_t>(id));
}

void kvAnimationManager2::subAnimationBlock(kvAnimationBlock* block, bool inClips) {
    if (block) subAnimationBlock(static_cast<unsigned long>(block->getId()), inClips);
}

void kvAnimationManager2::subAnimationBlock(unsigned long id, bool inClips) {
    const auto id32 = static_cast<std::uint32_t>(id);
    removeFirstWithId(_blocks, id32);
    removeFirstWithId(_animationBlocks, id32);
    if (!inClips) return;
    for (kvAnimationClip* clip : _clips) {
        if (clip && clip->subBlock(static_cast<unsigned long>(id32), true)) return;
    }
}

bool kvAnimationManager2::subSequence(kvAnimationClip* clip, kvAnimationSequence2* seq) {
    if (!clip || !seq) return false;
    const std::vector<kvAnimationSequence2*> own = clip->getSequences(false, false);
    if (std::find(own.begin(), own.end(), seq) != own.end()) return true;
    // The sub-clips are asked as well, but what they answer does not count: only items of the clip
    // itself are answered for. What the question leaves behind is that their tracks are sorted.
    for (kvAnimationClip* subclip : clip->getSubclips(false, false))
        subSequence(subclip, seq);
    return false;
}

void kvAnimationManager2::subSequence(kvAnimationSequence2* seq) {
    if (!seq) return;
    for (kvAnimationClip* clip : _clips) {
        if (subSequence(clip, seq)) return;
    }
}

bool kvAnimationManager2::subSequenceFromTracks(kvAnimationClip* /*clip*/,
                                                kvAnimationSequence2* /*seq*/) {
    return false;
}

bool kvAnimationManager2::getCurveVisibility(kvAnimationCurve* /*curve*/) {
    return false;
}

void kvAnimationManager2::eraseEmptyCurves() {
    const auto isKeyless = [](const kvAnimationCurve* curve) {
        return curve && curve->getCPs().empty();
    };
    _animCurves.erase(std::remove_if(_animCurves.begin(), _animCurves.end(), isKeyless),
                      _animCurves.end());
}

void kvAnimationManager2::clearCurveLists() {
    _animCurves.clear();
    _selectedCurves.clear();
}

void kvAnimationManager2::clearBlockList() {
    _blocks.clear();
}

void kvAnimationManager2::clearClipList() {
    _clips.clear();
}

void kvAnimationManager2::clear(bool all) {
    clearCurveLists();
    clearBlockList();
    if (!all) return;
    clearClipList();
    _animationBlocks.clear();
}

// --- the lists and marks ----------------------------------------------------------------------

std::vector<kvAnimationCurve*>* kvAnimationManager2::getAnimCurves() {
    return &_animCurves;
}

std::vector<kvAnimationBlock*>* kvAnimationManager2::getBlocks() {
    return &_blocks;
}

std::vector<kvAnimationClip*>* kvAnimationManager2::getClips() {
    return &_clips;
}

const std::vector<kvAnimationBlock*>& kvAnimationManager2::getSceneBlocks() const {
    return _animationBlocks;
}

void kvAnimationManager2::setActiveClip(kvAnimationClip* clip) {
    _activeClip = clip;
}

kvAnimationClip* kvAnimationManager2::getActiveClip() {
    return _activeClip;
}

void kvAnimationManager2::setDirty(bool dirty) {
    _dirty = dirty;
}

bool kvAnimationManager2::isDirty() const {
    return _dirty;
}
