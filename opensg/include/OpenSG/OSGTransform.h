#pragma once

/// @file
/// The core of nodes that move what is below them.

#include <OpenSG/OSGGroup.h>

namespace osg {

class Transform;
typedef FCPtr<GroupPtr, Transform> TransformPtr;

#define OSG_TRANSFORM_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                               \
    VALUE(SFMatrix, Matrix, "matrix")

OSG_TABLE_BASE(Transform, Group, OSG_TRANSFORM_FIELDS)

/// Takes the coordinates of the children into those of the parent.
class Transform : public TransformBase {
    OSG_TABLE_MEMBERS(Transform)

  public:
    void accumulateMatrix(osg::Matrix& result) override;
    void adjustVolume(Volume& volume) override;

    /// An edit of the matrix invalidates the volumes of the nodes that use the core.
    void changed(BitVector whichField, UInt32 origin) override;
};

OSG_TABLE_INLINE(Transform)

} // namespace osg
