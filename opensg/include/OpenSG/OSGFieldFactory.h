#pragma once

/// @file
/// Field types by name and by number.

#include <OpenSG/OSGFieldType.h>

#include <string>
#include <unordered_map>

namespace osg {

/// All field types of the program. Types enter and leave by themselves.
class FieldFactory {
  public:
    static FieldFactory& the();

    /// Null when unknown. The name is that of the field type ("SFVec3f"), case-sensitive.
    FieldType* getFieldType(UInt32 typeId) const;
    FieldType* getFieldType(const Char8* typeName) const;

    /// Null when unknown.
    const Char8* getFieldTypeName(UInt32 typeId) const;

    /// A new field owned by the caller, null when the type is unknown.
    Field* createField(UInt32 typeId) const;
    Field* createField(const Char8* typeName) const;

    UInt32 getNFieldTypes() const { return static_cast<UInt32>(_byId.size()); }

  private:
    friend class FieldType;

    FieldFactory() = default;
    void add(FieldType& type);
    void remove(FieldType& type);

    std::unordered_map<UInt32, FieldType*> _byId;
    std::unordered_map<std::string, FieldType*> _byName;
};

} // namespace osg
