#pragma once

/// @file
/// What all bounding volumes have in common.

#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGVector.h>

namespace osg {

/// A closed region of space around something, axis-parallel or round.
///
/// A volume is valid or not: an invalid one must be computed again before use. An empty one
/// contains nothing, an infinite one everything; extending it changes neither.
class Volume {
  public:
    enum State { OSGVALID = 1, OSGEMPTY = 2, OSGSTATIC = 4, OSGINFINITE = 8 };

    virtual ~Volume() = default;

    bool isValid() const { return (_state & OSGVALID) != 0; }
    bool isEmpty() const { return (_state & OSGEMPTY) != 0; }
    /// A static volume is not recomputed when the things inside it change.
    bool isStatic() const { return (_state & OSGSTATIC) != 0; }
    bool isInfinite() const { return (_state & OSGINFINITE) != 0; }

    void setValid(bool value = true) { setState(OSGVALID, value); }
    void setStatic(bool value = true) { setState(OSGSTATIC, value); }
    void setInfinite(bool value = true) { setState(OSGINFINITE, value); }
    /// An empty volume is a valid one.
    void setEmpty(bool value = true) {
        setState(OSGEMPTY, value);
        if (value) setState(OSGVALID, true);
    }

    UInt16 getState() const { return _state; }
    void setState(UInt16 state) { _state = state; }

    virtual void getBounds(Pnt3f& minimum, Pnt3f& maximum) const = 0;
    virtual void getCenter(Pnt3f& center) const = 0;
    virtual void extendBy(const Pnt3f& point) = 0;
    virtual void extendBy(const Volume& volume) = 0;
    /// Becomes the volume around the transformed one.
    virtual void transform(const Matrix& matrix) = 0;
    virtual bool intersect(const Pnt3f& point) const = 0;

  protected:
    Volume() = default;
    Volume(const Volume&) = default;
    Volume& operator=(const Volume&) = default;

  private:
    void setState(State bit, bool value) {
        _state = static_cast<UInt16>(value ? _state | bit : _state & ~bit);
    }

    UInt16 _state = OSGVALID | OSGEMPTY;
};

} // namespace osg
