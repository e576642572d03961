#pragma once

/// @file
/// One key of an animation curve.

#include <kvOpenSGAnimationsApi.h>

namespace kv::detail {
class KeyImport;
}

/// A key: a point in the (frame, value) plane with two Bezier handles, the flags of the curve
/// editor and an id.
///
/// Keys live by value in the vector of a kvControlPointManager, which keeps them in the order of
/// their frames and chains neighbours by raw links. Sorting or growing that vector moves the keys,
/// so a pointer to a key is valid only until its list changes. A key in a list is replaced by
/// assigning to it, not by constructing another one in its place, of which the list would not hear.
///
/// Every constructor draws exactly one id from the identifier service. Copies draw none: a copy
/// carries the id of its source, and ids are therefore not unique among all keys.
class KV_ANIMATIONS_API kvControlPoint {
  public:
    /// A position: `x` is the frame (any real number, not only whole frames), `y` the value.
    struct Point {
        double x = 0.0;
        double y = 0.0;
    };

    /// How the key list places the handles when it recomputes a key. Any other number is kept and
    /// read back as it is, and behaves as Collapsed.
    enum TangentType : int {
        Collapsed = 0, ///< both handles on the key
        Constant = 1,  ///< as Collapsed; marks the keys of a held interval
        Aimed = 2,     ///< each handle on the line to the neighbour on its side
        Smooth = 3,    ///< both handles on one line, parallel to the neighbours' chord
        Flat = 4,      ///< both handles horizontal
        Auto = 5,      ///< both handles on the slope to the next key; the last key is flat
        User = 6       ///< never recomputed
    };

    /// A key at (0, 0) with both handles there, type Auto, and a fresh id.
    kvControlPoint();

    /// A key at frame `x` with value `y`. Both handles lie on the key; the old point stays (0, 0).
    /// `tangentType` is a TangentType; other numbers are stored unchanged.
    kvControlPoint(double x, double y, int tangentType);

    kvControlPoint(const kvControlPoint&) = default;
    ~kvControlPoint() = default;

    /// Copies every field, the id and the links included.
    kvControlPoint& operator=(const kvControlPoint& other);

    /// @{
    /// Moves the key alone; its handles stay where they are and its list is not sorted again.
    void setPoint(Point newPoint);
    Point getPoint() const { return point; }
    /// @}

    /// @{
    /// The incoming handle as an absolute position, not a direction.
    void setInTangent(Point position);
    Point getInTangent() const { return inTangent; }
    /// @}

    /// @{
    /// The outgoing handle as an absolute position, not a direction.
    void setOutTangent(Point position);
    Point getOutTangent() const { return outTangent; }
    /// @}

    /// @{
    /// Where the key was when an interactive move began.
    void setOldPoint(Point position) { oldPoint = position; }
    Point getOldPoint() const { return oldPoint; }
    /// @}

    /// @{
    /// The signed distance from the mouse to the key, in frames and in units of value.
    void setDistance2Mouse(double dx, double dy);
    void getDistance2Mouse(double& dx, double& dy) const;
    /// @}

    /// @{
    /// Whether the operations over selected keys touch this one.
    void setSelected(bool isNowSelected) { selected = isNowSelected; }
    bool isSelected() const { return selected; }
    /// @}

    /// @{
    /// Whether the mouse is over the key. For the host to set; the hit test does not.
    void setUnderMouse(bool isNowUnderMouse) { underMouse = isNowUnderMouse; }
    bool isUnderMouse() const { return underMouse; }
    /// @}

    /// @{
    /// A mark for the host. Recomputing handles does not consult it.
    void setAutoTangents(bool automatic) { autoTangents = automatic; }
    bool getAutoTangents() const { return autoTangents; }
    /// @}

    /// @{
    /// The frames between which the key may be dragged. Kept for the host, not enforced.
    void setMinX(double frame) { minX = frame; }
    double getMinX() const { return minX; }
    void setMaxX(double frame) { maxX = frame; }
    double getMaxX() const { return maxX; }
    /// @}

    /// @{
    /// The id by which lists find the key; any number. Not necessarily unique: copies share it.
    void setId(int newId);
    int getId() const { return id; }
    /// @}

    /// @{
    /// @param type a TangentType; other numbers are stored unchanged. The handles are not
    /// recomputed.
    void setTangentType(int type) { tangentType = type; }
    int getTangentType() const { return tangentType; }
    /// @}

    /// @{
    /// How far the incoming handle lies before the key: point minus handle. Positive for a handle
    /// on its own side of the key.
    double getInTangentDx() const { return point.x - inTangent.x; }
    double getInTangentDy() const { return point.y - inTangent.y; }
    /// @}

    /// @{
    /// How far the outgoing handle lies behind the key: handle minus point.
    double getOutTangentDx() const { return outTangent.x - point.x; }
    double getOutTangentDy() const { return outTangent.y - point.y; }
    /// @}

    /// Whether this key's frame is smaller than the other's. Values, ids and handles play no part;
    /// a NaN frame compares false both ways.
    bool operator<(const kvControlPoint& other) const { return other.point.x > point.x; }

  private:
    friend class kvControlPointManager;
    friend class kvAnimationCurve;
    friend class kv::detail::KeyImport;
    friend struct kvTestAccess<kvControlPoint>;

    /// Assignment for the lists that own keys: unlike operator= it does not count as an edit from
    /// outside, because the list that moves its keys knows what that does to their order.
    void take(const kvControlPoint& other);

    bool isInList() const;
    /// Tells the lists that a key may have changed its place or its id, and players that it
    /// changed.
    void countEdit() const;
    /// Tells players alone.
    void countHandleEdit() const;

    // What evaluating a segment reads of a key comes first, close together. No more than that:
    // aligning keys to lines of the cache would tear up the heap.
    Point point;
    Point inTangent;
    Point outTangent;
    kvControlPoint* nextCP = nullptr;
    kvControlPoint* prevCP = nullptr;
    Point oldPoint;
    struct {
        double dx = 0.0;
        double dy = 0.0;
    } distance2Mouse;
    double minX = 0.0;
    double maxX = 0.0;
    bool selected = false;
    bool underMouse = false;
    bool autoTangents = false;
    int tangentType = Auto;
    int id;
};
