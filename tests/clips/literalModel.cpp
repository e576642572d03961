// The plain second making of clips. Nothing here is clever: sorting is a stable sort by a getter,
// ranges are asked for again at every level, and every list of steps is written down step by step.

#include "clips/literalModel.h"

#include <algorithm>
#include <utility>

namespace kvtest::model {

namespace {

float single(double value) {
    return static_cast<float>(value);
}

// Ascending, what is no number last.
bool before(float a, float b) {
    if (a != a) return false;
    if (b != b) return true;
    return a < b;
}

template <class Item, class Key>
void sortBy(std::vector<std::shared_ptr<Item>>& items, Key key) {
    std::stable_sort(items.begin(), items.end(),
                     [&](const auto& a, const auto& b) { return before(key(*a), key(*b)); });
}

template <class Item>
bool eraseNamed(std::vector<std::shared_ptr<Item>>& items, const std::string& name) {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i]->name == name) {
            items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
            return true;
        }
    return false;
}

template <class Visit>
void forFrames(Curve& curve, Visit visit) {
    for (Key& key : curve.keys) {
        visit(key.point.x);
        visit(key.in.x);
        visit(key.out.x);
    }
}

} // namespace

// --- curve -------------------------------------------------------------------------------------

void Curve::stretchLeft(float newStart) {
    if (keys.empty()) return;
    const double first = start();
    const double last = end();
    const float s = single(first);
    forFrames(*this, [&](double& f) {
        f = static_cast<double>((single(f) - s) / single(last - s) *
                                    single(last - static_cast<double>(newStart)) +
                                newStart);
    });
}

void Curve::stretchRight(float newEnd) {
    if (keys.empty()) return;
    const double last = end();
    const float s = single(start());
    forFrames(*this, [&](double& f) {
        f = static_cast<double>((single(f) - s) / single(last - s) * (newEnd - s) + s);
    });
}

void Curve::flip() {
    if (keys.size() < 2) return;
    const float first = single(start());
    const float span = single(end()) - first;
    const double m = static_cast<double>(single(static_cast<double>(span) * 0.5 + start()));
    forFrames(*this, [&](double& f) { f = m - f + m; });
    for (Key& key : keys)
        std::swap(key.in, key.out);
    std::stable_sort(keys.begin(), keys.end(),
                     [](const Key& a, const Key& b) { return a.point.x < b.point.x; });
}

// --- item --------------------------------------------------------------------------------------

void Item::addCurve(const Curve& curve) {
    curves.push_back(curve);
    if (curve.start() < static_cast<double>(start)) start = single(curve.start());
    if (curve.end() > static_cast<double>(end)) end = single(curve.end());
}

void Item::updateBounds() {
    if (curves.empty()) return;
    start = 1e23F;
    end = -1e23F;
    for (const Curve& curve : curves) {
        if (static_cast<double>(start) > curve.start()) start = single(curve.start());
        if (curve.end() > static_cast<double>(end)) end = single(curve.end());
    }
}

void Item::move(float delta) {
    if (!isSequence && curves.empty()) return;
    for (Curve& curve : curves)
        for (Key& key : curve.keys)
            for (Point* point : {&key.point, &key.in, &key.out}) {
                point->x = static_cast<double>(single(point->x) + delta);
                point->y = static_cast<double>(single(point->y));
            }
    start += delta;
    end += delta;
}

void Item::stretchLeft(float frame) {
    if (isSequence) {
        start = frame;
        return;
    }
    for (Curve& curve : curves)
        curve.stretchLeft(frame);
    updateBounds();
}

void Item::stretchRight(float frame) {
    if (isSequence) {
        end = frame;
        return;
    }
    for (Curve& curve : curves)
        curve.stretchRight(frame);
    updateBounds();
}

void Item::flip() {
    if (curves.empty()) return;
    for (Curve& curve : curves)
        curve.flip();
    fliped = !fliped;
}

// --- track -------------------------------------------------------------------------------------

void Track::sort(bool byEnd) {
    const auto frame = [byEnd](const Item& item) { return byEnd ? item.end : item.start; };
    sortBy(blocks, frame);
    sortBy(clips, [byEnd](Clip& clip) { return byEnd ? clip.endFrame() : clip.startFrame(); });
    sortBy(sequences, frame);
}

void Track::updateBounds() {
    for (auto& block : blocks)
        block->updateBounds();
    for (auto& clip : clips)
        clip->sortTracks();
    sort(true);
    cachedLast = blocks.empty() ? -1e23F : blocks.back()->end;
    cachedLast = (std::max)(cachedLast, clips.empty() ? -1e23F : clips.back()->endFrame());
    cachedLast = (std::max)(cachedLast, sequences.empty() ? -1e23F : sequences.back()->end);
    sort(false);
    cachedFirst = firstFrame();
}

float Track::firstFrame() {
    sort(false);
    float first = blocks.empty() ? 1e23F : blocks.front()->start;
    first = (std::min)(first, clips.empty() ? 1e23F : clips.front()->startFrame());
    return (std::min)(first, sequences.empty() ? 1e23F : sequences.front()->start);
}

float Track::lastFrame() {
    sort(false);
    const float last = blocks.empty() ? -1e23F : blocks.back()->end;
    return (std::max)(last, clips.empty() ? -1e23F : clips.back()->endFrame());
}

void Track::setFliped(bool value) {
    const float last = lastFrame();
    const float first = firstFrame();
    for (auto& clip : clips)
        clip->setFliped(value);
    for (auto& block : blocks) {
        block->flip();
        block->move((last - block->end) - (block->start - first));
    }
    for (auto& sequence : sequences)
        sequence->move((last - sequence->end) - (sequence->start - first));
    fliped = value;
}

void Track::setMotionBlur(bool value) {
    for (auto& block : blocks)
        block->motionBlur = value;
    for (auto& clip : clips)
        clip->setMotionBlur(value);
    motionBlur = value;
}

void Track::setActive(bool value) {
    for (auto& block : blocks)
        block->active = value;
    for (auto& clip : clips)
        clip->active = value;
    for (auto& sequence : sequences)
        sequence->active = value;
    active = value;
}

bool Track::removeBlock(const std::string& name, bool recursive) {
    bool removed = eraseNamed(blocks, name);
    for (std::size_t i = 0; recursive && !removed && i < clips.size(); ++i)
        removed = clips[i]->removeBlock(name, true);
    if (removed) updateBounds();
    return removed;
}

bool Track::removeSequence(const std::string& name, bool recursive) {
    bool removed = eraseNamed(sequences, name);
    for (std::size_t i = 0; recursive && !removed && i < clips.size(); ++i)
        removed = clips[i]->removeSequence(name, true);
    if (removed) updateBounds();
    return removed;
}

bool Track::removeClip(const std::string& name, bool recursive) {
    bool removed = eraseNamed(clips, name);
    for (std::size_t i = 0; recursive && !removed && i < clips.size(); ++i)
        removed = clips[i]->removeClip(name, true);
    if (removed) updateBounds();
    return removed;
}

// --- clip --------------------------------------------------------------------------------------

Track& Clip::trackForInsertion(int index) {
    if (index >= 0 && index < static_cast<int>(tracks.size()))
        return tracks[static_cast<std::size_t>(index)];
    Track track;
    track.number = static_cast<int>(tracks.size());
    tracks.push_back(track);
    return tracks.back();
}

void Clip::sortTracks() {
    for (Track& track : tracks)
        track.updateBounds();
}

float Clip::startFrame() {
    if (tracks.empty()) return 1e23F;
    std::vector<float> frames;
    for (Track& track : tracks)
        frames.push_back(track.firstFrame());
    std::stable_sort(frames.begin(), frames.end(), before);
    return frames.front();
}

float Clip::endFrame() {
    if (tracks.empty()) return -1e23F;
    std::vector<float> frames;
    for (Track& track : tracks)
        frames.push_back(track.lastFrame());
    std::stable_sort(frames.begin(), frames.end(), before);
    return frames.back();
}

void Clip::move(float delta) {
    for (Track& track : tracks) {
        for (auto& block : track.blocks)
            block->move(delta);
        for (auto& clip : track.clips)
            clip->move(delta);
        for (auto& sequence : track.sequences)
            sequence->move(delta);
    }
}

void Clip::stretchLeft(float newStart) {
    const float s = startFrame();
    const float e = endFrame();
    const float oldLength = e - s;
    const float newLength = e - newStart;
    const auto map = [&](float x) { return (x - s) / oldLength * newLength + newStart; };
    const auto stretch = [&](auto& item, float start, float end) {
        const float newItemStart = map(start);
        const float newItemEnd = map(end);
        if (newLength <= oldLength) {
            item.stretchRight(newItemEnd);
            item.stretchLeft(newItemStart);
        } else {
            item.stretchLeft(newItemStart);
            item.stretchRight(newItemEnd);
        }
    };
    for (Track& track : tracks) {
        const Track copy = track;
        for (const auto& block : copy.blocks)
            stretch(*block, block->start, block->end);
        for (const auto& clip : copy.clips)
            stretch(*clip, clip->startFrame(), clip->endFrame());
        for (const auto& sequence : copy.sequences)
            stretch(*sequence, sequence->start, sequence->end);
    }
}

void Clip::stretchRight(float newEnd) {
    const float s = startFrame();
    const float oldLength = endFrame() - s;
    const float newLength = newEnd - s;
    const auto map = [&](float x) { return (x - s) / oldLength * newLength + s; };
    const auto stretch = [&](auto& item, float start, float end) {
        const float newItemStart = map(start);
        const float newItemEnd = map(end);
        if (newLength > oldLength) {
            item.stretchRight(newItemEnd);
            item.stretchLeft(newItemStart);
        } else {
            item.stretchLeft(newItemStart);
            item.stretchRight(newItemEnd);
        }
    };
    for (Track& track : tracks) {
        const Track copy = track;
        for (const auto& block : copy.blocks)
            stretch(*block, block->start, block->end);
        for (const auto& clip : copy.clips)
            stretch(*clip, clip->startFrame(), clip->endFrame());
        for (const auto& sequence : copy.sequences)
            stretch(*sequence, sequence->start, sequence->end);
    }
}

void Clip::setFliped(bool value) {
    for (Track& track : tracks)
        track.setFliped(value);
    fliped = value;
}

void Clip::setMotionBlur(bool value) {
    for (Track& track : tracks)
        track.setMotionBlur(value);
    motionBlur = value;
}

void Clip::deleteTrack(int number) {
    for (std::size_t i = 0; i < tracks.size(); ++i)
        if (tracks[i].number == number) {
            tracks.erase(tracks.begin() + static_cast<std::ptrdiff_t>(i));
            return;
        }
}

void Clip::deleteEmptyTracks() {
    while (!tracks.empty() && tracks.back().blocks.empty() && tracks.back().clips.empty() &&
           tracks.back().sequences.empty())
        tracks.pop_back();
}

bool Clip::removeBlock(const std::string& wanted, bool recursive) {
    for (Track& track : tracks)
        if (track.removeBlock(wanted, recursive)) return true;
    return false;
}

bool Clip::removeSequence(const std::string& wanted, bool recursive) {
    for (Track& track : tracks)
        if (track.removeSequence(wanted, recursive)) return true;
    return false;
}

bool Clip::removeClip(const std::string& wanted, bool recursive) {
    for (Track& track : tracks)
        if (track.removeClip(wanted, recursive)) return true;
    return false;
}

std::vector<std::shared_ptr<Item>> Clip::collectBlocks(bool byEnd, bool withSubclips) {
    std::vector<std::shared_ptr<Item>> all;
    for (Track& track : tracks)
        all.insert(all.end(), track.blocks.begin(), track.blocks.end());
    if (withSubclips)
        for (Track& track : tracks)
            for (auto& clip : track.clips) {
                const auto nested = clip->collectBlocks(false, false);
                all.insert(all.end(), nested.begin(), nested.end());
            }
    sortBy(all, [byEnd](const Item& item) { return byEnd ? item.end : item.start; });
    return all;
}

std::vector<std::string> Clip::blockNames(bool byEnd, bool withSubclips) {
    std::vector<std::string> names;
    for (const auto& block : collectBlocks(byEnd, withSubclips))
        names.push_back(block->name);
    return names;
}

} // namespace kvtest::model
