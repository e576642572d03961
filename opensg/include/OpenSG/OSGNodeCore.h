#pragma once

/// @file
/// The base of what nodes are: groups, transforms, geometry, lights.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGVolume.h>

namespace osg {

/// What a node is. One core may be shared by many nodes.
class NodeCore : public AttachmentContainer {
    typedef AttachmentContainer Inherited;

  public:
    typedef NodeCorePtr Ptr;
    enum { ParentsFieldId = Inherited::NextFieldId, NextFieldId };
    static const BitVector ParentsFieldMask;
    OSG_ABSTR_FIELD_CONTAINER_DECL(NodeCorePtr)

    /// The nodes that use the core. Not counted.
    MFNodePtr& getParents() { return _mfParents; }
    const MFNodePtr& getParents() const { return _mfParents; }
    NodePtr& getParents(UInt32 index) { return _mfParents[index]; }
    MFNodePtr* getMFParents() { return &_mfParents; }

    /// Multiplies the core's own transformation to the right; nothing unless it has one.
    virtual void accumulateMatrix(Matrix& result);

    /// Makes the volume of the children that of the node: adds what the core itself contains, and
    /// transforms the whole if the core is a transformation. Nothing here.
    virtual void adjustVolume(Volume& volume);

    /// Makes the volumes of all nodes that use the core, and of what is above them, to be computed
    /// again.
    void invalidateVolume();

    UInt32 getBinSize(const BitVector& whichField) override;
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void dump(UInt32 indent = 0, const BitVector flags = 0) const override;

  protected:
    NodeCore() = default;
    /// A copy is not used by any node.
    NodeCore(const NodeCore& source);
    ~NodeCore() override = default;

    void executeSync(FieldContainer& other, const BitVector& whichField) override;
    void executeSyncImpl(NodeCore* other, const BitVector& whichField);

    MFNodePtr _mfParents;

  private:
    friend class FieldContainer;
    friend class Node;

    void addParent(const NodePtr& parent) { _mfParents.push_back(parent); }
    void subParent(const NodePtr& parent);

    Field* fieldParents() { return &_mfParents; }

    static FieldDescription* _desc[];
    static FieldContainerType _type;
};

OSG_ABSTR_FIELD_CONTAINER_INL_DEF(NodeCore, NodeCorePtr)

} // namespace osg

#include <OpenSG/OSGNodeCoreFields.h>
