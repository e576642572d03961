// The key. Everything that can change its place in a list counts as an edit from outside, and so
// does, for players, everything that changes the curve.
#include <kvControlPoint.h>

#include "keys/editCounter.h"
#include "manager/identifiers.h"

#include <cstdint>

namespace kv::detail {

std::atomic<std::uint64_t> keyEdits{kNoKeyEdit + 1};
std::atomic<std::uint64_t> playedEdits{1};

} // namespace kv::detail

namespace {

int freshId() {
    return static_cast<int>(static_cast<std::uint32_t>(kv::detail::createUniqueId()));
}

} // namespace

kvControlPoint::kvControlPoint() : id(freshId()) {}

kvControlPoint::kvControlPoint(double x, double y, int type)
    : point{x, y}, inTangent{x, y}, outTangent{x, y}, tangentType(type), id(freshId()) {}

kvControlPoint& kvControlPoint::operator=(const kvControlPoint& other) {
    if (this == &other) return *this;
    countEdit();
    take(other);
    return *this;
}

void kvControlPoint::take(const kvControlPoint& other) {
    nextCP = other.nextCP;
    prevCP = other.prevCP;
    point = other.point;
    oldPoint = other.oldPoint;
    distance2Mouse = other.distance2Mouse;
    inTangent = other.inTangent;
    outTangent = other.outTangent;
    minX = other.minX;
    maxX = other.maxX;
    selected = other.selected;
    underMouse = other.underMouse;
    autoTangents = other.autoTangents;
    tangentType = other.tangentType;
    id = other.id;
}

// A key without links stands in no list, or is the only one there: lists of two or more keys that
// know their order have linked each of them. Building keys one by one thus disturbs no list.
bool kvControlPoint::isInList() const {
    return nextCP != nullptr || prevCP != nullptr;
}

void kvControlPoint::countEdit() const {
    if (!isInList()) return;
    kv::detail::countKeyEdit();
    kv::detail::countPlayedEdit();
}

void kvControlPoint::countHandleEdit() const {
    if (isInList()) kv::detail::countPlayedEdit();
}

void kvControlPoint::setPoint(Point newPoint) {
    countEdit();
    point = newPoint;
}

void kvControlPoint::setInTangent(Point position) {
    countHandleEdit();
    inTangent = position;
}

void kvControlPoint::setOutTangent(Point position) {
    countHandleEdit();
    outTangent = position;
}

void kvControlPoint::setDistance2Mouse(double dx, double dy) {
    distance2Mouse.dx = dx;
    distance2Mouse.dy = dy;
}

void kvControlPoint::getDistance2Mouse(double& dx, double& dy) const {
    dx = distance2Mouse.dx;
    dy = distance2Mouse.dy;
}

void kvControlPoint::setId(int newId) {
    countEdit();
    id = newId;
}
