#pragma once

/// @file
/// The bounding volume of nodes.

#include <OpenSG/OSGVolume.h>

namespace osg {

/// A bounding volume that is a box or a sphere as it is asked to be.
class DynamicVolume : public Volume {
  public:
    enum Type { BOX_VOLUME, SPHERE_VOLUME };

    /// Empty, with all numbers 0.
    explicit DynamicVolume(Type type = BOX_VOLUME) : _type(type) {}

    Type getType() const { return _type; }

    /// Another type of volume around the same things; nothing when the type is the same.
    void setVolumeType(Type type);

    /// The volume itself: box and sphere are not objects of their own here.
    const Volume& getInstance() const { return *this; }
    Volume& getInstance() { return *this; }

    /// Becomes a box that is valid and not empty.
    void setBounds(const Pnt3f& minimum, const Pnt3f& maximum);

    /// Becomes a sphere that is valid and not empty.
    void setSphere(const Pnt3f& center, Real32 radius);

    void getBounds(Pnt3f& minimum, Pnt3f& maximum) const override;
    void getCenter(Pnt3f& center) const override;

    /// Of the sphere; of a box half its diagonal.
    Real32 getRadius() const;

    void extendBy(const Pnt3f& point) override;
    void extendBy(const Volume& volume) override;
    void transform(const Matrix& matrix) override;
    bool intersect(const Pnt3f& point) const override;

    bool operator==(const DynamicVolume& other) const;
    bool operator!=(const DynamicVolume& other) const { return !(*this == other); }

  private:
    Type _type;
    Pnt3f _min; ///< of a sphere the center
    Pnt3f _max; ///< of a box only
    Real32 _radius = 0;
};

} // namespace osg
