// Clips: their tracks, and the items that are added to the tracks, taken off and found there.

#include <kvAnimationClip.h>

#include "clips/reachability.h"
#include "manager/identifiers.h"

#include <kvAnimationBlock.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <algorithm>
#include <utility>

namespace {

// The first answer of the tracks, in order, that is not null.
template <class Item, class Ask>
Item* firstOn(const std::vector<kvAnimationTrack*>& tracks, Ask ask) {
    for (const kvAnimationTrack* track : tracks)
        if (Item* item = ask(*track)) return item;
    return nullptr;
}

bool isEmpty(const kvAnimationTrack& track) {
    return track.getBlocks().empty() && track.getClips().empty() && track.getSequences().empty();
}

} // namespace

kvAnimationClip::kvAnimationClip()
    : _id(static_cast<std::uint32_t>(kv::detail::createUniqueId())) {}

kvAnimationClip::kvAnimationClip(std::string name) : kvAnimationClip() {
    _name = std::move(name);
}

kvAnimationClip::kvAnimationClip(const kvAnimationClip& other)
    : _id(static_cast<std::uint32_t>(kv::detail::createUniqueId())), _active(other._active),
      _fliped(other._fliped), _repeat(other._repeat), _motionBlur(other._motionBlur),
      _name(other._name) {
    duplicateTracks(other);
}

kvAnimationClip& kvAnimationClip::operator=(const kvAnimationClip& other) {
    if (this == &other) return *this;
    for (const kvAnimationTrack* track : other._tracks)
        for (const kvAnimationClip* clip : track->getClips())
            if (kv::detail::isAtOrBelow(*this, *clip)) return *this;
    _id = other._id;
    _active = other._active;
    _fliped = other._fliped;
    _repeat = other._repeat;
    _motionBlur = other._motionBlur;
    _name = other._name;
    _lastInsertedBlock = other._lastInsertedBlock;
    _lastInsertedSubclip = other._lastInsertedSubclip;
    _lastInsertedSequence = other._lastInsertedSequence;
    _tracks = other._tracks;
    return *this;
}

kvAnimationClip::~kvAnimationClip() {
    for (kvAnimationTrack* track : _tracks)
        delete track;
}

void kvAnimationClip::duplicateTracks(const kvAnimationClip& other) {
    _tracks.reserve(other._tracks.size());
    for (const kvAnimationTrack* track : other._tracks)
        _tracks.push_back(new kvAnimationTrack(*track));
}

void kvAnimationClip::setId(unsigned long id) {
    _id = static_cast<std::uint32_t>(id);
}

void kvAnimationClip::setName(std::string name) {
    _name = std::move(name);
}

int kvAnimationClip::createTrack() {
    const int number = getTrackAmount();
    _tracks.push_back(new kvAnimationTrack(number));
    return number;
}

void kvAnimationClip::deleteTrack(int number) {
    const auto found =
        std::find_if(_tracks.begin(), _tracks.end(), [number](const kvAnimationTrack* track) {
            return track->getNumber() == number;
        });
    if (found == _tracks.end()) return;
    delete *found;
    _tracks.erase(found);
}

void kvAnimationClip::deleteEmptyTracks() {
    while (!_tracks.empty() && isEmpty(*_tracks.back())) {
        delete _tracks.back();
        _tracks.pop_back();
    }
}

kvAnimationTrack* kvAnimationClip::getTrack(int index) const {
    if (index < 0 || index >= getTrackAmount()) return nullptr;
    return _tracks[static_cast<std::size_t>(index)];
}

void kvAnimationClip::sortTrack(int index) {
    if (kvAnimationTrack* track = getTrack(index)) track->updateBounds();
}

void kvAnimationClip::sortTracks() {
    for (kvAnimationTrack* track : _tracks)
        track->updateBounds();
}

void kvAnimationClip::updateBounds() {
    sortTracks();
}

kvAnimationTrack& kvAnimationClip::newTrack() {
    createTrack();
    return *_tracks.back();
}

bool kvAnimationClip::addBlock(kvAnimationBlock* block) {
    return insertBlock(block, -1);
}

bool kvAnimationClip::insertBlock(kvAnimationBlock* block, int index) {
    if (block == nullptr) return false;
    kvAnimationTrack* track = getTrack(index);
    if (track == nullptr) track = &newTrack();
    _lastInsertedBlock = block;
    return track->addBlock(block);
}

bool kvAnimationClip::addSubclip(kvAnimationClip* clip) {
    return insertSubclip(clip, -1);
}

bool kvAnimationClip::insertSubclip(kvAnimationClip* clip, int index) {
    if (clip == nullptr) return false;
    kvAnimationTrack* track = getTrack(index);
    // An existing track is asked rather than this clip, since it may be a track of others as well.
    if (track != nullptr ? kv::detail::isAtOrBelow(*track, *clip)
                         : kv::detail::isAtOrBelow(*this, *clip))
        return false;
    if (track == nullptr) track = &newTrack();
    _lastInsertedSubclip = clip;
    return track->addClip(clip);
}

kvAnimationClip* kvAnimationClip::newSubclip() {
    auto* clip = new kvAnimationClip();
    addSubclip(clip);
    return clip;
}

bool kvAnimationClip::addSequence(kvAnimationSequence2* sequence) {
    return insertSequence(sequence, -1);
}

bool kvAnimationClip::insertSequence(kvAnimationSequence2* sequence, int index) {
    if (sequence == nullptr) return false;
    kvAnimationTrack* track = getTrack(index);
    if (track == nullptr) track = &newTrack();
    _lastInsertedSequence = sequence;
    return track->addSequence(sequence);
}

bool kvAnimationClip::subBlock(kvAnimationBlock* block, bool recursive) {
    return block != nullptr && subBlock(block->getId(), recursive);
}

bool kvAnimationClip::subBlock(unsigned long id, bool recursive) {
    return std::any_of(_tracks.begin(), _tracks.end(), [id, recursive](kvAnimationTrack* track) {
        return track->subBlock(id, recursive);
    });
}

bool kvAnimationClip::subSubclip(kvAnimationClip* clip, bool recursive) {
    return clip != nullptr && subSubclip(clip->getId(), recursive);
}

bool kvAnimationClip::subSubclip(unsigned long id, bool recursive) {
    return std::any_of(_tracks.begin(), _tracks.end(), [id, recursive](kvAnimationTrack* track) {
        return track->subClip(id, recursive);
    });
}

bool kvAnimationClip::subSequence(kvAnimationSequence2* sequence, bool recursive) {
    return sequence != nullptr && subSequence(sequence->getId(), recursive);
}

bool kvAnimationClip::subSequence(unsigned long id, bool recursive) {
    return std::any_of(_tracks.begin(), _tracks.end(), [id, recursive](kvAnimationTrack* track) {
        return track->subSequence(id, recursive);
    });
}

kvAnimationBlock* kvAnimationClip::getBlock(unsigned long id, bool recursive) const {
    return firstOn<kvAnimationBlock>(_tracks, [id, recursive](const kvAnimationTrack& track) {
        return track.getBlock(id, recursive);
    });
}

kvAnimationBlock* kvAnimationClip::getBlock(std::string name, bool recursive) const {
    return firstOn<kvAnimationBlock>(_tracks, [&name, recursive](const kvAnimationTrack& track) {
        return track.getBlock(name, recursive);
    });
}

kvAnimationBlock* kvAnimationClip::getBlock(kvAnimationCurve* curve, bool recursive) const {
    return firstOn<kvAnimationBlock>(_tracks, [curve, recursive](const kvAnimationTrack& track) {
        return track.getBlock(curve, recursive);
    });
}

kvAnimationClip* kvAnimationClip::getSubclip(unsigned long id, bool recursive) const {
    return firstOn<kvAnimationClip>(_tracks, [id, recursive](const kvAnimationTrack& track) {
        return track.getClip(id, recursive);
    });
}

kvAnimationSequence2* kvAnimationClip::getSequence(unsigned long id, bool recursive) const {
    return firstOn<kvAnimationSequence2>(_tracks, [id, recursive](const kvAnimationTrack& track) {
        return track.getSequence(id, recursive);
    });
}
