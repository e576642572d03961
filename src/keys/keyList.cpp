// The key list: construction, selection, ranges and the mouse.
#include <kvControlPointManager.h>

#include "keys/editCounter.h"
#include "keys/frameOrder.h"
#include "keys/keyIdIndex.h"
#include "keys/rounding.h"

#include <algorithm>

kvControlPointManager::kvControlPointManager() = default;

kvControlPointManager::~kvControlPointManager() {
    countIfPlayed();
}

kvControlPointManager::kvControlPointManager(const kvControlPointManager& other)
    : cps(other.cps), hitType(other.hitType), currentCP(other.currentCP), hitCP(other.hitCP),
      cpCount(other.cpCount), tangentLength(other.tangentLength), foreignLinks(true) {
    noteCopied(other);
}

kvControlPointManager& kvControlPointManager::operator=(const kvControlPointManager& other) {
    if (this == &other) return *this;
    countIfPlayed();
    std::vector<kvControlPoint> copy(other.cps);
    cps.swap(copy);
    hitType = other.hitType;
    currentCP = other.currentCP;
    hitCP = other.hitCP;
    cpCount = other.cpCount;
    tangentLength = other.tangentLength;
    foreignLinks = true;
    noteCopied(other);
    return *this;
}

// A copy is as sorted as its source, but its links lead into the source. Keys without any, which
// somebody put into the source's vector, would not count their edits.
void kvControlPointManager::noteCopied(const kvControlPointManager& source) {
    const auto countsEdits = [](const kvControlPoint& cp) { return cp.isInList(); };
    if (source.isKnownSorted() &&
        (cps.size() < 2 || std::all_of(cps.begin(), cps.end(), countsEdits)))
        noteSorted();
    else
        noteUnsorted();
}

// Counts as an edit of this list, and of no other: nothing done to this vector changes another
// list, and hosts ask for keys in order to draw them while thousands of curves play.
std::vector<kvControlPoint>& kvControlPointManager::getCPs() {
    order.edit = kv::detail::kNoKeyEdit;
    countIfPlayed();
    wasHandedOut = true;
    return cps;
}

// To be called by whatever changes frames, values or handles, the keys that there are, what the
// curve drives, or ends the list. Only the first change since a player took a segment down counts,
// so that editing does not disturb the players of other curves.
void kvControlPointManager::countIfPlayed() {
    if (!isPlayed.load(std::memory_order_relaxed)) return;
    isPlayed.store(false, std::memory_order_relaxed);
    kv::detail::countPlayedEdit();
}

bool kvControlPointManager::isStartCP(const kvControlPoint& cp) const {
    return !cps.empty() && cps.front().id == cp.id;
}

bool kvControlPointManager::isEndCP(const kvControlPoint& cp) const {
    return !cps.empty() && cps.back().id == cp.id;
}

bool kvControlPointManager::isSelected(const kvControlPoint& cp) const {
    return !cps.empty() && cp.selected;
}

void kvControlPointManager::selectCP(kvControlPoint& cp) {
    cp.selected = true;
}

void kvControlPointManager::deselectCP(kvControlPoint& cp) {
    cp.selected = false;
}

void kvControlPointManager::selectAllCPs() {
    for (kvControlPoint& cp : cps)
        cp.selected = true;
}

void kvControlPointManager::deselectAllCPs() {
    for (kvControlPoint& cp : cps)
        cp.selected = false;
}

std::vector<kvControlPoint*> kvControlPointManager::getSelectedCPs() {
    std::vector<kvControlPoint*> result;
    for (kvControlPoint& cp : cps)
        if (cp.selected) result.push_back(&cp);
    return result;
}

double kvControlPointManager::getStartFrame() const {
    return cps.empty() ? 99999.0 : cps.front().point.x;
}

double kvControlPointManager::getEndFrame() const {
    return cps.empty() ? -99999.0 : cps.back().point.x;
}

void kvControlPointManager::getMaxMinValues(double& maxX, double& maxY, double& minX,
                                            double& minY) const {
    if (cps.empty()) {
        maxX = 0.0;
        maxY = 0.0;
        minX = 0.0;
        minY = 0.0;
        return;
    }
    for (const kvControlPoint& cp : cps) {
        if (cp.point.x > maxX) maxX = cp.point.x;
        if (cp.point.y > maxY) maxY = cp.point.y;
        if (cp.point.x < minX) minX = cp.point.x;
        if (cp.point.y < minY) minY = cp.point.y;
    }
}

int kvControlPointManager::d2i(double v) {
    return kv::detail::roundHalfAway(v);
}

void kvControlPointManager::snap2Integer(kvControlPoint& cp, double x, double y, bool snapX,
                                         bool snapY) {
    if (cps.empty()) return;
    setPointInPlace(cp, {snapX ? d2i(x) : x, snapY ? d2i(y) : y});
}

// Writes a key's point without moving the key to where it belongs. The list stays known as sorted
// when the key still stands between its neighbours.
void kvControlPointManager::setPointInPlace(kvControlPoint& cp, kvControlPoint::Point target) {
    const std::size_t index = indexOf(&cp);
    if (index == kNone) {
        cp.setPoint(target);
        return;
    }
    const bool fits =
        (index == 0 || !kv::detail::framePrecedes(target.x, cps[index - 1].point.x)) &&
        (index + 1 == cps.size() || !kv::detail::framePrecedes(cps[index + 1].point.x, target.x));
    cp.point = target;
    countIfPlayed();
    if (fits)
        noteLastFrame();
    else
        noteUnsorted();
}

bool kvControlPointManager::checkConstraints(const kvControlPoint& cp, float x, float inX,
                                             float outX) const {
    const double frame = static_cast<double>(x);
    const double in = static_cast<double>(inX);
    const double out = static_cast<double>(outX);
    // The outgoing handle is not held against the key itself: only the incoming one is.
    if (in > frame) return false;
    const kvControlPoint* previous = live(cp.prevCP);
    if (previous != nullptr && (previous->outTangent.x > frame || previous->point.x > in))
        return false;
    const kvControlPoint* next = live(cp.nextCP);
    return next == nullptr || !(frame > next->inTangent.x || out > next->point.x);
}

void kvControlPointManager::computeDistances2Mouse(double mx, double my) {
    for (kvControlPoint& cp : cps)
        cp.setDistance2Mouse(cp.point.x - mx, cp.point.y - my);
}

bool kvControlPointManager::hasHitCPOrTangent(double mx, double my, double scaleX, double scaleY) {
    constexpr double kKeyPixels = 6.0;
    constexpr double kHandlePixels = 4.0;
    // From pixels to curve units, each axis on its own.
    struct Reach {
        double x;
        double y;
    };
    const Reach keyReach{kKeyPixels / scaleX, kKeyPixels / scaleY};
    const Reach handleReach{kHandlePixels / scaleX, kHandlePixels / scaleY};
    const auto hits = [=](kvControlPoint::Point p, Reach r) {
        return p.x - r.x < mx && mx < p.x + r.x && p.y - r.y < my && my < p.y + r.y;
    };
    for (kvControlPoint& cp : cps) {
        if (hits(cp.point, keyReach))
            hitType = HitPoint;
        else if (hits(cp.inTangent, handleReach))
            hitType = HitInTangent;
        else if (hits(cp.outTangent, handleReach))
            hitType = HitOutTangent;
        else
            continue;
        hitCP = &cp;
        return true;
    }
    return false;
}
