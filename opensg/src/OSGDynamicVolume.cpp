// Boxes and spheres around things.

#include <OpenSG/OSGDynamicVolume.h>

#include <algorithm>

namespace osg {

void DynamicVolume::setVolumeType(Type type) {
    if (type == _type) return;
    const UInt16 state = getState();
    Pnt3f center;
    getCenter(center);
    if (type == SPHERE_VOLUME) {
        setSphere(center, getRadius());
    } else {
        Pnt3f minimum;
        Pnt3f maximum;
        getBounds(minimum, maximum);
        setBounds(minimum, maximum);
    }
    setState(state);
}

void DynamicVolume::setBounds(const Pnt3f& minimum, const Pnt3f& maximum) {
    _type = BOX_VOLUME;
    _min = minimum;
    _max = maximum;
    _radius = 0;
    setState(OSGVALID);
}

void DynamicVolume::setSphere(const Pnt3f& center, Real32 radius) {
    _type = SPHERE_VOLUME;
    _min = center;
    _max = Pnt3f();
    _radius = radius;
    setState(OSGVALID);
}

void DynamicVolume::getBounds(Pnt3f& minimum, Pnt3f& maximum) const {
    minimum = _min;
    maximum = _max;
    if (_type == BOX_VOLUME) return;
    const Vec3f radius(_radius, _radius, _radius);
    minimum = _min - radius;
    maximum = _min + radius;
}

void DynamicVolume::getCenter(Pnt3f& center) const {
    center = _type == SPHERE_VOLUME ? _min : _min + (_max - _min) * 0.5f;
}

Real32 DynamicVolume::getRadius() const {
    return _type == SPHERE_VOLUME ? _radius : (_max - _min).length() / 2;
}

void DynamicVolume::extendBy(const Pnt3f& point) {
    if (!isValid() || isInfinite()) return;
    if (isEmpty()) {
        if (_type == BOX_VOLUME) {
            setBounds(point, point);
        } else {
            setSphere(point, 0);
        }
        return;
    }
    if (_type == BOX_VOLUME) {
        for (UInt32 i = 0; i < 3; ++i) {
            _min[i] = (std::min)(_min[i], point[i]);
            _max[i] = (std::max)(_max[i], point[i]);
        }
        return;
    }
    const Vec3f away = point - _min;
    const Real32 distance = away.length();
    if (distance <= _radius) return;
    // The smallest sphere around the old one and the point.
    const Real32 radius = (_radius + distance) / 2;
    _min += away * ((radius - _radius) / distance);
    _radius = radius;
}

void DynamicVolume::extendBy(const Volume& volume) {
    if (volume.isInfinite()) setInfinite();
    if (!isValid() || isInfinite() || !volume.isValid() || volume.isEmpty()) return;
    Pnt3f minimum;
    Pnt3f maximum;
    volume.getBounds(minimum, maximum);
    if (_type == BOX_VOLUME) {
        extendBy(minimum);
        extendBy(maximum);
        return;
    }
    for (UInt32 corner = 0; corner < 8; ++corner)
        extendBy(Pnt3f(corner & 1 ? maximum[0] : minimum[0], corner & 2 ? maximum[1] : minimum[1],
                       corner & 4 ? maximum[2] : minimum[2]));
}

void DynamicVolume::transform(const Matrix& matrix) {
    if (!isValid() || isEmpty() || isInfinite()) return;
    if (_type == SPHERE_VOLUME) {
        Real32 longest = 0;
        for (UInt32 c = 0; c < 3; ++c)
            longest = (std::max)(longest, Vec3f(matrix[c]).length());
        matrix.mult(_min, _min);
        _radius *= longest;
        return;
    }
    const Pnt3f minimum = _min;
    const Pnt3f maximum = _max;
    const UInt16 state = getState();
    setEmpty();
    for (UInt32 corner = 0; corner < 8; ++corner) {
        Pnt3f point(corner & 1 ? maximum[0] : minimum[0], corner & 2 ? maximum[1] : minimum[1],
                    corner & 4 ? maximum[2] : minimum[2]);
        matrix.mult(point, point);
        extendBy(point);
    }
    setState(state);
}

bool DynamicVolume::intersect(const Pnt3f& point) const {
    if (isInfinite()) return true;
    if (!isValid() || isEmpty()) return false;
    if (_type == SPHERE_VOLUME) return _min.dist2(point) <= _radius * _radius;
    for (UInt32 i = 0; i < 3; ++i) {
        if (!(_min[i] <= point[i] && point[i] <= _max[i])) return false;
    }
    return true;
}

bool DynamicVolume::operator==(const DynamicVolume& other) const {
    return _type == other._type && getState() == other.getState() && _min == other._min &&
           _max == other._max && _radius == other._radius;
}

} // namespace osg
