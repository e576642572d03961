#pragma once

/// @file
/// The type of the values of a field.

#include <OpenSG/OSGFieldDataType.h>
#include <OpenSG/OSGTypeBase.h>

namespace osg {

/// The content type of fields ("Real32", "Vec3f", "NodePtr"), and the base of container types.
class DataType : public TypeBase {
  public:
    explicit DataType(const Char8* name, const Char8* parentName = nullptr)
        : TypeBase(name, parentName) {}
};

} // namespace osg
