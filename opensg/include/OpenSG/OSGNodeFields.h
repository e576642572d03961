#pragma once

/// @file
/// The fields SFNodePtr and MFNodePtr.

#include <OpenSG/OSGFieldContainerFields.h>

namespace osg {

template <>
struct FieldDataTraits<NodePtr> : public detail::PrintedPointerTraits<NodePtr> {
    static DataType _type;

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFNodePtr"; }
    static const Char8* getMName() { return "MFNodePtr"; }
};

typedef SField<NodePtr> SFNodePtr;
typedef MField<NodePtr> MFNodePtr;

extern template class SField<NodePtr, 0>;
extern template class MField<NodePtr, 0>;

} // namespace osg

#include <OpenSG/OSGNode.h>
