// Moving all selected keys of a curve to one frame, with exactly the result of calling moveCPTo for
// each of their places in turn, but in time that grows with the number of keys and not with that
// number times the number of selected ones.
//
// Each call moves the key at a place to the frame and thereby out of that place, and the keys in
// between by one place. Done one by one, every selected key may so move all others. Here the keys
// in between are only moved once all is done; until then `at` tells where the key of a place really
// is. The places ascend, so first come keys before the frame, each of which goes to the front of
// the keys at the frame, then keys at it, which stay, then keys behind it, each of which goes to
// the back of the keys at the frame.
#include <kvAnimationCurve.h>

#include "keys/frameOrder.h"
#include "keys/handlePlacement.h"
#include "keys/walkCount.h"

#include <algorithm>

using kv::detail::framePrecedes;

class kvAnimationCurve::FrameChange {
  public:
    /// The curve must be sorted, and linked at the end.
    FrameChange(kvAnimationCurve& curve, float frame)
        : _curve(curve), _keys(curve.cps), _frame(frame), _target(static_cast<double>(frame)) {
        const auto first =
            std::partition_point(_keys.begin(), _keys.end(), [this](const kvControlPoint& cp) {
                return framePrecedes(cp.point.x, _target);
            });
        const auto behind =
            std::partition_point(first, _keys.end(), [this](const kvControlPoint& cp) {
                return !framePrecedes(_target, cp.point.x);
            });
        _first = static_cast<std::size_t>(first - _keys.begin());
        _behind = static_cast<std::size_t>(behind - _keys.begin());
    }

    /// @param places of the keys, ascending
    void apply(const std::vector<std::size_t>& places) {
        kv::detail::countWalk(_keys.size());
        auto place = places.begin();
        for (; place != places.end() && *place + _taken.size() < _first; ++place)
            takeFromLeft(*place);
        putBackLeft();
        for (; place != places.end() && *place < _behind; ++place)
            settleInPlace(*place);
        for (; place != places.end(); ++place)
            takeFromRight(*place);
        putBackRight();
    }

  private:
    // Before the frame, with m keys taken, the places hold: up to _kept the keys in front of the
    // place in work, already in place; then the rest of those before the frame, which still stand m
    // places further on; then, up to _first, the keys taken, the last one foremost.
    kvControlPoint& atLeft(std::size_t place) {
        if (place < _kept || place >= _first) return _keys[place];
        if (place + _taken.size() < _first) return _keys[place + _taken.size()];
        return _taken[_first - 1 - place];
    }

    void takeFromLeft(std::size_t place) {
        const std::size_t gap = _taken.size();
        for (; _kept < place; ++_kept) {
            if (gap != 0) _keys[_kept].take(_keys[_kept + gap]);
        }
        const kvControlPoint before(_keys[place + gap]);
        _taken.push_back(before);
        _taken.back().point = targetOf(before);
        settle(place, before, [this](std::size_t i) -> kvControlPoint& { return atLeft(i); });
    }

    void putBackLeft() {
        const std::size_t gap = _taken.size();
        if (gap == 0) return;
        for (; _kept + gap < _first; ++_kept)
            _keys[_kept].take(_keys[_kept + gap]);
        for (const kvControlPoint& cp : _taken)
            _keys[--_first].take(cp);
        _taken.clear();
    }

    void settleInPlace(std::size_t place) {
        const kvControlPoint before(_keys[place]);
        _keys[place].point = targetOf(before);
        settle(place, before, [this](std::size_t i) -> kvControlPoint& { return _keys[i]; });
    }

    // Behind the frame, with m keys taken: from _behind on the keys taken, in order; then, up to
    // the place in work, the keys passed over, which still stand m places further to the front.
    kvControlPoint& atRight(std::size_t place, std::size_t inWork) {
        if (place < _behind || place > inWork) return _keys[place];
        if (place < _behind + _taken.size()) return _taken[place - _behind];
        return _keys[place - _taken.size()];
    }

    void takeFromRight(std::size_t place) {
        if (_taken.empty()) _passed = _behind;
        const std::size_t gap = _taken.size();
        for (; _passed + gap < place; ++_passed) {
            if (gap != 0) _keys[_passed].take(_keys[_passed + gap]);
        }
        const kvControlPoint before(_keys[place]);
        _taken.push_back(before);
        _taken.back().point = targetOf(before);
        settle(place, before,
               [this, place](std::size_t i) -> kvControlPoint& { return atRight(i, place); });
    }

    void putBackRight() {
        const std::size_t gap = _taken.size();
        if (gap == 0) return;
        for (std::size_t i = _passed; i > _behind; --i)
            _keys[i - 1 + gap].take(_keys[i - 1]);
        for (std::size_t i = 0; i != gap; ++i)
            _keys[_behind + i].take(_taken[i]);
        _taken.clear();
    }

    kvControlPoint::Point targetOf(const kvControlPoint& cp) const {
        return {_target, static_cast<double>(static_cast<float>(cp.point.y))};
    }

    // What moveCPTo does after the move, to the key that stands at the place by then.
    template <class At>
    void settle(std::size_t place, const kvControlPoint& before, const At& at) {
        kvControlPoint& here = at(place);
        if (here.tangentType == kvControlPoint::User ||
            here.tangentType == kvControlPoint::Collapsed) {
            carryHandles(here, before, _frame, static_cast<float>(before.point.y));
            return;
        }
        if (place != 0) recompute(place - 1, at);
        recompute(place, at);
        if (place + 1 != _keys.size()) recompute(place + 1, at);
    }

    // kvControlPointManager::computeTangents with the neighbours in place of the links.
    template <class At>
    void recompute(std::size_t place, const At& at) {
        const std::size_t last = _keys.size() - 1;
        if (last == 0) return;
        kv::detail::countWalk(1);
        using kv::detail::KeyRole;
        kvControlPoint& cp = at(place);
        const KeyRole role = cp.id == at(0).id      ? KeyRole::First
                             : cp.id == at(last).id ? KeyRole::Last
                                                    : KeyRole::Middle;
        const auto placed =
            kv::detail::placeHandles(cp.tangentType, _curve.tangentLength,
                                     {role, cp.point, place == 0 ? nullptr : &at(place - 1).point,
                                      place == last ? nullptr : &at(place + 1).point});
        if (!placed) return;
        cp.inTangent = placed->in;
        cp.outTangent = placed->out;
    }

    kvAnimationCurve& _curve;
    std::vector<kvControlPoint>& _keys;
    const float _frame;
    const double _target;
    std::size_t _first;      // the first key at the frame
    std::size_t _behind;     // the first key behind it
    std::size_t _kept = 0;   // left: the keys up to here are in their final places
    std::size_t _passed = 0; // right: the end of the keys passed over, where they stand now
    std::vector<kvControlPoint> _taken;
};

// Calls moveCPTo(key, frame, value of the key) for the place of every selected key, in list order.
// The places are those before the first call.
void kvAnimationCurve::moveSelectedCPs(float frame) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i != cps.size(); ++i) {
        if (cps[i].selected) places.push_back(i);
    }
    if (places.empty()) return;
    if (places.size() == 1 || !isKnownLinked()) {
        // A list that is not in order is sorted with its first key at the new frame already.
        kvControlPoint& cp = cps[places.front()];
        moveCPTo(&cp, frame, static_cast<float>(cp.point.y));
        places.erase(places.begin());
    }
    if (places.empty()) return;
    countIfPlayed();
    FrameChange(*this, frame).apply(places);
    noteLastFrame();
    dropIdIndex();
    linkRange(0, cps.size());
}
