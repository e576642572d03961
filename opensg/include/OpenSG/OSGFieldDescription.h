#pragma once

/// @file
/// What a container type says about one of its fields.

#include <OpenSG/OSGField.h>

#include <cstddef>

namespace osg {

class FieldContainer;

/// A member function of a container that gives one of its fields.
typedef Field* (FieldContainer::*FieldAccessMethod)();

/// Name, number and type of a field. Container types own their descriptions.
class FieldDescription {
  public:
    /// The field type is remembered, not looked at, so that it may be constructed later.
    ///
    /// @param mask      `1 << fieldId`, the bit of the field in edit masks.
    /// @param internal  the field is bookkeeping: never written to files.
    /// @param defaultValue  text for people, may be null; the prototype decides.
    /// @param isMember  the access function does nothing but name a member of the container, so
    /// that
    ///                  it need not be called where the member's place is known.
    FieldDescription(const TypeBase& fieldType, const Char8* name, UInt32 fieldId, BitVector mask,
                     bool internal, FieldAccessMethod access, const Char8* defaultValue = nullptr,
                     bool isMember = false);

    const Char8* getCName() const { return _name.str(); }
    const IDString& getName() const { return _name; }

    /// The number of the field type, not of the content type.
    UInt32 getTypeId() const { return _fieldType->getId(); }
    const TypeBase& getFieldType() const { return *_fieldType; }

    BitVector getFieldMask() const { return _mask; }
    UInt32 getFieldId() const { return _fieldId; }
    bool isInternal() const { return _internal; }
    /// Null when none was given.
    const Char8* getDefaultValue() const { return _hasDefault ? _defaultValue.c_str() : nullptr; }

  protected:
    friend class FieldContainer;
    friend class FieldContainerType;

    /// Null when the description has no access function.
    Field* getField(FieldContainer& container) const;

  private:
    /// Finds the place of a member in a container of the type.
    void findPlace(FieldContainer& container);

    IDString _name;
    const TypeBase* _fieldType;
    BitVector _mask;
    FieldAccessMethod _access;
    std::ptrdiff_t _place = 0; ///< of a member in its container, in bytes; 0 while it is not known
    UInt32 _fieldId;
    bool _internal;
    bool _isMember;
    bool _hasDefault;
    std::string _defaultValue;
};

} // namespace osg
