// The attachment that carries the animation of a node: where it hangs, how it gets there.

#include "persistence/attachment.h"

#include <kvAnimationManager2.h>

using osg::AnimationAttachment;
using osg::AnimationAttachmentPtr;

kvAnimationAttachmentInteraction::AttachmentPtr kvAnimationAttachmentInteraction::_animAtt;

namespace kv {
namespace detail {

AnimationAttachmentPtr attachmentOn(const osg::NodePtr& node) {
    const osg::FieldContainerType& wanted = AnimationAttachment::getClassType();
    if (node == osg::NullFC) return osg::NullFC;
    const osg::AttachmentPtr found = node->findAttachment(wanted.getGroupId());
    if (found == osg::NullFC || found->getType() != wanted) return osg::NullFC;
    return AnimationAttachmentPtr::dcast(found);
}

// An attachment without any reference belongs to nobody yet; taking one and giving it back would
// destroy it.
AttachmentHold::AttachmentHold(const AnimationAttachmentPtr& attachment) {
    if (attachment == osg::NullFC || attachment.getRefCount() <= 0) return;
    _attachment = attachment;
    osg::addRefCP(_attachment);
}

AttachmentHold::~AttachmentHold() {
    osg::subRefCP(_attachment);
}

} // namespace detail
} // namespace kv

kvAnimationAttachmentInteraction&
kvAnimationAttachmentInteraction::operator=(const kvAnimationAttachmentInteraction&) {
    return *this;
}

kvAnimationAttachmentInteraction&
kvAnimationAttachmentInteraction::operator=(kvAnimationAttachmentInteraction&&) noexcept {
    return *this;
}

osg::NodePtr kvAnimationAttachmentInteraction::resolveTransformNode(const osg::NodePtr& node) {
    return kvAnimationManager2::resolveTransformNode(node);
}

AnimationAttachmentPtr
kvAnimationAttachmentInteraction::getAnimationAttachment(const osg::NodePtr& node, bool resolve) {
    return kv::detail::attachmentOn(resolve ? resolveTransformNode(node) : node);
}

void kvAnimationAttachmentInteraction::createNewAnimationAttachment(osg::NodePtr node,
                                                                    bool resolve) {
    if (resolve) node = resolveTransformNode(node);
    if (node == osg::NullFC || kv::detail::attachmentOn(node) != osg::NullFC) return;
    const AnimationAttachmentPtr attachment = osg::AnimationAttachmentBase::create();
    osg::beginEditCP(node, osg::FieldBits::AllFields, osg::ChangedOrigin::External);
    node->addAttachment(attachment);
    osg::endEditCP(node, osg::FieldBits::AllFields, osg::ChangedOrigin::External);
}
