// What cores of nodes have in common.
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

namespace osg {

const BitVector NodeCore::ParentsFieldMask = TypeTraits<BitVector>::One << ParentsFieldId;

FieldDescription* NodeCore::_desc[] = {
    new FieldDescription(MFNodePtr::getClassType(), "parents", ParentsFieldId, ParentsFieldMask,
                         true, static_cast<FieldAccessMethod>(&NodeCore::fieldParents))};

FieldContainerType NodeCore::_type("NodeCore", "AttachmentContainer", nullptr, nullptr, nullptr,
                                   _desc, sizeof(_desc));
OSG_ABSTR_FIELD_CONTAINER_DEF(NodeCore, NodeCorePtr)

NodeCore::NodeCore(const NodeCore& source) : Inherited(source) {}

void NodeCore::accumulateMatrix(Matrix&) {}

void NodeCore::adjustVolume(Volume&) {}

void NodeCore::invalidateVolume() {
    for (const NodePtr& parent : _mfParents)
        if (parent != NullFC) parent->invalidateVolume();
}

// From the back: trees die from the back.
void NodeCore::subParent(const NodePtr& parent) {
    for (std::size_t i = _mfParents.size(); i-- > 0;) {
        if (_mfParents[i] != parent) continue;
        _mfParents.erase(_mfParents.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

UInt32 NodeCore::getBinSize(const BitVector& whichField) {
    UInt32 size = Inherited::getBinSize(whichField);
    if ((whichField & ParentsFieldMask) != 0) size += _mfParents.getBinSize();
    return size;
}

void NodeCore::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyToBin(memory, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.copyToBin(memory);
}

void NodeCore::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyFromBin(memory, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.copyFromBin(memory);
}

void NodeCore::dump(UInt32 indent, const BitVector) const {
    SLOG << std::string(indent, ' ') << getTypeName() << " in " << _mfParents.size() << " nodes"
         << std::endl;
}

void NodeCore::executeSync(FieldContainer& other, const BitVector& whichField) {
    executeSyncImpl(static_cast<NodeCore*>(&other), whichField);
}

void NodeCore::executeSyncImpl(NodeCore* other, const BitVector& whichField) {
    Inherited::executeSyncImpl(other, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.syncWith(other->_mfParents);
}

} // namespace osg
