// Scenes with numbers that no text can hold.
#include "tools/binaryScene.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <OSGAnimationAttachment.h>

#include <sstream>
#include <stdexcept>

namespace kv::test {
namespace {

struct Replacement {
    float placeholder;
    float number;

    void in(float& value) const {
        if (value == placeholder) value = number;
    }
    void in(osg::Vec2f& point) const {
        in(point[0]);
        in(point[1]);
    }
};

void replaceIn(osg::MFAnimationBlockPtr& blocks, const Replacement& replacement) {
    for (osg::UInt32 b = 0; b < blocks.getSize(); ++b) {
        const osg::AnimationBlockPtr block = blocks[b];
        replacement.in(block->getSFStart()->getValue());
        replacement.in(block->getSFEnd()->getValue());
        for (osg::UInt32 c = 0; c < block->getCurves().getSize(); ++c) {
            const osg::AnimationCurvePtr curve = block->getCurves(c);
            for (osg::UInt32 k = 0; k < curve->getControlPoints().getSize(); ++k) {
                const osg::AnimationControlPointPtr key = curve->getControlPoints(k);
                replacement.in(key->getSFControlPoint()->getValue());
                replacement.in(key->getSFInTangent()->getValue());
                replacement.in(key->getSFOutTangent()->getValue());
            }
        }
    }
}

} // namespace

std::string binaryScene(const std::string& text, float placeholder, float number) {
    const Replacement replacement{placeholder, number};
    std::istringstream in(text);
    osg::NodePtr root = osg::SceneFileHandler::the().read(in, "osg", NULL);
    if (root == osg::NullFC || root->getNChildren() != 1)
        throw std::runtime_error("the test's own scene cannot be read");
    osg::addRefCP(root);
    const osg::NodePtr node = root->getChild(0);
    const osg::AnimationAttachmentPtr stored = osg::AnimationAttachmentPtr::dcast(
        node->findAttachment(osg::AnimationAttachment::getClassType()));
    replaceIn(stored->getBlocks(), replacement);
    for (osg::UInt32 c = 0; c < stored->getClips().getSize(); ++c) {
        const osg::AnimationClipPtr clip = stored->getClips(c);
        for (osg::UInt32 t = 0; t < clip->getTracks().getSize(); ++t) {
            replaceIn(clip->getTracks(t)->getBlocks(), replacement);
            replaceIn(clip->getTracks(t)->getSequences(), replacement);
        }
    }
    std::ostringstream out;
    osg::SceneFileHandler::the().write(node, out, "osb");
    stored->clear(); // curves and blocks hold their node
    osg::subRefCP(root);
    return out.str();
}

} // namespace kv::test
