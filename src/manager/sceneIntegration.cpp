// What the manager knows about nodes: which node an animation of a node moves, what kind of node it
// is, which light a light geometry stands for, which node was selected last, and the blocks that
// are stored on the scene. Nodes that may be destroyed are kept by id only.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationCurve.h>

#include "keys/constants.h"
#include "keys/sceneNodes.h"

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGTransform.h>

#include <OSGAnimationAttachment.h>
#include <OSGTransform3D.h>

#include <cstring>
#include <iostream>

namespace {

bool hasCore(const osg::NodePtr& node) {
    return node != osg::NullFC && node->getCore() != osg::NullFC;
}

template <class Core>
bool coreIs(const osg::NodePtr& node) {
    return hasCore(node) && node->getCore()->getType().isDerivedFrom(Core::getClassType());
}

/// Component transforms are transforms, too.
bool isTransformNode(const osg::NodePtr& node) {
    return coreIs<osg::Transform>(node);
}

} // namespace

// --- the node behind a node -------------------------------------------------------------------

osg::NodePtr kvAnimationManager2::getAnimationNode(const osg::NodePtr& node) {
    if (!hasCore(node)) return osg::NullFC;
    if (coreIs<osg::Geometry>(node)) {
        const osg::NodePtr parent = node->getParent();
        if (coreIs<osg::Transform3D>(parent)) return parent;
    }
    return node;
}

osg::NodePtr kvAnimationManager2::resolveTransformNode(const osg::NodePtr& node) {
    if (node == osg::NullFC) return osg::NullFC;
    if (isTransformNode(node)) return node;
    const osg::NodePtr parent = node->getParent();
    if (isTransformNode(parent)) return parent;
    return osg::NullFC;
}

// --- kinds of nodes ---------------------------------------------------------------------------

kvAnimationManager2::NodeType kvAnimationManager2::getNodeType(const osg::NodePtr& node) {
    struct Row {
        const char* coreType;
        NodeType type;
    };
    static constexpr Row kRows[] = {
        {"Group", Group},
        {"Geometry", Geometry},
        {"Transform", Transform},
        {"ComponentTransform", Transform},
        {"SpotLight", Light},
        {"PointLight", Light},
        {"DirectionalLight", Light},
        {"LightEnv", Light},
    };
    if (!hasCore(node)) return Other;
    const char* coreType = node->getCore()->getType().getCName();
    for (const Row& row : kRows) {
        if (std::strcmp(row.coreType, coreType) == 0) return row.type;
    }
    return Other;
}

std::vector<const char*> kvAnimationManager2::getKeyableAttributes(const osg::NodePtr& node) {
    switch (getNodeType(node)) {
    case Light:
        return {"translateX", "translateY", "translateZ", "rotateX", "rotateY", "rotateZ"};
    case Geometry:
        return {"translateX", "translateY", "translateZ", "scaleX", "scaleY",
                "scaleZ",     "rotateX",    "rotateY",    "rotateZ"};
    case Group:
    case Transform:
    case Other:
        break;
    }
    return {};
}

// --- the actual node --------------------------------------------------------------------------

void kvAnimationManager2::setActualNode(const osg::NodePtr& node) {
    _actualNode = kv::detail::idOf(node);
}

osg::NodePtr kvAnimationManager2::getActualNode() {
    if (_actualNode == 0) return osg::NullFC;
    const osg::NodePtr node = kv::detail::nodeById(_actualNode);
    if (node == osg::NullFC)
        std::cerr << "!!! kvAnimationManager2::getActualNode: detected invalid last selected "
                     "node!\n";
    return node;
}

// --- scene blocks -----------------------------------------------------------------------------

void kvAnimationManager2::buildAnimationBlockList(const osg::NodePtr& root) {
    if (root == osg::NullFC) return;
    osg::traverse(root, osg::osgTypedFunctionFunctor1CPtrRef<osg::Action::ResultE, osg::NodePtr>(
                            [](osg::NodePtr& node) -> osg::Action::ResultE {
                                return getAnimationBlocks(node);
                            }));
}

osg::Action::ResultE kvAnimationManager2::getAnimationBlocks(const osg::NodePtr& node) {
    if (!hasCore(node)) return osg::Action::Continue;
    const auto attachment = kvAnimationAttachmentInteraction::getAnimationAttachment(node, false);
    if (attachment == osg::NullFC) return osg::Action::Continue;
    const std::vector<kvAnimationBlock*> blocks =
        kvAnimationAttachmentInteraction::getBlocksFromAttachment(attachment);
    _animationBlocks.insert(_animationBlocks.end(), blocks.begin(), blocks.end());
    return osg::Action::Continue;
}

std::vector<kvAnimationBlock*> kvAnimationManager2::getNodeBlocks(const osg::NodePtr& node) {
    std::vector<kvAnimationBlock*> blocks;
    for (kvAnimationBlock* block : _animationBlocks) {
        if (block && block->getAppropriateNode() == node) blocks.push_back(block);
    }
    return blocks;
}

void kvAnimationManager2::collectBlocks(const osg::NodePtr& node) {
    const std::vector<kvAnimationBlock*> blocks = getNodeBlocks(getAnimationNode(node));
    _blocks.insert(_blocks.end(), blocks.begin(), blocks.end());
}

void kvAnimationManager2::collectBlocks(const osg::CameraPtr& camera) {
    if (camera == osg::NullFC) return;
    const osg::NodePtr beacon = camera->getBeacon();
    if (beacon != osg::NullFC) collectBlocks(beacon);
}

void kvAnimationManager2::setActiveNodeBlock(const osg::NodePtr& node, kvAnimationBlock* block) {
    for (kvAnimationBlock* candidate : getNodeBlocks(node))
        candidate->setActive(candidate == block);
}

// --- curves from the current state ------------------------------------------------------------

void kvAnimationManager2::convertCurveValueToCP(kvAnimationCurve* curve) {
    if (!curve) return;
    const double frame = _actualFrame;
    if (!(curve->getStartFrame() <= frame && frame <= curve->getEndFrame())) return;
    const float value = computeCurveValue(curve, _actualFrame);
    if (value == kv::detail::kNoCurveValue) return;
    curve->insertCP(frame, value);
}

void kvAnimationManager2::convertQuatToEuler(const osg::NodePtr& /*node*/, float& /*x*/,
                                             float& /*y*/, float& /*z*/) {}
