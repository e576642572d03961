#pragma once

/// @file
/// All container types, and all containers by number.

#include <OpenSG/OSGFieldContainerType.h>

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace osg {

/// Gives containers other numbers while a file is read.
class FieldContainerMapper {
  public:
    virtual ~FieldContainerMapper() = default;
    /// The number that a container has in this program, 0 when there is none.
    virtual UInt32 map(UInt32 id) const = 0;
};

/// Knows all container types and every living container.
///
/// Nothing here locks: containers are made and destroyed by one thread at a time.
class FieldContainerFactory {
  public:
    typedef std::map<UInt32, FieldContainerType*> TypeIdMap;
    typedef TypeIdMap::iterator TypeMapIterator;
    typedef TypeIdMap::const_iterator TypeMapConstIterator;

    static FieldContainerFactory* the() {
        // Types announce themselves while the program starts, so that it is there before any
        // thread.
        if (_the == nullptr) _the = make();
        return _the;
    }

    /// The container with this number. Null for 0, for numbers never given and for containers that
    /// are gone. Numbers start at 1 and are never given again.
    FieldContainerPtr getContainer(UInt32 id) const {
        return FieldContainerPtr(id < _containers.size() ? _containers[id] : nullptr);
    }

    /// The same for a number out of the file that is being read, see setMapper.
    FieldContainerPtr getMappedContainer(UInt32 id) const {
        return getContainer(_mapper == nullptr ? id : _mapper->map(id));
    }
    /// Not owned; null for none.
    void setMapper(const FieldContainerMapper* mapper) { _mapper = mapper; }

    /// Null when unknown. Names are case-sensitive.
    FieldContainerType* findType(UInt32 typeId) const;
    FieldContainerType* findType(const Char8* typeName) const;

    /// The container type that fields of a pointer type point at: that of Group for the content
    /// type "GroupPtr". Null when the content is not pointers or the type is unknown. Readers of
    /// files ask before they put a container into a field.
    FieldContainerType* findPointedType(const DataType& contentType) const;

    /// 0 and null when unknown.
    UInt16 findGroupId(const Char8* groupName) const;
    const Char8* findGroupName(UInt16 groupId) const;

    /// New containers with reference count 0; null for unknown and abstract types.
    FieldContainerPtr createFieldContainer(const Char8* typeName) const;
    NodePtr createNode(const Char8* typeName) const;
    NodeCorePtr createNodeCore(const Char8* typeName) const;
    AttachmentPtr createAttachment(const Char8* typeName) const;

    /// Makes the types usable that were announced since osgInit, as those of a library that was
    /// loaded later. True unless called before osgInit or after osgExit.
    bool initializePendingTypes();

    /// The usable types by number.
    UInt32 getNumTypes() const { return static_cast<UInt32>(_typesById.size()); }
    TypeMapIterator beginTypes() { return _typesById.begin(); }
    TypeMapIterator endTypes() { return _typesById.end(); }
    TypeMapConstIterator beginTypes() const { return _typesById.begin(); }
    TypeMapConstIterator endTypes() const { return _typesById.end(); }

  private:
    friend class FieldContainer;
    friend class FieldContainerType;
    friend bool osgInit(Int32, Char8**, UInt16, UInt16, UInt16);
    friend bool osgExit();

    FieldContainerFactory() = default;

    static FieldContainerFactory* make();

    static FieldContainerFactory* _the;

    UInt32 addContainer(FieldContainer& container);
    void removeContainer(UInt32 id);

    void addType(FieldContainerType& type);
    void removeType(FieldContainerType& type);
    UInt16 groupIdFor(const Char8* groupName);
    void initializePending();
    void initializeWithParents(FieldContainerType& type);
    void terminate();

    /// By number; null where the container is gone. Number 0 is no container.
    std::vector<FieldContainer*> _containers = {nullptr};
    bool _accepting = true;

    TypeIdMap _typesById;
    std::unordered_map<std::string, FieldContainerType*> _typesByName;
    /// Announced, not yet usable. In the order of names, so that the numbers of the prototypes do
    /// not depend on the order in which a linker puts static objects.
    std::map<std::string, FieldContainerType*> _pending;

    std::unordered_map<std::string, UInt16> _groupIds;
    std::vector<std::string> _groupNames = {std::string()};
    const FieldContainerMapper* _mapper = nullptr;
};

} // namespace osg
