// The key list: finding keys by frame, by id and by link. Lists that are known to be sorted are
// searched, all others walked; both give the same key.
#include <kvControlPointManager.h>

#include "keys/frameOrder.h"
#include "keys/keyIdIndex.h"
#include "keys/keyListReader.h"
#include "keys/walkCount.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

using kv::detail::countWalk;
using kv::detail::framePrecedes;

bool kvControlPointManager::isKnownSorted() const {
    return kv::detail::KeyListReader::isKnownSorted(*this);
}

// The first key at exactly this frame.
std::size_t kvControlPointManager::firstAtFrame(double x) const {
    if (!isKnownSorted()) {
        countWalk(cps.size());
        for (std::size_t i = 0; i < cps.size(); ++i)
            if (cps[i].point.x == x) return i;
        return kNone;
    }
    // Keys mostly come in ascending order: look at the end before searching.
    if (cps.empty() || framePrecedes(cps.back().point.x, x)) return kNone;
    const auto found =
        std::lower_bound(cps.begin(), cps.end(), x, [](const kvControlPoint& cp, double frame) {
            return framePrecedes(cp.point.x, frame);
        });
    // A NaN finds itself here and equals nothing.
    if (found == cps.end() || found->point.x != x) return kNone;
    return static_cast<std::size_t>(found - cps.begin());
}

// The first key whose frame is greater, or the number of keys.
std::size_t kvControlPointManager::firstAfterFrame(double x) const {
    if (kv::detail::KeyListReader::isSearchable(*this)) return searchAfterFrame(x);
    const auto walked = std::find_if(cps.begin(), cps.end(),
                                     [x](const kvControlPoint& cp) { return cp.point.x > x; });
    return static_cast<std::size_t>(walked - cps.begin());
}

// The same in a list that may be searched. Keys mostly come at an even pace: the search begins
// where the key would then be.
std::size_t kvControlPointManager::searchAfterFrame(double x) const {
    const std::size_t last = cps.size() - 1;
    const double end = cps[last].point.x;
    if (!(end > x)) return cps.size();
    // Guessing wrong costs more than counting a few.
    constexpr std::size_t kShort = 12;
    if (cps.size() <= kShort) {
        std::size_t notAfter = 0;
        for (const kvControlPoint& cp : cps)
            notAfter += cp.point.x <= x ? 1U : 0U;
        return notAfter;
    }
    const double start = cps.front().point.x;
    if (start > x) return 0;
    const double part = (x - start) / (end - start);
    // Infinite frames give no such part.
    std::size_t guess = last / 2;
    if (part >= 0.0 && part <= 1.0) {
        const auto near = static_cast<std::ptrdiff_t>(part * static_cast<double>(last));
        guess = (std::min)(static_cast<std::size_t>(near), last - 1);
    }
    if (!(cps[guess].point.x > x) && cps[guess + 1].point.x > x) return guess + 1;
    return searchAfterFrame(x, guess);
}

// The same between the first key, which is not greater, and the last, which is: doubles its steps
// from the guess until it has passed the key, so that it costs no more than twice a plain binary
// search.
std::size_t kvControlPointManager::searchAfterFrame(double x, std::size_t guess) const {
    const auto isAfter = [this, x](std::size_t i) { return cps[i].point.x > x; };
    std::size_t low = 0;
    std::size_t high = cps.size() - 1;
    if (isAfter(guess)) {
        high = guess;
        for (std::size_t step = 1; step < high - low; step *= 2) {
            if (!isAfter(high - step)) {
                low = high - step;
                break;
            }
            high -= step;
        }
    } else {
        low = guess;
        for (std::size_t step = 1; step < high - low; step *= 2) {
            if (isAfter(low + step)) {
                high = low + step;
                break;
            }
            low += step;
        }
    }
    while (high - low > 1) {
        const std::size_t middle = low + (high - low) / 2;
        (isAfter(middle) ? high : low) = middle;
    }
    return high;
}

std::vector<kvControlPoint*> kvControlPointManager::getBezierIntervalCPs(float frame) {
    if (cps.size() < 2) return {};
    const std::size_t after = firstAfterFrame(static_cast<double>(frame));
    return {after == 0 ? nullptr : &cps[after - 1], after == cps.size() ? nullptr : &cps[after]};
}

std::vector<kvControlPoint*> kvControlPointManager::getPrevAndNextCP(double x) {
    if (cps.size() < 2) return {};
    // The first key at or after x, if it is at x, else the first one after.
    const std::size_t at = firstAtFrame(x);
    const std::size_t after = firstAfterFrame(x);
    if (at < after)
        return {at == 0 ? nullptr : &cps[at - 1], at + 1 == cps.size() ? nullptr : &cps[at + 1]};
    return {after == 0 ? nullptr : &cps[after - 1], after == cps.size() ? nullptr : &cps[after]};
}

// The first key with this id. Walks, unless this list was searched before and has only grown since:
// then an index pays for itself.
std::size_t kvControlPointManager::firstWithId(int id) {
    constexpr std::size_t kShort = 32;
    constexpr unsigned kWalksBeforeIndex = 4;
    if (cps.size() > kShort && cps.size() <= kv::detail::KeyIdIndex::kMaxKeys && isKnownSorted()) {
        if (id > greatestId) return kNone;
        if (!idIndex && ++idScans > kWalksBeforeIndex)
            idIndex = std::make_unique<kv::detail::KeyIdIndex>();
        if (idIndex) {
            idIndex->cover(cps);
            return idIndex->find(id);
        }
    }
    countWalk(cps.size());
    for (std::size_t i = 0; i < cps.size(); ++i)
        if (cps[i].id == id) return i;
    return kNone;
}

kvControlPoint* kvControlPointManager::findCP(int id) {
    const std::size_t index = firstWithId(id);
    if (index == kNone) return nullptr;
    currentCP = &cps[index];
    return currentCP;
}

std::vector<kvControlPoint>::iterator kvControlPointManager::findCP(const kvControlPoint& cp) {
    return std::find_if(cps.begin(), cps.end(),
                        [&cp](const kvControlPoint& other) { return other.id == cp.id; });
}

// The position of a key of this very list. By address, without reading what the pointer points at.
std::size_t kvControlPointManager::indexOf(const kvControlPoint* cp) const {
    const auto address = reinterpret_cast<std::uintptr_t>(cp);
    const auto first = reinterpret_cast<std::uintptr_t>(cps.data());
    if (cps.empty() || address < first) return kNone;
    const std::uintptr_t distance = address - first;
    const std::size_t index = distance / sizeof(kvControlPoint);
    if (distance % sizeof(kvControlPoint) != 0 || index >= cps.size()) return kNone;
    return index;
}

// The place a link leads to, none unless it leads to a key of this list: after a copy or a deletion
// it may lead into memory that is no longer there.
std::size_t kvControlPointManager::linkedIndex(const kvControlPoint* link) const {
    return foreignLinks ? kNone : indexOf(link);
}

kvControlPoint* kvControlPointManager::live(const kvControlPoint* link) {
    const std::size_t index = linkedIndex(link);
    return index == kNone ? nullptr : &cps[index];
}

const kvControlPoint* kvControlPointManager::live(const kvControlPoint* link) const {
    const std::size_t index = linkedIndex(link);
    return index == kNone ? nullptr : &cps[index];
}
