// The key list: recomputing handles. Neighbours are read through the links, so that a list whose
// links are stale answers as its links say, except that a link to nowhere counts as none.
#include <kvControlPointManager.h>

#include "keys/handlePlacement.h"
#include "keys/walkCount.h"

void kvControlPointManager::computeTangents(kvControlPoint& cp) {
    // Most keys of imported scenes are of type User, and nothing about them needs to be looked up.
    if (cps.size() < 2 || cp.tangentType == kvControlPoint::User) return;
    kv::detail::countWalk(1);
    using kv::detail::KeyRole;
    const kvControlPoint* previous = live(cp.prevCP);
    const kvControlPoint* next = live(cp.nextCP);
    const KeyRole role = isStartCP(cp) ? KeyRole::First
                         : isEndCP(cp) ? KeyRole::Last
                                       : KeyRole::Middle;
    const auto placed =
        kv::detail::placeHandles(cp.tangentType, tangentLength,
                                 {role, cp.point, previous == nullptr ? nullptr : &previous->point,
                                  next == nullptr ? nullptr : &next->point});
    if (!placed) return;
    countIfPlayed();
    if (indexOf(&cp) == kNone) cp.countHandleEdit(); // it may stand in another list
    cp.inTangent = placed->in;
    cp.outTangent = placed->out;
}

void kvControlPointManager::computeTangents() {
    if (cps.size() < 2) return;
    for (kvControlPoint& cp : cps)
        computeTangents(cp);
}

void kvControlPointManager::computeTangents(int type) {
    for (kvControlPoint& cp : cps) {
        if (!cp.selected) continue;
        cp.tangentType = type;
        computeTangents(cp);
    }
}

void kvControlPointManager::computeTangentsExtended(kvControlPoint& cp) {
    if (kvControlPoint* previous = live(cp.prevCP)) computeTangents(*previous);
    computeTangents(cp);
    if (kvControlPoint* next = live(cp.nextCP)) computeTangents(*next);
}

void kvControlPointManager::constantCurveInterval() {
    for (kvControlPoint& cp : cps) {
        kvControlPoint* next = live(cp.nextCP);
        if (!cp.selected || next == nullptr || !next->selected) continue;
        countIfPlayed();
        cp.outTangent = cp.point;
        cp.tangentType = kvControlPoint::Constant;
        next->inTangent = next->point;
        next->tangentType = kvControlPoint::Constant;
    }
}
