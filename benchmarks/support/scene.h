#pragma once

// What moves in the benchmarks: transforms with curves bound to their fields, and the clock.

#include "support/curves.h"

#include <kvAnimationCurve.h>
#include <kvAnimationUtils2.h>
#include <OSGTransform3D.h>

#include <OpenSG/OSGNode.h>

#include <array>
#include <cstddef>

namespace kv::bench {

/// The simulation time that clock() tells, in seconds. Set by the benchmarks.
inline double now = 0.0;

/// For kvAnimationManager2::setSimulationTimeCB.
inline double clock() {
    return now;
}

constexpr std::array<const char*, 9> kAttributes = {"translateX", "translateY", "translateZ",
                                                    "rotateX",    "rotateY",    "rotateZ",
                                                    "scaleX",     "scaleY",     "scaleZ"};

inline osg::NodePtr makeTransform() {
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(osg::Transform3D::create());
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    return node;
}

/// A curve bound to the number of the node's transform that the attribute names.
inline kvAnimationCurve* makeCurve(const osg::NodePtr& node, const char* attribute,
                                   std::size_t keys, float start = 0.0F) {
    auto* const curve = new kvAnimationCurve(attribute);
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(curve);
    fillCurve(*curve, keys, start);
    return curve;
}

/// Makes bound curves, nine for a transform, all transforms under one root.
class CurveMaker {
  public:
    explicit CurveMaker(const osg::NodePtr& root) : _root(root) {}

    kvAnimationCurve* make(std::size_t keys) {
        if (_made % kAttributes.size() == 0) {
            _node = makeTransform();
            _root->addChild(_node);
        }
        return makeCurve(_node, kAttributes[_made++ % kAttributes.size()], keys);
    }

  private:
    osg::NodePtr _root;
    osg::NodePtr _node;
    std::size_t _made = 0;
};

} // namespace kv::bench
