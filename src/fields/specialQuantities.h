#pragma once

#include "fields/fieldPlan.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>

#include <OSGCameraSetting.h>

#include <cstdint>
#include <string>

/// @file
/// The quantities of nodes and camera settings that are animated by name although no field of the
/// container holds them.

namespace kv::detail {

/// The special quantities, by the name of a binding.
enum class Special : std::uint8_t {
    None,
    RotationX,
    RotationY,
    RotationZ,
    Visible,
    FStop,
    Height,
    Distance,
    FocalLength,
    TurnTableAngle
};

/// The quantity of this name on a container of this kind; None for any other name.
Special specialOf(FieldPlan::Container kind, const std::string& name);

/// Whether the quantity belongs to nodes, or to camera settings.
bool isNodeQuantity(Special special);
bool isCameraQuantity(Special special);

float readSpecial(const osg::NodePtr& node, Special special);
float readSpecial(const osg::CameraSettingPtr& camera, Special special);
void writeSpecial(const osg::NodePtr& node, Special special, float value);
void writeSpecial(const osg::CameraSettingPtr& camera, Special special, float value);

/// Gives the host's camera the camera setting's from, at and up.
void handToHostCamera(const osg::CameraSettingPtr& camera);

} // namespace kv::detail
