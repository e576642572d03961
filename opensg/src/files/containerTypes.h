#pragma once

// What the readers and writers need to know of the container types that they meet, looked up once
// for a type and not for every container.

#include "files/fieldValues.h"

#include <OpenSG/OSGFieldContainer.h>

#include <deque>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace osg::files {

/// How a field is treated.
enum class FieldRole {
    kInternal,    ///< is not in files
    kAttachments, ///< the map of attachments
    kChildren,    ///< of a node
    kCore,        ///< of a node
    kPointer,
    kPointers,
    kValue,
    kValues
};

/// One field of a container type.
struct FieldInfo {
    std::string_view name;
    UInt32 id = 0;
    FieldRole role = FieldRole::kInternal;
    /// Of values.
    const FieldText* text = nullptr;
    /// What pointers may point at; null when nothing fits.
    const FieldContainerType* target = nullptr;
    /// Whether the containers of this type release what this field points at; all do but cameras,
    /// which never count their beacon.
    bool isReleased = true;
    /// Whether what this field points at knows the container as its parent: the properties of
    /// geometry and the chunks of materials.
    bool isParent = false;

    /// Whether it is a field of pointers, that of attachments apart.
    bool isPointer() const {
        return role == FieldRole::kChildren || role == FieldRole::kCore ||
               role == FieldRole::kPointer || role == FieldRole::kPointers;
    }
};

/// One container type.
struct TypeInfo {
    FieldContainerType* type = nullptr;
    std::string_view name;
    bool isNode = false;
    bool isCore = false;
    bool isAttachment = false;
    bool isAttachmentContainer = false;
    /// Whether containers of the type lead to others in a file.
    bool hasPointers = false;
    /// In the order of the ids.
    std::vector<FieldInfo> fields;

    /// Null when there is none of that name. `likely` is looked at first; files have the fields in
    /// order.
    const FieldInfo* find(std::string_view fieldName, std::size_t likely = 0) const;
};

/// All types of one file.
class ContainerTypes {
  public:
    /// The type of a container.
    const TypeInfo& of(const FieldContainerPtr& container);

    /// The type of that name; null when it is unknown or cannot be instantiated.
    const TypeInfo* find(std::string_view name);

    /// How many types were met.
    std::size_t size() const { return _infos.size(); }

  private:
    const TypeInfo& add(FieldContainerType& type);

    std::deque<TypeInfo> _infos;
    std::unordered_map<const FieldContainerType*, const TypeInfo*> _byType;
    std::unordered_map<std::string_view, const TypeInfo*> _byName;
    const TypeInfo* _last = nullptr;
};

/// The value of a single pointer field, null for index 0 of an empty list and beyond its end.
FieldContainerPtr pointerAt(const Field& field, const FieldInfo& info, UInt32 index);

/// Puts a pointer into a field without counting it: replaces a single one, appends to a list.
void putPointer(Field& field, const FieldInfo& info, const FieldContainerPtr& target);

/// Empties a pointer field without releasing what it points at.
void dropPointers(Field& field, const FieldInfo& info);

} // namespace osg::files
