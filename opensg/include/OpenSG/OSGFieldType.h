#pragma once

/// @file
/// The type of a field: what it holds, and whether one or many of it.

#include <OpenSG/OSGDataType.h>

namespace osg {

class Field;

/// The type of all `SField` or all `MField` of one value type ("SFVec3f", "MFNodePtr").
class FieldType : public DataType {
  public:
    enum Cardinality { SINGLE_FIELD = 0, MULTI_FIELD = 1 };

    /// Makes a field of the type on the heap; the caller owns it.
    typedef Field* (*CreateFieldMethod)();

    /// The content type is remembered, not looked at, so that it may be constructed later.
    FieldType(const Char8* name, const Char8* parentName, const DataType& contentType,
              CreateFieldMethod create, Cardinality cardinality);

    /// A field type that scene files in text form hold as if it were `scanAs`.
    FieldType(const Char8* name, const Char8* parentName, const DataType& contentType,
              CreateFieldMethod create, Cardinality cardinality, const FieldType& scanAs);

    ~FieldType() override;

    const DataType& getContentType() const { return *_contentType; }
    Cardinality getCardinality() const { return _cardinality; }

    /// The field type whose text form stands for this one in scene files; usually this very type.
    const FieldType& getScanType() const { return *_scanAs; }
    UInt32 getScanTypeId() const { return _scanAs->getId(); }

    /// A new field, owned by the caller.
    Field* createField() const { return _create(); }

  private:
    const DataType* _contentType;
    CreateFieldMethod _create;
    Cardinality _cardinality;
    const FieldType* _scanAs;
};

} // namespace osg
