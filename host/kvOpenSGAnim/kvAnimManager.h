#pragma once

/// @file
/// The channels of scene nodes and their curve nodes.

#include "kvOpenSGAnimApi.h"
#include "kvOSGChannelData.h"

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <OSGAnimAttachment.h>
#include <OSGAnimNode.h>

#include <string>
#include <vector>

/// What can be animated on a node, and where its curves are.
///
/// Every member is static, and `kvAnimManager::fps()`, `kvAnimManager::the().fps()` and
/// `kvAnimManager::the()->fps()` are the same call. Main thread only.
class KV_OPENSG_ANIM_API kvAnimManager {
  public:
    static kvAnimManager& the();
    kvAnimManager* operator->() { return this; }

    /// Fills the vector (what it held is dropped) with the channels of a node, in this order:
    /// - a Transform of any kind: translation, eulerR, scale, each X, Y, Z;
    /// - a CameraSetting: from, at, up (X, Y, Z), fieldOfView, fStop, focalLength, height,
    /// distance,
    ///   turnTableAngle;
    /// - a light: ambient, diffuse, specular (R, G, B, A);
    /// - every node: visible.
    /// A null node has none.
    static void getKeyableChannels(const osg::NodePtr& node,
                                   std::vector<kvOSGChannelData>& channels);

    /// Makes a node's channels those of the list, for tests and for hosts with nodes of their own.
    /// The node is kept by id; null is ignored.
    static void setKeyableChannels(const osg::NodePtr& node,
                                   const std::vector<kvOSGChannelData>& channels);
    /// All nodes have their usual channels again.
    static void resetKeyableChannels();

    /// The animation of a node or other container, or null. Null for null.
    static osg::AnimAttachmentPtr getAnimAttachment(const osg::AttachmentContainerPtr& container);

    /// The curve node of a channel: of the attachment's own nodes, not of those below blocks, the
    /// first whose core is an AnimCurve with the channel's name, suffix and value index. Null when
    /// there is none.
    static osg::AnimNodePtr findChannelCurveNode(const kvOSGChannelData& channel,
                                                 const osg::AnimAttachmentPtr& attachment);

    /// Makes a curve node without points for a channel and adds it to the attachment, which then
    /// holds it. The core has the channel's name, suffix and value index and the default colour;
    /// the node is named after the first node that carries the attachment, a point, and the
    /// channel's label and suffix. Null for a null attachment.
    static osg::AnimNodePtr createChannelCurveNode(const kvOSGChannelData& channel,
                                                   const osg::AnimAttachmentPtr& attachment);

    /// The colour of curves with a suffix, each part from 0 to 1: red for R and X, green for G and
    /// Y, blue for B and Z, yellow for A, I and W, orange for others, decided by the last
    /// character.
    static osg::Color3f getDefaultColor(const std::string& suffix);

    /// @{
    /// Frames per second of animation in files; 25 unless set. Anything but a positive finite
    /// number is ignored.
    static double fps();
    static void setFps(double framesPerSecond);
    /// @}

  private:
    kvAnimManager() = default;
};
