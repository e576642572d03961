// Nodes: keeping children, parents and cores in step. Volumes and copies are in OSGNodeTree.cpp.
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace osg {

const BitVector Node::VolumeFieldMask = TypeTraits<BitVector>::One << VolumeFieldId;
const BitVector Node::TravMaskFieldMask = TypeTraits<BitVector>::One << TravMaskFieldId;
const BitVector Node::ParentFieldMask = TypeTraits<BitVector>::One << ParentFieldId;
const BitVector Node::ChildrenFieldMask = TypeTraits<BitVector>::One << ChildrenFieldId;
const BitVector Node::CoreFieldMask = TypeTraits<BitVector>::One << CoreFieldId;

// The description of travMask names SFBool although the field is an SFUInt32. OpenSG's does, and
// its files hold the number: take types from the field, not from the description.
FieldDescription* Node::_desc[] = {
    new FieldDescription(SFDynamicVolume::getClassType(), "volume", VolumeFieldId, VolumeFieldMask,
                         false, static_cast<FieldAccessMethod>(&Node::fieldVolume)),
    new FieldDescription(SFBool::getClassType(), "travMask", TravMaskFieldId, TravMaskFieldMask,
                         false, static_cast<FieldAccessMethod>(&Node::fieldTravMask), "4294967295"),
    new FieldDescription(SFNodePtr::getClassType(), "parent", ParentFieldId, ParentFieldMask, true,
                         static_cast<FieldAccessMethod>(&Node::fieldParent)),
    new FieldDescription(MFNodePtr::getClassType(), "children", ChildrenFieldId, ChildrenFieldMask,
                         false, static_cast<FieldAccessMethod>(&Node::fieldChildren)),
    new FieldDescription(SFNodeCorePtr::getClassType(), "core", CoreFieldId, CoreFieldMask, false,
                         static_cast<FieldAccessMethod>(&Node::fieldCore))};

FieldContainerType Node::_type("Node", "AttachmentContainer", nullptr, &Node::makePrototype,
                               nullptr, _desc, sizeof(_desc));
OSG_FIELD_CONTAINER_DEF(Node, NodePtr)

Node::Node() : _sfTravMask(allBits) {}

Node::Node(const Node& source) : Inherited(source), _sfTravMask(source._sfTravMask) {}

Node::~Node() {
    for (const NodePtr& child : _mfChildren) {
        // One that is not counted here was put into the field and never accepted.
        if (child == NullFC || child->getParent() != NodePtr(*this)) continue;
        child->_sfParent.setValue(NullFC);
        subRefCP(child);
    }
    if (_countedCore == NullFC) return;
    _countedCore->subParent(NodePtr(*this));
    subRefCP(_countedCore);
}

void Node::setCore(const NodeCorePtr& core) {
    // Copied: the argument may be this node's own field.
    const NodeCorePtr next = core;
    const NodeCorePtr previous = _countedCore;
    _sfCore.setValue(next);
    if (next == previous) return;

    _countedCore = next;
    if (next != NullFC) {
        addRefCP(next);
        next->addParent(NodePtr(*this));
    }
    if (previous != NullFC) {
        previous->subParent(NodePtr(*this));
        subRefCP(previous);
    }
}

// A node below itself could neither be walked nor destroyed. Only a node that has children can be
// above this one, so that growing a tree leaf by leaf costs nothing here.
bool Node::mayAdopt(const NodePtr& child) {
    if (child != NodePtr(*this) && child->getNChildren() == 0) return true;
    for (NodePtr node(*this); node != NullFC; node = node->getParent()) {
        if (node != child) continue;
        SWARNING << "Node: a node cannot be put below itself" << std::endl;
        return false;
    }
    return true;
}

// Counts the child before it leaves its former place, where the last reference may be.
void Node::adopt(const NodePtr& child) {
    addRefCP(child);
    const NodePtr former = child->getParent();
    if (former != NullFC) {
        former->subChild(child);
        former->invalidateVolume();
    }
}

void Node::disown(const NodePtr& child) {
    child->_sfParent.setValue(NullFC);
    changedCP(child, ParentFieldMask);
    subRefCP(child);
}

void Node::addChild(const NodePtr& child) {
    insertChild(~UInt32(0), child);
}

void Node::insertChild(UInt32 index, const NodePtr& child) {
    if (child == NullFC || !mayAdopt(child)) return;
    const NodePtr added = child;
    adopt(added);
    const UInt32 place = (std::min)(index, getNChildren());
    if (place == getNChildren())
        _mfChildren.push_back(added);
    else
        _mfChildren.insert(_mfChildren.begin() + place, added);
    added->_indexInParent = place;
    added->_sfParent.setValue(NodePtr(*this));
    changedCP(added, ParentFieldMask);
}

void Node::replaceChild(UInt32 index, const NodePtr& child) {
    assert(index < getNChildren() && "there is no such child");
    if (child == NullFC || index >= getNChildren() || _mfChildren[index] == child) return;
    if (!mayAdopt(child)) return;
    const NodePtr added = child;
    const NodePtr replaced = _mfChildren[index];
    adopt(added);
    // The new one may have stood before the old one, which moved then.
    const Int32 place = findChild(replaced);
    if (place < 0) {
        subRefCP(added);
        return;
    }
    _mfChildren[static_cast<UInt32>(place)] = added;
    added->_indexInParent = static_cast<UInt32>(place);
    added->_sfParent.setValue(NodePtr(*this));
    changedCP(added, ParentFieldMask);
    disown(replaced);
}

bool Node::replaceChildBy(const NodePtr& child, const NodePtr& replacement) {
    const Int32 index = findChild(child);
    if (index < 0 || replacement == NullFC) return false;
    replaceChild(static_cast<UInt32>(index), replacement);
    return true;
}

void Node::subChild(const NodePtr& child) {
    const Int32 index = findChild(child);
    if (index < 0) {
        SWARNING << "Node::subChild: " << child << " is not a child" << std::endl;
        return;
    }
    dropChild(static_cast<UInt32>(index));
}

void Node::subChild(UInt32 index) {
    if (index >= getNChildren()) {
        SWARNING << "Node::subChild: there is no child " << index << std::endl;
        return;
    }
    dropChild(index);
}

void Node::dropChild(UInt32 index) {
    const NodePtr child = _mfChildren[index];
    _mfChildren.erase(_mfChildren.begin() + index);
    if (child != NullFC) disown(child);
}

// Looks around the place where the child was last, corrected by how far the child before it had
// moved: elder siblings come and go. To take a long list apart child by child, in order, would have
// squared cost otherwise.
Int32 Node::findChild(const NodePtr& child) const {
    if (child == NullFC || _mfChildren.empty()) return -1;
    const Int64 last = child->_indexInParent;
    const Int64 count = getNChildren();
    const auto found = [&](Int64 index) {
        child->_indexInParent = static_cast<UInt32>(index);
        _shift = last - index;
        return static_cast<Int32>(index);
    };
    Int64 above = (std::min)((std::max)(last - _shift, Int64(0)), count - 1);
    Int64 below = above - 1;
    while (below >= 0 || above < count) {
        if (above < count && _mfChildren[static_cast<UInt32>(above)] == child) return found(above);
        if (below >= 0 && _mfChildren[static_cast<UInt32>(below)] == child) return found(below);
        ++above;
        --below;
    }
    return -1;
}

void Node::changed(BitVector whichField, UInt32 origin) {
    if ((origin & ChangedOrigin::Abstract) != 0) {
        if ((whichField & ChildrenFieldMask) != 0) acceptChildren(origin);
        if ((whichField & CoreFieldMask) != 0) acceptCore(origin);
    }
    if ((whichField & (ChildrenFieldMask | CoreFieldMask | TravMaskFieldMask)) != 0)
        invalidateVolume();
    Inherited::changed(whichField, origin);
}

void Node::acceptChildren(UInt32 origin) {
    if ((origin & ChangedOrigin::AbstrIncRefCount) != 0) {
        for (const NodePtr& child : _mfChildren)
            addRefCP(child);
        return;
    }
    const NodePtr self(*this);
    const bool complete =
        std::all_of(_mfChildren.begin(), _mfChildren.end(), [&self](const NodePtr& child) {
            return child != NullFC && child->getParent() == self;
        });
    if (complete) return;

    // Added again one by one, as by a program. Those that are counted already only move, and one
    // that is listed twice stays where it was listed first.
    const std::vector<NodePtr> listed(_mfChildren.begin(), _mfChildren.end());
    _mfChildren.clear();
    for (const NodePtr& child : listed) {
        if (child == NullFC) continue;
        if (child->getParent() != self) {
            addChild(child);
            continue;
        }
        const UInt32 seen = child->_indexInParent;
        if (seen < getNChildren() && _mfChildren[seen] == child) continue;
        child->_indexInParent = getNChildren();
        _mfChildren.push_back(child);
    }
}

void Node::acceptCore(UInt32 origin) {
    const NodeCorePtr core = _sfCore.getValue();
    if ((origin & ChangedOrigin::AbstrIncRefCount) != 0) {
        if (core == _countedCore) return;
        addRefCP(core);
        _countedCore = core;
        return;
    }
    setCore(core);
}

UInt32 Node::getBinSize(const BitVector& whichField) {
    UInt32 size = Inherited::getBinSize(whichField);
    if ((whichField & VolumeFieldMask) != 0) size += _sfVolume.getBinSize();
    if ((whichField & TravMaskFieldMask) != 0) size += _sfTravMask.getBinSize();
    if ((whichField & ParentFieldMask) != 0) size += _sfParent.getBinSize();
    if ((whichField & ChildrenFieldMask) != 0) size += _mfChildren.getBinSize();
    if ((whichField & CoreFieldMask) != 0) size += _sfCore.getBinSize();
    return size;
}

void Node::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyToBin(memory, whichField);
    if ((whichField & VolumeFieldMask) != 0) _sfVolume.copyToBin(memory);
    if ((whichField & TravMaskFieldMask) != 0) _sfTravMask.copyToBin(memory);
    if ((whichField & ParentFieldMask) != 0) _sfParent.copyToBin(memory);
    if ((whichField & ChildrenFieldMask) != 0) _mfChildren.copyToBin(memory);
    if ((whichField & CoreFieldMask) != 0) _sfCore.copyToBin(memory);
}

void Node::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyFromBin(memory, whichField);
    if ((whichField & VolumeFieldMask) != 0) _sfVolume.copyFromBin(memory);
    if ((whichField & TravMaskFieldMask) != 0) _sfTravMask.copyFromBin(memory);
    if ((whichField & ParentFieldMask) != 0) _sfParent.copyFromBin(memory);
    if ((whichField & ChildrenFieldMask) != 0) _mfChildren.copyFromBin(memory);
    if ((whichField & CoreFieldMask) != 0) _sfCore.copyFromBin(memory);
}

void Node::executeSync(FieldContainer& other, const BitVector& whichField) {
    executeSyncImpl(static_cast<Node*>(&other), whichField);
}

void Node::executeSyncImpl(Node* other, const BitVector& whichField) {
    Inherited::executeSyncImpl(other, whichField);
    if ((whichField & VolumeFieldMask) != 0) _sfVolume.syncWith(other->_sfVolume);
    if ((whichField & TravMaskFieldMask) != 0) _sfTravMask.syncWith(other->_sfTravMask);
    if ((whichField & ParentFieldMask) != 0) _sfParent.syncWith(other->_sfParent);
    if ((whichField & ChildrenFieldMask) != 0) _mfChildren.syncWith(other->_mfChildren);
    if ((whichField & CoreFieldMask) != 0) _sfCore.syncWith(other->_sfCore);
}

} // namespace osg
