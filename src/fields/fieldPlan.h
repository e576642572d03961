#pragma once

#include "fields/fieldNumbers.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGFieldContainerType.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <typeinfo>
#include <vector>

/// @file
/// What a field name means for a type of container, found out once and remembered.

namespace kv::detail {

/// One field of a container type.
struct FieldTarget {
    osg::UInt32 index; ///< for getField
    osg::BitVector mask;
    const NumberAccess* access; ///< null for a field that only has text
    std::size_t fixedCount;     ///< how many numbers a field of one value has; 0 for lists
    bool single;
    bool isVec3f; ///< one value of three floats, as most of what is animated
};

/// Everything that writing and reading need to know about one field name on one type of container.
struct FieldPlan {
    enum class Container { Other, Node, CameraSetting };
    enum class Name { Other, FieldOfView, From, At, Up };

    /// Whether the plan is one for this type as it is now.
    bool isFor(const osg::FieldContainerType& other) const {
        return type == &other && descriptionCount == other.getNumFieldDescs();
    }

    /// The same of the type of an object: one class of objects has one type, and which class it is
    /// takes no virtual call to ask.
    bool isFor(const osg::FieldContainer& object) const {
        return &typeid(object) == objectClass && descriptionCount == type->getNumFieldDescs();
    }

    const osg::FieldContainerType* type = nullptr;
    const std::type_info* objectClass = nullptr;
    osg::UInt32 descriptionCount = 0; ///< of the type when the plan was made; types can grow
    std::string fieldName;
    std::vector<FieldTarget> targets; ///< every field of that name
    Container container = Container::Other;
    Name name = Name::Other;
    /// How many numbers there are when the plan is plain, as nearly every one is: one field of one
    /// value made of numbers, which are stored as they come and concern no camera. Else 0.
    std::size_t plainCount = 0;
};

/// The container with this id; null for 0, for ids never given out and for destroyed containers.
inline osg::FieldContainerPtr containerById(std::uint32_t id) {
    if (id == 0) return osg::NullFC;
    return osg::FieldContainerFactory::the()->getContainer(id);
}

/// The plan for a field name on the type of \p container, which must not be null. Remembered plans
/// live as long as the process; past some thousands of them new ones are made in \p spare instead,
/// so that made-up names cannot fill the memory.
const FieldPlan& planFor(const osg::FieldContainerPtr& container, const std::string& fieldName,
                         FieldPlan& spare);

} // namespace kv::detail
