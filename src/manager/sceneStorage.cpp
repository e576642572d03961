// Handing the registry to storage and back: which object goes to which node of the scene. How it is
// stored there is the business of the attachment operations.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

using Storage = kvAnimationAttachmentInteraction;

namespace {

void storeCurve(const osg::NodePtr& node, kvAnimationCurve* curve, bool resolve) {
    Storage::createNewAnimationAttachment(node, resolve);
    Storage::addToAnimationAttachment(node, curve, resolve);
}

void storeBlock(const osg::NodePtr& node, kvAnimationBlock* block, bool resolve) {
    Storage::createNewAnimationAttachment(node, resolve);
    Storage::addBlockToAnimAttachment(node, block, resolve);
}

void storeBlocksOnTheirNodes(const std::vector<kvAnimationBlock*>& blocks) {
    for (kvAnimationBlock* block : blocks) {
        if (block)
            storeBlock(kvAnimationManager2::getAnimationNode(block->getAppropriateNode()), block,
                       false);
    }
}

} // namespace

// --- reading ----------------------------------------------------------------------------------

void kvAnimationManager2::importCurves(const osg::NodePtr& node, bool resolve) {
    Storage::loadCurvesFromAnimAttachment(getAnimationNode(node), this, resolve);
}

void kvAnimationManager2::importBlocks(const osg::NodePtr& node, bool resolve) {
    Storage::loadBlocksFromAnimAttachment(getAnimationNode(node), this, resolve);
}

void kvAnimationManager2::importClips(const osg::NodePtr& node, osg::NodePtr root, bool resolve) {
    Storage::loadClipsFromAnimAttachment(node, this, root, resolve);
}

void kvAnimationManager2::importCameraAnimations(osg::NodePtr from, osg::NodePtr to) {
    // Transferring a node's records to the node itself would add them to the list being read.
    if (from == osg::NullFC || to == osg::NullFC || from == to) return;
    Storage::transferCurves(from, to);
    Storage::transferBlocks(from, to);
}

// --- writing ----------------------------------------------------------------------------------

void kvAnimationManager2::exportCurves() {
    for (kvAnimationCurve* curve : _animCurves) {
        if (!curve) continue;
        const osg::NodePtr node = curve->getAppropriateNode();
        if (node != osg::NullFC) storeCurve(getAnimationNode(node), curve, false);
    }
}

void kvAnimationManager2::exportCurves(osg::NodePtr node, bool resolve) {
    const osg::NodePtr target = getAnimationNode(node);
    if (target == osg::NullFC) return;
    for (kvAnimationCurve* curve : _animCurves) {
        if (curve && getAnimationNode(curve->getAppropriateNode()) == target)
            storeCurve(target, curve, resolve);
    }
}

void kvAnimationManager2::exportBlocks() {
    storeBlocksOnTheirNodes(_blocks);
}

void kvAnimationManager2::exportBlocks(osg::NodePtr node, bool resolve) {
    const osg::NodePtr target = getAnimationNode(node);
    if (target == osg::NullFC) return;
    for (kvAnimationBlock* block : _blocks) {
        if (block && getAnimationNode(block->getAppropriateNode()) == target)
            storeBlock(target, block, resolve);
    }
}

void kvAnimationManager2::exportAnimationBlocks() {
    storeBlocksOnTheirNodes(_animationBlocks);
}

void kvAnimationManager2::exportClips(osg::NodePtr root, bool resolve) {
    Storage::createNewAnimationAttachment(root, resolve);
    // Erasing never resolves. With `resolve` the clips that the transform node already has
    // therefore stay; callers that save repeatedly pass false.
    Storage::eraseExistingAttachmentClips(root);
    for (kvAnimationClip* clip : _clips) {
        if (clip) Storage::addClipToAnimAttachment(root, clip, resolve);
    }
}

void kvAnimationManager2::exportAnimations(osg::NodePtr root) {
    Storage::createNewAnimationAttachment(root, false);
    for (kvAnimationCurve* curve : _animCurves) {
        if (curve) Storage::addToAnimationAttachment(root, curve, false);
    }
    for (kvAnimationBlock* block : _blocks) {
        if (block) Storage::addBlockToAnimAttachment(root, block, false);
    }
}
