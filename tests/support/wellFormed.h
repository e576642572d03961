#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <functional>
#include <string>

namespace kvtest {

/// What is wrong with a scene; empty when nothing is. Sound means: every node below the root is
/// there once and knows its parent, and its core, if it has one, knows it (binary files may leave a
/// node without); attachments know what they hang on; and whatever a field points at is alive.
std::string faultOf(const osg::NodePtr& root);

/// Calls `visit(target)` for everything that the fields of a container point at: attachments, core,
/// children and all others; not the way back to its parents.
void forEachPointer(const osg::FieldContainerPtr& container,
                    const std::function<void(const osg::FieldContainerPtr&)>& visit);

} // namespace kvtest
