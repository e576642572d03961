// Tracks: the lists of one row of a clip, what is added to them, taken off and found on them.

#include <kvAnimationTrack.h>

#include "clips/itemDeletion.h"
#include "clips/rangeWalk.h"
#include "clips/reachability.h"
#include "manager/identifiers.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>

#include <algorithm>
#include <cstdint>

namespace {

// Ids are 32 bits wide wherever they are kept, also where a long has 64.
std::uint32_t narrowed(unsigned long id) {
    return static_cast<std::uint32_t>(id);
}

template <class Item>
typename std::vector<Item*>::const_iterator withId(const std::vector<Item*>& items,
                                                   std::uint32_t id) {
    return std::find_if(items.begin(), items.end(),
                        [id](const Item* item) { return item->getId() == id; });
}

bool holds(const kvAnimationBlock& block, const kvAnimationCurve* curve) {
    const std::vector<kvAnimationCurve*>& curves = block.getBlockCurves();
    return std::find(curves.begin(), curves.end(), curve) != curves.end();
}

// The first answer of the sub-clips, in order, that is not null.
template <class Item, class Ask>
Item* firstBelow(const std::vector<kvAnimationClip*>& clips, Ask ask) {
    for (const kvAnimationClip* clip : clips)
        if (Item* item = ask(*clip)) return item;
    return nullptr;
}

} // namespace

kvAnimationTrack::kvAnimationTrack() = default;

kvAnimationTrack::kvAnimationTrack(int number) : _number(number) {}

kvAnimationTrack::kvAnimationTrack(const kvAnimationTrack& other)
    : _active(other._active), _fliped(other._fliped), _motionBlur(other._motionBlur),
      _number(other._number), _firstFrame(other._firstFrame), _lastFrame(other._lastFrame) {
    duplicateBlocks(other);
    duplicateSubclips(other);
    duplicateSequences(other);
}

kvAnimationTrack& kvAnimationTrack::operator=(const kvAnimationTrack& other) {
    if (this == &other) return *this;
    for (const kvAnimationClip* clip : other._clips)
        if (kv::detail::isAtOrBelow(*this, *clip)) return *this;
    _active = other._active;
    _fliped = other._fliped;
    _motionBlur = other._motionBlur;
    _number = other._number;
    _firstFrame = other._firstFrame;
    _lastFrame = other._lastFrame;
    _blocks = other._blocks;
    _clips = other._clips;
    _sequences = other._sequences;
    return *this;
}

kvAnimationTrack::~kvAnimationTrack() {
    for (kvAnimationBlock* block : _blocks)
        kv::detail::deleteBlock(block);
    for (kvAnimationClip* clip : _clips)
        delete clip;
    for (kvAnimationSequence2* sequence : _sequences)
        kv::detail::deleteSequence(sequence);
}

void kvAnimationTrack::clear() {
    _blocks.clear();
    _clips.clear();
    _sequences.clear();
}

void kvAnimationTrack::duplicateBlocks(const kvAnimationTrack& other) {
    _blocks.reserve(other._blocks.size());
    for (const kvAnimationBlock* block : other._blocks) {
        _blocks.push_back(new kvAnimationBlock(*block));
        _blocks.back()->setId(kv::detail::createUniqueId());
    }
}

void kvAnimationTrack::duplicateSubclips(const kvAnimationTrack& other) {
    _clips.reserve(other._clips.size());
    for (const kvAnimationClip* clip : other._clips) {
        _clips.push_back(new kvAnimationClip(*clip));
        _clips.back()->setId(static_cast<unsigned long>(kv::detail::createUniqueId()));
    }
}

void kvAnimationTrack::duplicateSequences(const kvAnimationTrack& other) {
    _sequences.reserve(other._sequences.size());
    for (const kvAnimationSequence2* sequence : other._sequences) {
        _sequences.push_back(new kvAnimationSequence2(*sequence));
        _sequences.back()->setId(kv::detail::createUniqueId());
    }
}

bool kvAnimationTrack::addBlock(kvAnimationBlock* block) {
    if (block == nullptr) return false;
    _blocks.push_back(block);
    updateBounds();
    return true;
}

bool kvAnimationTrack::addClip(kvAnimationClip* clip) {
    if (clip == nullptr || kv::detail::isAtOrBelow(*this, *clip)) return false;
    _clips.push_back(clip);
    updateBounds();
    return true;
}

bool kvAnimationTrack::addSequence(kvAnimationSequence2* sequence) {
    if (sequence == nullptr) return false;
    _sequences.push_back(sequence);
    updateBounds();
    return true;
}

bool kvAnimationTrack::subBlock(kvAnimationBlock* block, bool recursive) {
    return block != nullptr && subBlock(block->getId(), recursive);
}

bool kvAnimationTrack::subBlock(unsigned long id, bool recursive) {
    const BlockIterator found = findBlock(id);
    if (found != _blocks.end())
        _blocks.erase(found);
    else if (!recursive || std::none_of(_clips.begin(), _clips.end(), [id](kvAnimationClip* clip) {
                 return clip->subBlock(id, true);
             }))
        return false;
    updateBounds();
    return true;
}

bool kvAnimationTrack::subClip(kvAnimationClip* clip, bool recursive) {
    return clip != nullptr && subClip(clip->getId(), recursive);
}

bool kvAnimationTrack::subClip(unsigned long id, bool recursive) {
    const ClipIterator found = findClip(id);
    if (found != _clips.end())
        _clips.erase(found);
    else if (!recursive || std::none_of(_clips.begin(), _clips.end(), [id](kvAnimationClip* clip) {
                 return clip->subSubclip(id, true);
             }))
        return false;
    updateBounds();
    return true;
}

bool kvAnimationTrack::subSequence(kvAnimationSequence2* sequence, bool recursive) {
    return sequence != nullptr && subSequence(sequence->getId(), recursive);
}

bool kvAnimationTrack::subSequence(unsigned long id, bool recursive) {
    const SequenceIterator found = findSequence(id);
    if (found != _sequences.end())
        _sequences.erase(found);
    else if (!recursive || std::none_of(_clips.begin(), _clips.end(), [id](kvAnimationClip* clip) {
                 return clip->subSequence(id, true);
             }))
        return false;
    updateBounds();
    return true;
}

kvAnimationBlock* kvAnimationTrack::getBlock(unsigned long id, bool recursive) const {
    const BlockIterator found = findBlock(id);
    if (found != _blocks.end()) return *found;
    if (!recursive) return nullptr;
    return firstBelow<kvAnimationBlock>(
        _clips, [id](const kvAnimationClip& clip) { return clip.getBlock(id, true); });
}

kvAnimationBlock* kvAnimationTrack::getBlock(std::string name, bool recursive) const {
    const BlockIterator found = findBlock(name);
    if (found != _blocks.end()) return *found;
    if (!recursive) return nullptr;
    return firstBelow<kvAnimationBlock>(
        _clips, [&name](const kvAnimationClip& clip) { return clip.getBlock(name, true); });
}

kvAnimationBlock* kvAnimationTrack::getBlock(kvAnimationCurve* curve, bool recursive) const {
    if (curve == nullptr) return nullptr;
    const BlockIterator found = findBlock(curve);
    if (found != _blocks.end()) return *found;
    if (!recursive) return nullptr;
    return firstBelow<kvAnimationBlock>(
        _clips, [curve](const kvAnimationClip& clip) { return clip.getBlock(curve, true); });
}

kvAnimationClip* kvAnimationTrack::getClip(unsigned long id, bool recursive) const {
    const ClipIterator found = findClip(id);
    if (found != _clips.end()) return *found;
    if (!recursive) return nullptr;
    return firstBelow<kvAnimationClip>(
        _clips, [id](const kvAnimationClip& clip) { return clip.getSubclip(id, true); });
}

kvAnimationSequence2* kvAnimationTrack::getSequence(unsigned long id, bool recursive) const {
    const SequenceIterator found = findSequence(id);
    if (found != _sequences.end()) return *found;
    if (!recursive) return nullptr;
    return firstBelow<kvAnimationSequence2>(
        _clips, [id](const kvAnimationClip& clip) { return clip.getSequence(id, true); });
}

kvAnimationTrack::BlockIterator kvAnimationTrack::findBlock(unsigned long id) const {
    return withId(_blocks, narrowed(id));
}

kvAnimationTrack::BlockIterator kvAnimationTrack::findBlock(const std::string& name) const {
    return std::find_if(_blocks.begin(), _blocks.end(), [&name](const kvAnimationBlock* block) {
        return block->getBlockName() == name;
    });
}

kvAnimationTrack::BlockIterator kvAnimationTrack::findBlock(kvAnimationCurve* curve) const {
    return std::find_if(_blocks.begin(), _blocks.end(),
                        [curve](const kvAnimationBlock* block) { return holds(*block, curve); });
}

kvAnimationTrack::ClipIterator kvAnimationTrack::findClip(unsigned long id) const {
    return withId(_clips, narrowed(id));
}

kvAnimationTrack::SequenceIterator kvAnimationTrack::findSequence(unsigned long id) const {
    return withId(_sequences, narrowed(id));
}
