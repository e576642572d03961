#pragma once

/// @file
/// What kind of light a node is.

#include "kvOpenSGUtilsApi.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

/// Classifies nodes by their core, derived types included. A null node or one without a core is no
/// light. The three kinds exclude each other: a spot light, which OpenSG derives from the point
/// light, is a spot light only. A LightEnv is no light.
class KV_OPENSG_UTILS_API kvLights {
  public:
    static bool isLight(const osg::NodePtr& node);
    static bool isSpotLight(const osg::NodePtr& node);
    static bool isPointLight(const osg::NodePtr& node);
    static bool isDirectionalLight(const osg::NodePtr& node);
};
