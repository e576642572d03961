// Objects that the manager makes and registers itself. They are allocated with new and belong to
// whoever takes them out of the registry.

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvLights.h>

#include <string>

namespace {

// The animated types: what a block animates.
constexpr unsigned char kAnimatesOther = 1;
constexpr unsigned char kAnimatesSpotLight = 2;
constexpr unsigned char kAnimatesPointLight = 3;
constexpr unsigned char kAnimatesDirectionalLight = 4;
constexpr unsigned char kAnimatesCamera = 5;

unsigned char animatedTypeOf(const osg::NodePtr& node) {
    if (node == osg::NullFC) return kAnimatesOther;
    if (kvLights::isSpotLight(node)) return kAnimatesSpotLight;
    if (kvLights::isPointLight(node)) return kAnimatesPointLight;
    if (kvLights::isDirectionalLight(node)) return kAnimatesDirectionalLight;
    return kAnimatesOther;
}

} // namespace

void kvAnimationManager2::createAnimation(std::string name) {
    addCurve(new kvAnimationCurve(name));
}

kvAnimationBlock* kvAnimationManager2::createBlockOfNode(const osg::NodePtr& node,
                                                         const std::string& name,
                                                         bool cameraBlock) {
    auto* block = new kvAnimationBlock(node, name);
    addAnimationBlock(block);
    block->setAnimatedType(cameraBlock ? kAnimatesCamera : animatedTypeOf(node));
    block->setCameraBlock(cameraBlock);

    const osg::NodePtr animated = getAnimationNode(node);
    for (kvAnimationCurve* curve : _animCurves) {
        if (!curve) continue;
        const osg::NodePtr curveNode = curve->getAppropriateNode();
        if (curveNode != osg::NullFC && getAnimationNode(curveNode) == animated)
            block->addCurve(curve);
    }
    return block;
}

kvAnimationBlock* kvAnimationManager2::createBlock(const osg::NodePtr& node, bool cameraBlock) {
    if (_animCurves.empty()) return nullptr;
    return createBlockOfNode(node, "AnimBlock" + std::to_string(_blocks.size() + 1), cameraBlock);
}

kvAnimationBlock* kvAnimationManager2::createBlock(const osg::NodePtr& node, std::string name,
                                                   bool cameraBlock) {
    if (_animCurves.empty()) return nullptr;
    return createBlockOfNode(node, name + "_Block_" + std::to_string(_blocks.size() + 1),
                             cameraBlock);
}

kvAnimationBlock* kvAnimationManager2::createBlock(const osg::NodePtr& node,
                                                   const std::string& name,
                                                   const std::vector<kvAnimationCurve*>& curves) {
    auto* block = new kvAnimationBlock(node, name);
    addAnimationBlock(block);
    block->setAnimatedType(animatedTypeOf(node));
    block->setCameraBlock(false);
    for (kvAnimationCurve* curve : curves) {
        if (curve) block->addCurve(curve);
    }
    return block;
}

kvAnimationBlock* kvAnimationManager2::createBlockCopy(kvAnimationBlock* block) {
    if (!block) return nullptr;
    auto* copy = new kvAnimationBlock(*block);
    addAnimationBlock(copy);
    _animationBlocks.push_back(copy);
    return copy;
}

kvAnimationClip* kvAnimationManager2::newClip(std::string name) {
    if (name.empty()) name = "Clip" + std::to_string(_clips.size() + 1);
    auto* clip = new kvAnimationClip(name);
    addClip(clip);
    return clip;
}
