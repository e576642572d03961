#pragma once

/// @file
/// Nodes: the tree of the scene.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGDynamicVolumeFields.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGNodeCoreFields.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGUInt32Fields.h>

#include <cassert>

namespace osg {

/// A place in the tree. What it is there is said by its core.
///
/// Children and the core are counted, the parent is not. A node has one parent at most: to add it
/// somewhere takes it away from where it was. The tree may be of any depth; nothing here recurses.
class Node : public AttachmentContainer {
    typedef AttachmentContainer Inherited;

  public:
    typedef NodePtr Ptr;
    enum {
        VolumeFieldId = Inherited::NextFieldId,
        TravMaskFieldId,
        ParentFieldId,
        ChildrenFieldId,
        CoreFieldId,
        NextFieldId
    };
    static const BitVector VolumeFieldMask;
    static const BitVector TravMaskFieldMask;
    static const BitVector ParentFieldMask;
    static const BitVector ChildrenFieldMask;
    static const BitVector CoreFieldMask;
    OSG_FIELD_CONTAINER_DECL(NodePtr)

    // Core

    NodeCorePtr getCore() { return _sfCore.getValue(); }
    const NodeCorePtr getCore() const { return _sfCore.getValue(); }
    /// Null takes the core away.
    void setCore(const NodeCorePtr& core);

    // Tree

    /// Null for a root.
    NodePtr getParent() { return _sfParent.getValue(); }

    UInt32 getNChildren() const { return static_cast<UInt32>(_mfChildren.size()); }
    /// The index is less than getNChildren().
    NodePtr getChild(UInt32 index) {
        assert(index < _mfChildren.size() && "there is no such child");
        return _mfChildren[index];
    }

    /// Appends a child, after taking it away from its former parent. Nothing for null. A node that
    /// is above this one, or this one itself, is refused with a warning.
    void addChild(const NodePtr& child);
    /// The same, before the child that has the index once the new one has left its former place; an
    /// index behind the last child appends.
    void insertChild(UInt32 index, const NodePtr& child);
    /// Puts a node in the place of a child, which is released. Nothing for null or a bad index.
    void replaceChild(UInt32 index, const NodePtr& child);
    /// The same; false when the first node is no child.
    bool replaceChildBy(const NodePtr& child, const NodePtr& replacement);
    /// Releases a child; a warning when it is none.
    void subChild(const NodePtr& child);
    void subChild(UInt32 index);
    /// -1 when the node is no child.
    Int32 findChild(const NodePtr& child) const;

    // Visibility

    /// Whether all bits of the traversal mask are set.
    bool getActive() const { return getTravMask() == allBits; }
    /// Sets all bits of the traversal mask, or none.
    void setActive(bool active) { setTravMask(active ? allBits : 0); }

    const UInt32& getTravMask() const { return _sfTravMask.getValue(); }
    UInt32& getTravMask() { return _sfTravMask.getValue(); }
    void setTravMask(const UInt32& mask) { _sfTravMask.setValue(mask); }

    // Space

    /// The transformation from the node's own coordinates, those of its children, to the world's.
    Matrix getToWorld();
    void getToWorld(Matrix& result);

    /// The volume as it is, possibly out of date, in the coordinates of the parent.
    const DynamicVolume& getVolume() const { return _sfVolume.getValue(); }
    DynamicVolume& getVolume() { return _sfVolume.getValue(); }
    void setVolume(const DynamicVolume& volume) { _sfVolume.setValue(volume); }
    const DynamicVolume& getVolume(bool update);
    /// In the coordinates of the world, up to date.
    void getWorldVolume(DynamicVolume& result);
    /// Computes the volume again, if anything changed, from the core and the children that are
    /// visible at all. Changes are noticed at the end of edits.
    void updateVolume();
    /// Makes the volume, and those above, to be computed again.
    void invalidateVolume() {
        if (mayInvalidate()) invalidateUpwards();
    }

    // Fields

    SFDynamicVolume* getSFVolume() { return &_sfVolume; }
    SFUInt32* getSFTravMask() { return &_sfTravMask; }
    SFNodePtr* getSFParent() { return &_sfParent; }
    MFNodePtr* getMFChildren() { return &_mfChildren; }
    const MFNodePtr* getMFChildren() const { return &_mfChildren; }
    SFNodeCorePtr* getSFCore() { return &_sfCore; }

    /// Changes of the tree, the core or the visibility invalidate the volume. With
    /// ChangedOrigin::Abstract the children and the core that were put into the fields directly are
    /// counted and get their back pointers; nulls among the children are dropped.
    void changed(BitVector whichField, UInt32 origin) override;

    UInt32 getBinSize(const BitVector& whichField) override;
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void dump(UInt32 indent = 0, const BitVector flags = 0) const override;

  protected:
    Node();
    /// A copy has the mask of its source, and neither core nor parent nor children.
    Node(const Node& source);
    ~Node() override;

    void executeSync(FieldContainer& other, const BitVector& whichField) override;
    void executeSyncImpl(Node* other, const BitVector& whichField);

    SFDynamicVolume _sfVolume;
    SFUInt32 _sfTravMask;
    SFNodePtr _sfParent;
    MFNodePtr _mfChildren;
    SFNodeCorePtr _sfCore;

  private:
    friend class FieldContainer;

    static constexpr UInt32 allBits = ~UInt32(0);

    bool mayAdopt(const NodePtr& child);
    void adopt(const NodePtr& child);
    void disown(const NodePtr& child);
    void dropChild(UInt32 index);
    void acceptChildren(UInt32 origin);
    void acceptCore(UInt32 origin);
    void recomputeVolume();
    /// Not when it is invalid already: above an invalid volume there are only invalid ones.
    bool mayInvalidate() const {
        const DynamicVolume& volume = _sfVolume.getValue();
        return volume.isValid() && !volume.isStatic();
    }
    void invalidateUpwards();

    static FieldContainerPtr makePrototype() { return createEmpty(); }
    Field* fieldVolume() { return &_sfVolume; }
    Field* fieldTravMask() { return &_sfTravMask; }
    Field* fieldParent() { return &_sfParent; }
    Field* fieldChildren() { return &_mfChildren; }
    Field* fieldCore() { return &_sfCore; }

    static FieldDescription* _desc[];
    static FieldContainerType _type;

    /// Where this node was last seen among its parent's children; findChild starts there.
    mutable UInt32 _indexInParent = 0;
    /// By how much the child that findChild found last had moved down since it was seen before.
    mutable Int64 _shift = 0;
    /// The core that is counted and knows this node; differs from the field's while a file reader
    /// fills it.
    NodeCorePtr _countedCore;
};

inline NodePtr::NodePtr(const Node* object)
    : AttachmentContainerPtr(static_cast<FieldContainer*>(const_cast<Node*>(object))) {}
inline NodePtr::NodePtr(const Node& object) : NodePtr(&object) {}
inline NodePtr NodePtr::dcast(const FieldContainerPtrBase& other) {
    return NodePtr(detail::castContainer<Node>(objectOf(other)));
}
inline Node* NodePtr::operator->() const {
    return static_cast<Node*>(checked());
}
inline Node& NodePtr::operator*() const {
    return *static_cast<Node*>(checked());
}
inline Node* NodePtr::getCPtr() const {
    return static_cast<Node*>(objectOf(*this));
}
inline NodeCore* NodePtr::getCore() const {
    return (*this)->getCore().getCPtr();
}

OSG_FIELD_CONTAINER_INL_DEF(Node, NodePtr)

/// A new node, reference count 0, with the core.
NodePtr makeNodeFor(const NodeCorePtr& core);

/// A new node with a new core of the type. `core`, if not null, is where to put the core's pointer.
template <class Core>
inline NodePtr makeCoredNode(typename Core::Ptr* core = nullptr) {
    const typename Core::Ptr made = Core::create();
    if (core != nullptr) *core = made;
    return makeNodeFor(made);
}

/// A copy of the tree below and with the node: new nodes with the same masks that share the cores.
/// Attachments are left out. Null for null.
NodePtr cloneTree(const NodePtr& root);

} // namespace osg
