// The animated channel: what a list of keys drives, and the edits of a curve as a whole.
#include <kvAnimationCurve.h>

#include "keys/sceneNodes.h"

#include <atomic>
#include <iostream>
#include <utility>

std::uint32_t kvAnimationCurve::_idCount = 0;

kvAnimationCurve::kvAnimationCurve() : id(_idCount++) {
    predefinedColor();
}

kvAnimationCurve::kvAnimationCurve(std::string curveName)
    : name(std::move(curveName)), id(_idCount++) {
    predefinedColor();
}

// Member by member, because the stamp of the binding stands in the list, which does not copy it:
// the keys alone may be assigned, too.
kvAnimationCurve::kvAnimationCurve(const kvAnimationCurve& other)
    : kvControlPointManager(other), name(other.name), curveType(other.curveType),
      autocomputeTangents(other.autocomputeTangents), visible(other.visible),
      selected(other.selected), blockCurve(other.blockCurve),
      animationDuration(other.animationDuration), color(other.color), appBlockId(other.appBlockId),
      id(other.id), appropriateNodeId(other.appropriateNodeId),
      animationField(other.animationField) {
    bindingStamp = other.bindingStamp;
}

kvAnimationCurve& kvAnimationCurve::operator=(const kvAnimationCurve& other) {
    if (this == &other) return *this;
    kvControlPointManager::operator=(other);
    name = other.name;
    curveType = other.curveType;
    autocomputeTangents = other.autocomputeTangents;
    visible = other.visible;
    selected = other.selected;
    blockCurve = other.blockCurve;
    animationDuration = other.animationDuration;
    color = other.color;
    appBlockId = other.appBlockId;
    id = other.id;
    appropriateNodeId = other.appropriateNodeId;
    animationField = other.animationField;
    bindingStamp = other.bindingStamp;
    return *this;
}

kvAnimationCurve::~kvAnimationCurve() = default;

void kvAnimationCurve::setAnimatedAttribute(std::string newName) {
    name = std::move(newName);
    predefinedColor();
}

void kvAnimationCurve::predefinedColor() {
    color = kvAnimationUtils2::getCurveColor(name);
}

void kvAnimationCurve::setAppropriateNode(const osg::NodePtr& node) {
    appropriateNodeId = kv::detail::idOf(node);
}

osg::NodePtr kvAnimationCurve::getAppropriateNode() const {
    return kv::detail::nodeById(appropriateNodeId);
}

void kvAnimationCurve::setAnimationField(const kvAnimationUtils2::AnimationField& field) {
    // Atomic because scenes may be prepared by several threads.
    static std::atomic<std::uint64_t> lastStamp{0};
    countIfPlayed();
    animationField = field;
    bindingStamp = ++lastStamp;
}

void kvAnimationCurve::importControlPoint(float x, float y, float inX, float inY, float outX,
                                          float outY, int tangentType) {
    kvControlPoint key;
    key.point = {static_cast<double>(x), static_cast<double>(y)};
    key.inTangent = {static_cast<double>(inX), static_cast<double>(inY)};
    key.outTangent = {static_cast<double>(outX), static_cast<double>(outY)};
    key.tangentType = tangentType;
    // As insertCP(kvControlPoint&) does it, but this key is nobody else's: numbering it is no edit.
    key.id = cpCount;
    insertKey(key.point.x, key);
}

void kvAnimationCurve::set(std::string newName, const std::vector<kvControlPoint>& keys) {
    setAnimatedAttribute(std::move(newName));
    countIfPlayed();
    std::vector<kvControlPoint> copy(keys);
    cps.swap(copy);
    noteUnsorted();
    computeLinkedList();
}

void kvAnimationCurve::moveCPTo(kvControlPoint* cp, float x, float y) {
    if (cp == nullptr) return;
    const kvControlPoint before(*cp);
    const kvControlPoint::Point target{static_cast<double>(x), static_cast<double>(y)};
    const std::size_t index = indexOf(cp);
    if (index != kNone) {
        moveKey(index, target);
    } else {
        cp->setPoint(target);
        sortCPs();
    }

    // What follows is done to the key that stands at this address now, which is another one when
    // sorting moved the key past a neighbour.
    if (cp->tangentType != kvControlPoint::User && cp->tangentType != kvControlPoint::Collapsed) {
        computeTangentsExtended(*cp);
        return;
    }
    carryHandles(*cp, before, x, y);
}

// Gives cp the handles that the key `before` had, as far from (x, y) as they were from that key.
void kvAnimationCurve::carryHandles(kvControlPoint& cp, const kvControlPoint& before, float x,
                                    float y) {
    const kvControlPoint::Point& point = before.point;
    const kvControlPoint::Point& in = before.inTangent;
    const kvControlPoint::Point& out = before.outTangent;
    // The distance of the incoming handle is added, not subtracted, so that this handle changes
    // sides. That is deliberate.
    cp.inTangent = {static_cast<double>(static_cast<float>(point.x - in.x) + x),
                    static_cast<double>(static_cast<float>(point.y - in.y) + y)};
    cp.outTangent = {static_cast<double>(static_cast<float>(out.x - point.x) + x),
                     static_cast<double>(static_cast<float>(out.y - point.y) + y)};
}

// Maps every frame f of keys and handles to (f - start) / span * newSpan + newStart, in single
// precision throughout.
void kvAnimationCurve::stretch(float start, float span, float newSpan, float newStart) {
    countIfPlayed();
    const bool sorted = isKnownSorted();
    const bool linked = isKnownLinked();
    const auto mapped = [=](double f) {
        return static_cast<double>((static_cast<float>(f) - start) / span * newSpan + newStart);
    };
    for (kvControlPoint& cp : cps) {
        cp.point.x = mapped(cp.point.x);
        cp.inTangent.x = mapped(cp.inTangent.x);
        cp.outTangent.x = mapped(cp.outTangent.x);
    }
    noteRewritten(sorted, linked);
}

// Moves keys and handles by delta frames, for the block that holds the curve. In single precision,
// which rounds the values along with the frames; deliberate.
void kvAnimationCurve::shift(float delta) {
    countIfPlayed();
    const bool sorted = isKnownSorted();
    const bool linked = isKnownLinked();
    const auto moved = [delta](kvControlPoint::Point p) {
        return kvControlPoint::Point{static_cast<double>(static_cast<float>(p.x) + delta),
                                     static_cast<double>(static_cast<float>(p.y))};
    };
    for (kvControlPoint& cp : cps) {
        cp.point = moved(cp.point);
        cp.inTangent = moved(cp.inTangent);
        cp.outTangent = moved(cp.outTangent);
    }
    noteRewritten(sorted, linked);
}

void kvAnimationCurve::stretchLeft(float newStart) {
    if (cps.empty()) return;
    const float start = static_cast<float>(getStartFrame());
    const double end = getEndFrame();
    stretch(start, static_cast<float>(end - static_cast<double>(start)),
            static_cast<float>(end - static_cast<double>(newStart)), newStart);
}

void kvAnimationCurve::stretchRight(float newEnd) {
    if (cps.empty()) return;
    const float start = static_cast<float>(getStartFrame());
    const double end = getEndFrame();
    stretch(start, static_cast<float>(end - static_cast<double>(start)), newEnd - start, start);
}

void kvAnimationCurve::flip() {
    if (cps.size() < 2) return;
    const float range =
        static_cast<float>(cps.back().point.x) - static_cast<float>(cps.front().point.x);
    const double middle = static_cast<double>(
        static_cast<float>(static_cast<double>(range) * 0.5 + cps.front().point.x));
    countIfPlayed();
    const auto mirrored = [middle](double f) { return middle - f + middle; };
    for (kvControlPoint& cp : cps) {
        cp.point.x = mirrored(cp.point.x);
        cp.inTangent.x = mirrored(cp.inTangent.x);
        cp.outTangent.x = mirrored(cp.outTangent.x);
        std::swap(cp.inTangent, cp.outTangent);
    }
    noteUnsorted();
    sortCPs();
}

void kvAnimationCurve::printInfo() const {
    const auto line = [](const char* label, std::size_t number, kvControlPoint::Point p) {
        std::cout << label << number << ": " << p.x << " " << p.y << std::endl;
    };
    for (std::size_t i = 0; i < cps.size(); ++i) {
        line("# CurvePoint", i + 1, cps[i].point);
        line("# InTangent", i + 1, cps[i].inTangent);
        line("# OutTangent", i + 1, cps[i].outTangent);
    }
}
