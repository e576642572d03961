#pragma once

/// @file
/// The core of nodes that move what is below them.

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>

namespace osg {

class Transform;
typedef FCPtr<GroupPtr, Transform> TransformPtr;

#define OSG_TRANSFORM_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                               \
    VALUE(SFMatrix, Matrix, "matrix")

OSG_TABLE_BASE(Transform, Group, OSG_TRANSFORM_FIELDS)

/// Takes the coordinates of the children into those of the parent.
///
/// Derived classes may make the matrix of other fields. They need not do so at the end of every
/// edit: a matrix that was announced by postponeMatrix is made when somebody looks. Whoever has
/// asked for the field itself may look at any time, so from then on the matrix is made at once. A
/// reference from getMatrix shows the matrix as it was then; ask again after an edit.
///
/// Looking may therefore write: two threads must not look at one transform before one of them has
/// done so since the last edit.
class Transform : public TransformBase {
    OSG_TABLE_MEMBERS(Transform)

  public:
    const osg::Matrix& getMatrix() const {
        finishMatrix();
        return Inherited::getMatrix();
    }
    osg::Matrix& getMatrix() {
        finishMatrix();
        return Inherited::getMatrix();
    }
    osg::Matrix& editMatrix() { return getMatrix(); }
    void setMatrix(const osg::Matrix& matrix) {
        Inherited::setMatrix(matrix);
        _isPostponed = false;
    }
    SFMatrix* getSFMatrix() { return static_cast<SFMatrix*>(fieldMatrix()); }
    const SFMatrix* getSFMatrix() const { return const_cast<Transform*>(this)->getSFMatrix(); }
    SFMatrix* editSFMatrix() { return getSFMatrix(); }

    void accumulateMatrix(osg::Matrix& result) override;
    void adjustVolume(Volume& volume) override;

    /// An edit of the matrix invalidates the volumes of the nodes that use the core.
    void changed(BitVector whichField, UInt32 origin) override {
        if ((whichField & MatrixFieldMask) != 0) {
            // invalidateVolume, which need not be called when most volumes are invalid already.
            for (const NodePtr& parent : _mfParents)
                if (parent != NullFC) parent->invalidateVolume();
        }
        Inherited::changed(whichField, origin);
    }

    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;

  protected:
    Field* fieldMatrix() override;

    /// The matrix is out of date from here on: postponedMatrix() is what it is.
    void postponeMatrix() {
        _isPostponed = true;
        if (_fieldIsKnown.isSet) makeMatrix();
    }
    virtual osg::Matrix postponedMatrix() const;

    void executeSyncImpl(Transform* other, const BitVector& whichField);

  private:
    void finishMatrix() const {
        if (_isPostponed) const_cast<Transform*>(this)->makeMatrix();
    }
    void makeMatrix();

    /// Not copied with the container: a copy has a field of its own.
    struct Flag {
        bool isSet = false;
        Flag() = default;
        Flag(const Flag&) : Flag() {}
        Flag& operator=(const Flag&) = delete;
    };
    Flag _fieldIsKnown;
    bool _isPostponed = false;
};

OSG_TABLE_INLINE(Transform)

} // namespace osg
