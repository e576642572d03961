#pragma once

/// @file
/// What value types, field types and container types have in common: a name and a number.

#include <OpenSG/OSGIDString.h>

namespace osg {

/// A named type. All kinds of types share one name space: of two types with one name the second is
/// reported and cannot be found by name.
///
/// Types are objects with static storage. They may be made in any order, from any library, before
/// or after osgInit, and are never copied.
class TypeBase {
  public:
    TypeBase(const TypeBase&) = delete;
    TypeBase& operator=(const TypeBase&) = delete;
    virtual ~TypeBase();

    /// Given in the order of construction, so different from program to program. Never 0.
    UInt32 getId() const { return _id; }
    const IDString& getName() const { return _name; }
    const Char8* getCName() const { return _name.str(); }

    /// The name of the type that this one continues; empty when there is none.
    const IDString& getParentName() const { return _parentName; }
    const Char8* getCParentName() const { return _parentName.str(); }

    bool operator==(const TypeBase& other) const { return _id == other._id; }
    bool operator!=(const TypeBase& other) const { return _id != other._id; }

  protected:
    /// A null parent name says that there is none.
    TypeBase(const Char8* name, const Char8* parentName);

  private:
    UInt32 _id;
    IDString _name;
    IDString _parentName;
};

} // namespace osg
