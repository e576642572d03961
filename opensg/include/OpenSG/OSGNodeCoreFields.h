#pragma once

/// @file
/// The fields SFNodeCorePtr and MFNodeCorePtr.

#include <OpenSG/OSGFieldContainerFields.h>

namespace osg {

template <>
struct FieldDataTraits<NodeCorePtr> : public detail::PrintedPointerTraits<NodeCorePtr> {
    static DataType _type;

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFNodeCorePtr"; }
    static const Char8* getMName() { return "MFNodeCorePtr"; }
};

typedef SField<NodeCorePtr> SFNodeCorePtr;
typedef MField<NodeCorePtr> MFNodeCorePtr;

extern template class SField<NodeCorePtr, 0>;
extern template class MField<NodeCorePtr, 0>;

} // namespace osg

#include <OpenSG/OSGNodeCore.h>
