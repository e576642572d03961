#pragma once

#include <kvAnimationAttachmentInteraction.h>

#include <OSGAnimationAttachment.h>
#include <OSGAnimationBlock.h>
#include <OSGAnimationClip.h>
#include <OSGAnimationControlPoint.h>
#include <OSGAnimationCurve.h>
#include <OSGAnimationTrack.h>

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

namespace kv {
namespace detail {

/// The animation attachment that hangs on exactly this node, or null: also when the slot holds an
/// attachment of another type, a derived one included.
osg::AnimationAttachmentPtr attachmentOn(const osg::NodePtr& node);

/// Keeps an attachment alive while its lists are emptied. A record may hold the last reference to
/// the node that it stands on; releasing it then takes the node and all its attachments along.
class AttachmentHold {
  public:
    explicit AttachmentHold(const osg::AnimationAttachmentPtr& attachment);
    ~AttachmentHold();
    AttachmentHold(const AttachmentHold&) = delete;
    AttachmentHold& operator=(const AttachmentHold&) = delete;

  private:
    osg::AnimationAttachmentPtr _attachment; // null when there is nothing to give back
};

} // namespace detail
} // namespace kv
