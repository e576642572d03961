// Upkeep: taking single records out, emptying an attachment, and sharing records with another node.

#include "persistence/attachment.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>

#include <cstddef>
#include <string>

using osg::NullFC;
using osg::UInt32;

namespace {

// Takes the element out before its reference is given back: that may destroy it and more.
template <class List>
void eraseAt(List& list, UInt32 index) {
    auto released = list[index];
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
    osg::subRefCP(released);
}

// The first element that `matches`; the later ones of the same name stay.
template <class List, class Matches>
void eraseFirst(List& list, Matches matches) {
    for (UInt32 i = 0; i < list.getSize(); ++i) {
        if (list[i] != NullFC && matches(list[i])) {
            eraseAt(list, i);
            return;
        }
    }
}

// The reference to the new node is counted, the one to the old node is not given back.
template <class Record>
void retarget(const Record& record, osg::NodePtr node) {
    record->setAppropriateNodeNoRefCount(node);
    osg::addRefCP(node);
}

} // namespace

void kvAnimationAttachmentInteraction::subFromAnimationAttachment(const osg::NodePtr& node,
                                                                  kvAnimationCurve* curve,
                                                                  bool resolve) {
    if (curve == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    const std::string attribute = curve->getAnimatedAttribute();
    const osg::FieldContainerType& type = _animAtt->getType();
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const osg::FieldDescription* const description = type.getFieldDescription(i);
        if (description == nullptr) continue;
        osg::Field* const field = _animAtt->getField(description->getFieldId());
        if (field == nullptr || field->getType() != osg::MFAnimationCurvePtr::getClassType()) {
            continue;
        }
        eraseFirst(*static_cast<osg::MFAnimationCurvePtr*>(field), [&](const CurvePtr& stored) {
            return stored->getBelongs2Attribute() == attribute;
        });
    }
}

void kvAnimationAttachmentInteraction::subBlockFromAnimAttachment(const osg::NodePtr& node,
                                                                  kvAnimationBlock* block,
                                                                  bool resolve) {
    if (block == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    const std::string name = block->getBlockName();
    eraseFirst(*_animAtt->getMFBlocks(),
               [&](const BlockPtr& stored) { return stored->getName() == name; });
}

void kvAnimationAttachmentInteraction::subClipFromAnimAttachment(const osg::NodePtr& node,
                                                                 kvAnimationClip* clip,
                                                                 bool resolve) {
    if (clip == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    const std::string name = clip->getName();
    eraseFirst(*_animAtt->getMFClips(),
               [&](const ClipPtr& stored) { return stored->getName() == name; });
}

void kvAnimationAttachmentInteraction::cleanAnimationAttachment(const osg::NodePtr& node,
                                                                bool resolve) {
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    _animAtt->clear();
}

void kvAnimationAttachmentInteraction::eraseExistingAttachmentClips(const osg::NodePtr& node) {
    const AttachmentPtr attachment = kv::detail::attachmentOn(node);
    if (attachment == NullFC) return;
    const kv::detail::AttachmentHold hold(attachment);
    attachment->clearClips();
}

// In all three transfers the number of elements is taken first: source and target may be one list.

void kvAnimationAttachmentInteraction::transferCurves(osg::NodePtr from, osg::NodePtr to) {
    const AttachmentPtr source = kv::detail::attachmentOn(from);
    if (source == NullFC) return;
    createNewAnimationAttachment(to, false);
    const AttachmentPtr target = kv::detail::attachmentOn(to);
    if (target == NullFC) return;
    const UInt32 count = source->getMFCurves()->getSize();
    for (UInt32 i = 0; i < count; ++i) {
        const CurvePtr curve = (*source->getMFCurves())[i];
        if (curve == NullFC) continue;
        retarget(curve, to);
        target->addCurve(curve);
    }
}

void kvAnimationAttachmentInteraction::transferBlocks(osg::NodePtr from, osg::NodePtr to) {
    const AttachmentPtr source = kv::detail::attachmentOn(from);
    if (source == NullFC) return;
    createNewAnimationAttachment(to, false);
    const AttachmentPtr target = kv::detail::attachmentOn(to);
    if (target == NullFC) return;
    const UInt32 count = source->getMFBlocks()->getSize();
    for (UInt32 i = 0; i < count; ++i) {
        const BlockPtr block = (*source->getMFBlocks())[i];
        if (block == NullFC) continue;
        retarget(block, to);
        osg::MFAnimationCurvePtr& curves = *block->getMFCurves();
        for (UInt32 c = 0; c < curves.getSize(); ++c) {
            if (curves[c] != NullFC) retarget(curves[c], to);
        }
        target->addBlock(block);
    }
}

void kvAnimationAttachmentInteraction::transferClips(osg::NodePtr from, osg::NodePtr to) {
    const AttachmentPtr source = kv::detail::attachmentOn(from);
    if (source == NullFC) return;
    createNewAnimationAttachment(to, false);
    const AttachmentPtr target = kv::detail::attachmentOn(to);
    if (target == NullFC) return;
    const UInt32 count = source->getMFClips()->getSize();
    for (UInt32 i = 0; i < count; ++i) {
        const ClipPtr clip = (*source->getMFClips())[i];
        if (clip != NullFC) target->addClip(clip);
    }
}
