#pragma once

/// @file
/// The types of containers: names, parents, groups, field descriptions and prototypes.

#include <OpenSG/OSGDataType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGPointerClasses.h>

#include <vector>

namespace osg {

class FieldContainerFactory;

/// Makes the object that `create()` copies.
typedef FieldContainerPtr (*PrototypeCreateF)();
/// Called when a type is constructed, that is during static initialisation.
typedef void (*InitContainerF)();

/// The type of a container class; one static object for each class.
///
/// Construction only announces the type. Its parent is looked up by name, inherited fields are
/// merged in and the prototype is made by osgInit, or for types that come later by
/// FieldContainerFactory::initializePendingTypes(). Until then it has no parent and no fields, and
/// nothing can be created from it. After osgExit nothing can be created either.
class FieldContainerType : public DataType {
  public:
    /// @param parentName      the type's name of the parent class; null for FieldContainer itself.
    /// @param groupName       null for a group of the type's own.
    /// @param createPrototype null for an abstract type.
    /// @param init            may be null.
    /// @param descs           the fields that the class adds; owned by this object from now on.
    ///                        Null when it adds none.
    /// @param descByteCount   `sizeof` the array.
    /// @param descsAddable    whether fields may be added later; of no consequence here.
    FieldContainerType(const Char8* name, const Char8* parentName, const Char8* groupName,
                       PrototypeCreateF createPrototype, InitContainerF init,
                       FieldDescription** descs, UInt32 descByteCount, bool descsAddable = false);
    ~FieldContainerType() override;

    UInt16 getGroupId() const { return _groupId; }
    /// Null for FieldContainer and before osgInit.
    FieldContainerType* getParent() const { return _parent; }

    /// Whether the type is the other one or continues it, at any distance.
    bool isDerivedFrom(const TypeBase& other) const;
    bool isNode() const { return _kind == Kind::node; }
    bool isNodeCore() const { return _kind == Kind::core; }
    bool isAttachment() const { return _kind == Kind::attachment; }
    /// Whether there is no prototype, so nothing to create containers from.
    bool isAbstract() const { return _prototype == NullFC; }

    /// Inherited fields included.
    UInt32 getNumFieldDescs() const { return static_cast<UInt32>(_allDescs.size()); }

    /// The descriptions in the order of field ids, counted from 1; null outside of 1 to
    /// getNumFieldDescs().
    FieldDescription* getFieldDescription(UInt32 index) {
        return index - 1 < _allDescs.size() ? _allDescs[index - 1] : nullptr;
    }
    const FieldDescription* getFieldDescription(UInt32 index) const {
        return index - 1 < _allDescs.size() ? _allDescs[index - 1] : nullptr;
    }

    /// Case-sensitive; null when there is no field of the name.
    FieldDescription* findFieldDescription(const Char8* fieldName);
    const FieldDescription* findFieldDescription(const Char8* fieldName) const;

    /// New containers with reference count 0. Null for abstract types; the last three also for
    /// types of another kind.
    FieldContainerPtr createFieldContainer() const;
    NodePtr createNode() const;
    NodeCorePtr createNodeCore() const;
    AttachmentPtr createAttachment() const;

    /// Null for abstract types and before osgInit.
    FieldContainerPtr getPrototype() const { return _prototype; }

  private:
    friend class FieldContainerFactory;

    enum class Kind { other, node, core, attachment };

    /// Finds the parent, merges its fields and makes the prototype. The parent is ready already.
    void initialize(FieldContainerType* parent);
    /// Releases the prototype.
    void terminate();
    Kind kindByDescent() const;

    UInt16 _groupId;
    Kind _kind = Kind::other;
    bool _initialized = false;
    FieldContainerType* _parent = nullptr;
    PrototypeCreateF _createPrototype;
    FieldContainerPtr _prototype;
    std::vector<FieldDescription*> _ownDescs;
    std::vector<FieldDescription*> _allDescs;
};

} // namespace osg

#include <OpenSG/OSGFieldContainer.h>
