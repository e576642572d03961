#pragma once

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerPtr.h>

#include <string>

/// @file
/// The parameters of the host's uber materials. Everything that the library needs to know of that
/// material stands behind this one question, so that the library can be built without it.

namespace kv::detail {

/// What a field name is to a container.
enum class UberParameter {
    NoUberMaterial, ///< the container is none, or the library was built without that material
    NoParameter,    ///< an uber material without a parameter of that name
    Number,         ///< a parameter
    Color           ///< a parameter that is a colour
};

/// Null is no uber material.
UberParameter uberParameter(const osg::FieldContainerPtr& container, const std::string& fieldName);

} // namespace kv::detail
