#pragma once

#include <kvAnimationCurve.h>

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

namespace kv {
namespace detail {

/// The node that `field` names, if it is certain to be alive; null otherwise. A binding keeps the
/// bare pointer of a node that may have been destroyed since, and the pointer itself cannot be
/// asked. It is compared instead, with nodes found by identifier: that of `curve` and its
/// relatives, and those that carry the bound container.
osg::NodePtr boundNode(const kvAnimationUtils2::AnimationField& field,
                       const kvAnimationCurve& curve);

} // namespace detail
} // namespace kv
