// The channels of scene nodes and their curve nodes.
#include "kvAnimManager.h"

#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGTransform.h>

#include <kvNodeUtils.h>
#include <OSGAnimCurve.h>
#include <OSGCameraSetting.h>

#include <cmath>
#include <initializer_list>
#include <map>

using osg::NullFC;

namespace {

typedef std::vector<kvOSGChannelData> Channels;

/// Channels by the id of the node; ids are never given out twice, so that an entry of a node that
/// is gone does no harm.
std::map<osg::UInt32, Channels>& ownChannels() {
    static std::map<osg::UInt32, Channels> channels;
    return channels;
}

double framesPerSecondNow = 25.0;

/// One channel for each letter of the suffixes.
void append(Channels& channels, const char* name, const char* label, const char* suffixes) {
    for (unsigned i = 0; suffixes[i] != '\0'; ++i)
        channels.push_back(kvOSGChannelData{name, label, std::string(1, suffixes[i]), i});
}

void append(Channels& channels, const char* name, const char* label) {
    channels.push_back(kvOSGChannelData{name, label, std::string(), 0});
}

void appendChannelsOf(const osg::NodeCorePtr& core, Channels& channels) {
    const osg::FieldContainerType& type = core->getType();
    if (type.isDerivedFrom(osg::Transform::getClassType())) {
        append(channels, "translation", "Translate", "XYZ");
        append(channels, "eulerR", "Rotate", "XYZ");
        append(channels, "scale", "Scale", "XYZ");
    }
    if (type.isDerivedFrom(osg::CameraSetting::getClassType())) {
        append(channels, "from", "From", "XYZ");
        append(channels, "at", "At", "XYZ");
        append(channels, "up", "Up", "XYZ");
        append(channels, "fieldOfView", "Field of View");
        append(channels, "fStop", "F-Stop");
        append(channels, "focalLength", "Focal Length");
        append(channels, "height", "Height");
        append(channels, "distance", "Distance");
        append(channels, "turnTableAngle", "Turntable");
    }
    if (type.isDerivedFrom(osg::Light::getClassType())) {
        append(channels, "ambient", "Ambient", "RGBA");
        append(channels, "diffuse", "Diffuse", "RGBA");
        append(channels, "specular", "Specular", "RGBA");
    }
}

/// The name of the first node that carries the attachment; empty when none does.
std::string nameOfCarrier(const osg::AnimAttachmentPtr& attachment) {
    const osg::MFFieldContainerPtr& parents = *attachment->getMFParents();
    for (osg::UInt32 i = 0; i < parents.getSize(); ++i) {
        const osg::NodePtr node = osg::NodePtr::dcast(parents[i]);
        if (node != NullFC) return kvNodeUtils::getName(node);
    }
    return std::string();
}

osg::AnimCurvePtr makeCurve(const kvOSGChannelData& channel) {
    const osg::AnimCurvePtr curve = osg::AnimCurve::create();
    if (curve == NullFC) return curve;
    osg::beginEditCP(curve);
    curve->setName(channel.name);
    curve->setSuffix(channel.suffix);
    curve->setValueIndex(channel.valueIndex);
    curve->setColor(kvAnimManager::getDefaultColor(channel.suffix));
    osg::endEditCP(curve);
    return curve;
}

} // namespace

kvAnimManager& kvAnimManager::the() {
    static kvAnimManager manager;
    return manager;
}

void kvAnimManager::getKeyableChannels(const osg::NodePtr& node, Channels& channels) {
    channels.clear();
    if (node == NullFC) return;
    const auto own = ownChannels().find(osg::getContainerId(node));
    if (own != ownChannels().end()) {
        channels = own->second;
        return;
    }
    const osg::NodeCorePtr core = node->getCore();
    if (core != NullFC) appendChannelsOf(core, channels);
    append(channels, "visible", "Visible");
}

void kvAnimManager::setKeyableChannels(const osg::NodePtr& node, const Channels& channels) {
    if (node == NullFC) return;
    ownChannels()[osg::getContainerId(node)] = channels;
}

void kvAnimManager::resetKeyableChannels() {
    ownChannels().clear();
}

osg::AnimAttachmentPtr
kvAnimManager::getAnimAttachment(const osg::AttachmentContainerPtr& container) {
    if (container == NullFC) return NullFC;
    return osg::AnimAttachmentPtr::dcast(
        container->findAttachment(osg::AnimAttachment::getClassType().getGroupId()));
}

osg::AnimNodePtr kvAnimManager::findChannelCurveNode(const kvOSGChannelData& channel,
                                                     const osg::AnimAttachmentPtr& attachment) {
    if (attachment == NullFC) return NullFC;
    const osg::MFNodePtr& animations = attachment->getAnimations();
    for (osg::UInt32 i = 0; i < animations.getSize(); ++i) {
        const osg::AnimNodePtr node = osg::AnimNodePtr::dcast(animations[i]);
        if (node == NullFC) continue;
        const osg::AnimCurvePtr curve = osg::AnimCurvePtr::dcast(node->getCore());
        if (curve != NullFC && curve->getName() == channel.name &&
            curve->getSuffix() == channel.suffix && curve->getValueIndex() == channel.valueIndex)
            return node;
    }
    return NullFC;
}

osg::AnimNodePtr kvAnimManager::createChannelCurveNode(const kvOSGChannelData& channel,
                                                       const osg::AnimAttachmentPtr& attachment) {
    if (attachment == NullFC) return NullFC;
    const osg::AnimNodePtr node = osg::AnimNode::create();
    if (node == NullFC) return node;
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(makeCurve(channel));
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    kvNodeUtils::setName(node, nameOfCarrier(attachment) + "." + channel.label + channel.suffix,
                         false);
    osg::beginEditCP(attachment, osg::AnimAttachment::AnimationsFieldMask);
    attachment->addAnimation(node);
    osg::endEditCP(attachment, osg::AnimAttachment::AnimationsFieldMask);
    return node;
}

osg::Color3f kvAnimManager::getDefaultColor(const std::string& suffix) {
    const auto color = [](int red, int green, int blue) {
        return osg::Color3f(static_cast<float>(red) / 255.0f, static_cast<float>(green) / 255.0f,
                            static_cast<float>(blue) / 255.0f);
    };
    switch (suffix.empty() ? '\0' : suffix.back()) {
    case 'R':
    case 'X':
        return color(229, 76, 76);
    case 'G':
    case 'Y':
        return color(76, 229, 76);
    case 'B':
    case 'Z':
        return color(102, 159, 208);
    case 'A':
    case 'I':
    case 'W':
        return color(229, 211, 76);
    default:
        return color(243, 142, 69);
    }
}

double kvAnimManager::fps() {
    return framesPerSecondNow;
}

void kvAnimManager::setFps(double framesPerSecond) {
    if (std::isfinite(framesPerSecond) && framesPerSecond > 0.0)
        framesPerSecondNow = framesPerSecond;
}
