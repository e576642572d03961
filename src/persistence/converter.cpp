// Migration: records of an animation attachment become the host's animation nodes, channel by
// channel.

#include <kvAnimationConverter.h>

#include "persistence/attachment.h"

#include <kvAnimManager.h>
#include <kvNodeUtils.h>
#include <kvOSGChannelData.h>
#include <OSGAnimAttachment.h>
#include <OSGAnimBlock.h>
#include <OSGAnimClip.h>
#include <OSGAnimCurve.h>
#include <OSGAnimNode.h>

#include <OpenSG/OSGVector.h>

#include <cstddef>
#include <string>
#include <vector>

using osg::NullFC;
using osg::UInt32;

namespace {

using Channels = std::vector<kvOSGChannelData>;

// Keeps a node alive while records that may hold its last reference are removed. A node without any
// reference is left alone: no record counts one, and taking and giving back one would destroy it.
class NodeHold {
  public:
    explicit NodeHold(const osg::NodePtr& node) {
        if (node.getRefCount() <= 0) return;
        _node = node;
        osg::addRefCP(_node);
    }
    ~NodeHold() { osg::subRefCP(_node); }
    NodeHold(const NodeHold&) = delete;
    NodeHold& operator=(const NodeHold&) = delete;

  private:
    osg::NodePtr _node;
};

void replaceFirst(std::string& text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    if (at != std::string::npos) text.replace(at, what.size(), by);
}

// The full name of the channel that a loose curve belongs to.
std::string looseKey(const osg::AnimationCurvePtr& stored) {
    std::string key = stored->getAFFieldName();
    if (key.empty()) key = stored->getBelongs2Attribute();
    if (key == "rotationX" || key == "rotationY" || key == "rotationZ") {
        replaceFirst(key, "rotation", "eulerR");
    }
    return key;
}

// The same for a curve of a block, where older spellings are understood, too.
std::string blockKey(const osg::AnimationCurvePtr& stored) {
    std::string key = stored->getAFFieldName();
    if (key.empty()) key = stored->getBelongs2Attribute();
    replaceFirst(key, "translate", "translation");
    replaceFirst(key, "rotate", "rotation");
    if (key == "rotationX" || key == "rotationY" || key == "rotationZ") {
        replaceFirst(key, "rotation", "eulerR");
    }
    return key;
}

osg::AnimAttachmentPtr animAttachmentOf(const osg::NodePtr& node) {
    osg::AnimAttachmentPtr attachment = kvAnimManager::the().getAnimAttachment(node);
    if (attachment != NullFC) return attachment;
    attachment = osg::AnimAttachmentBase::create();
    osg::beginEditCP(node, osg::Node::AttachmentsFieldMask);
    node->addAttachment(attachment);
    osg::endEditCP(node, osg::Node::AttachmentsFieldMask);
    return attachment;
}

template <class CorePtr>
void setObjectName(const CorePtr& core, const std::string& name) {
    osg::beginEditCP(core, osg::AnimObject::NameFieldMask);
    core->setName(name);
    osg::endEditCP(core, osg::AnimObject::NameFieldMask);
}

osg::AnimCurvePtr newChannelCurve(const kvOSGChannelData& channel) {
    const osg::AnimCurvePtr core = osg::AnimCurveBase::create();
    osg::beginEditCP(core, osg::FieldBits::AllFields);
    core->setName(channel.name);
    core->setSuffix(channel.suffix);
    core->setValueIndex(channel.valueIndex);
    core->setColor(kvAnimManager::the().getDefaultColor(channel.suffix));
    osg::endEditCP(core, osg::FieldBits::AllFields);
    return core;
}

osg::AnimNodePtr newAnimNode(const osg::NodeCorePtr& core) {
    const osg::AnimNodePtr node = osg::AnimNodeBase::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    return node;
}

// The curve node of the channel with that full name, the last one if several have it; null when the
// node has no such channel.
osg::AnimNodePtr channelCurveNode(const osg::NodePtr& node, const Channels& channels,
                                  const std::string& fullName) {
    const kvOSGChannelData* found = nullptr;
    for (const kvOSGChannelData& channel : channels) {
        if (channel.fullName() == fullName) found = &channel;
    }
    if (found == nullptr) return NullFC;
    const osg::AnimAttachmentPtr attachment = animAttachmentOf(node);
    osg::AnimNodePtr curveNode = kvAnimManager::the().findChannelCurveNode(*found, attachment);
    if (curveNode == NullFC) {
        curveNode = kvAnimManager::the().createChannelCurveNode(*found, attachment);
    }
    return curveNode;
}

} // namespace

void kvAnimationConverter::convert(const osg::NodePtr& node) {
    convertR(node);
}

void kvAnimationConverter::convertR(const osg::NodePtr& node) {
    if (node == NullFC) return;
    const osg::NodePtr visited = node; // the caller's variable may go with the node's parent
    const NodeHold hold(visited);

    const osg::AnimationAttachmentPtr stored = kv::detail::attachmentOn(visited);
    if (stored != NullFC) {
        osg::MFAnimationBlockPtr& blocks = *stored->getMFBlocks();
        osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
        if (blocks.getSize() > 0 || curves.getSize() > 0) {
            Channels channels;
            kvAnimManager::the().getKeyableChannels(visited, channels);
            for (UInt32 i = 0; i < blocks.getSize(); ++i)
                convertBlock(blocks[i], visited);
            for (UInt32 i = 0; i < curves.getSize(); ++i) {
                if (curves[i] == NullFC) continue;
                convertCurve(curves[i], channelCurveNode(visited, channels, looseKey(curves[i])));
            }
        }
        osg::beginEditCP(visited, osg::Node::AttachmentsFieldMask);
        visited->subAttachment(stored);
        osg::endEditCP(visited, osg::Node::AttachmentsFieldMask);
    }

    for (UInt32 i = 0; i < visited->getNChildren(); ++i)
        convertR(visited->getChild(i));
}

void kvAnimationConverter::convertBlock(const BlockPtr& stored, const osg::NodePtr& node) {
    if (stored == NullFC || node == NullFC) return;
    const osg::AnimBlockPtr core = osg::AnimBlockBase::create();
    setObjectName(core, stored->getName());
    const AnimNodePtr blockNode = osg::AnimNodeBase::create();
    const osg::BitVector edited = osg::Node::CoreFieldMask | osg::Node::ChildrenFieldMask;
    osg::beginEditCP(blockNode, edited);
    blockNode->setCore(core);

    osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
    std::vector<std::string> keys(curves.getSize());
    for (UInt32 i = 0; i < curves.getSize(); ++i) {
        if (curves[i] != NullFC) keys[i] = blockKey(curves[i]);
    }
    const std::string nodeName = kvNodeUtils::getName(node);
    const bool utf8 = kvNodeUtils::hasUtf8Name(node);
    Channels channels;
    kvAnimManager::the().getKeyableChannels(node, channels);
    for (const kvOSGChannelData& channel : channels) {
        const AnimNodePtr curveNode = newAnimNode(newChannelCurve(channel));
        kvNodeUtils::setName(curveNode, nodeName + "." + channel.label + channel.suffix, utf8);
        const std::string fullName = channel.fullName();
        for (UInt32 i = 0; i < curves.getSize(); ++i) {
            if (curves[i] != NullFC && keys[i] == fullName) convertCurve(curves[i], curveNode);
        }
        blockNode->addChild(curveNode);
    }
    osg::endEditCP(blockNode, edited);

    kvNodeUtils::setName(blockNode, stored->getName());
    animAttachmentOf(node)->addAnimation(blockNode);
}

void kvAnimationConverter::convertCurve(const CurvePtr& stored, const AnimNodePtr& curveNode) {
    if (stored == NullFC || curveNode == NullFC) return;
    const AnimCurvePtr curve = osg::AnimCurvePtr::dcast(curveNode->getCore());
    if (curve == NullFC) return;
    osg::MFAnimationControlPointPtr& points = *stored->getMFControlPoints();
    for (UInt32 i = 0; i < points.getSize(); ++i)
        convertPoint(points[i], curve);
}

void kvAnimationConverter::convertPoint(const ControlPointPtr& stored, const AnimCurvePtr& curve) {
    if (stored == NullFC || curve == NullFC) return;
    const float fps = static_cast<float>(kvAnimManager::the().fps());
    const osg::Vec2f& key = stored->getControlPoint();
    const osg::Vec2f& in = stored->getInTangent();
    const osg::Vec2f& out = stored->getOutTangent();
    const float time = key[0] / fps;
    osg::beginEditCP(curve, osg::AnimCurve::ControlPointsFieldMask);
    curve->addPoint(osg::Vec2f(time, key[1]), osg::Vec2f(in[0] / fps - time, in[1] - key[1]),
                    osg::Vec2f(out[0] / fps - time, out[1] - key[1]), 1.0F, 1.0F, false, true);
    osg::endEditCP(curve, osg::AnimCurve::ControlPointsFieldMask);
}

kvAnimationConverter::AnimNodePtr kvAnimationConverter::convertClip(const ClipPtr& stored) {
    if (stored == NullFC) return NullFC;
    const osg::AnimClipPtr core = osg::AnimClipBase::create();
    setObjectName(core, stored->getName());
    const AnimNodePtr node = newAnimNode(core);
    kvNodeUtils::setName(node, stored->getName());
    return node;
}
