// Writing: copies of curves, blocks and clips as records of an attachment.
//
// Every record is filled completely before it is appended to its owner, which then holds the only
// reference to it.

#include "persistence/attachment.h"
#include "persistence/boundNode.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <OpenSG/OSGVector.h>

#include <utility>

using osg::NullFC;

namespace {

osg::Vec2f single(kvControlPoint::Point point) {
    return osg::Vec2f(static_cast<float>(point.x), static_cast<float>(point.y));
}

void storeBinding(const kvAnimationCurve& curve, const osg::AnimationCurvePtr& stored) {
    const kvAnimationUtils2::AnimationField field = curve.getAnimationField();
    stored->setAFAppNode(kv::detail::boundNode(field, curve));
    stored->setAFFcId(field.fcId);
    stored->setAFFieldName(field.fieldName);
    stored->setAFGlobalFieldName(field.globalFieldName);
    stored->setAFValue(field.value);
    stored->setAFValuePosition(field.valuePosition);
    stored->setAFDirty(field.dirty);
}

// The fields that blocks have wherever they are stored; activity is not among them.
osg::AnimationBlockPtr storeBlockFields(const kvAnimationBlock& block) {
    const osg::AnimationBlockPtr stored = osg::AnimationBlockBase::create();
    stored->setName(block.getBlockName());
    stored->setAppropriateNode(block.getAppropriateNode());
    stored->setId(block.getId());
    stored->setCamBlock(block.isCameraBlock());
    stored->setAnimatedType(block.getAnimatedType());
    stored->setFliped(block.getFliped());
    stored->setRepeated(block.getRepeat());
    stored->setMotionBlur(block.getMotionBlur());
    return stored;
}

osg::AnimationClipPtr storeClipFields(const kvAnimationClip& clip) {
    const osg::AnimationClipPtr stored = osg::AnimationClipBase::create();
    stored->setName(clip.getName());
    stored->setId(clip.getId());
    stored->setFliped(clip.getFliped());
    stored->setRepeated(clip.getRepeat());
    stored->setMotionBlur(clip.getMotionBlur());
    return stored;
}

} // namespace

void kvAnimationAttachmentInteraction::exportPointToCurve(const kvControlPoint& key,
                                                          const CurvePtr& stored) {
    if (stored == NullFC) return;
    const ControlPointPtr point = osg::AnimationControlPointBase::create();
    point->setControlPoint(single(key.getPoint()));
    point->setInTangent(single(key.getInTangent()));
    point->setOutTangent(single(key.getOutTangent()));
    point->setTangentType(static_cast<osg::UInt8>(key.getTangentType()));
    stored->addCurvePoint(point);
}

kvAnimationAttachmentInteraction::CurvePtr
kvAnimationAttachmentInteraction::storedCurve(const kvAnimationCurve& curve) {
    const CurvePtr stored = osg::AnimationCurveBase::create();
    stored->setBelongs2Attribute(curve.getAnimatedAttribute());
    stored->setId(curve.getId());
    stored->setAppropriateNode(curve.getAppropriateNode());
    storeBinding(curve, stored);
    for (const kvControlPoint& key : curve.getCPs())
        exportPointToCurve(key, stored);
    return stored;
}

void kvAnimationAttachmentInteraction::exportCurveToBlock(kvAnimationCurve* curve,
                                                          const BlockPtr& stored) {
    if (curve != nullptr && stored != NullFC) stored->addCurve(storedCurve(*curve));
}

kvAnimationAttachmentInteraction::BlockPtr
kvAnimationAttachmentInteraction::storedBlock(const kvAnimationBlock& block) {
    const BlockPtr stored = storeBlockFields(block);
    for (kvAnimationCurve* curve : block.getBlockCurves())
        exportCurveToBlock(curve, stored);
    return stored;
}

void kvAnimationAttachmentInteraction::exportBlockToTrack(kvAnimationBlock* block,
                                                          const TrackPtr& stored) {
    if (block != nullptr && stored != NullFC) stored->addBlock(storedBlock(*block));
}

void kvAnimationAttachmentInteraction::exportSequenceToTrack(kvAnimationSequence2* sequence,
                                                             const TrackPtr& stored) {
    if (sequence == nullptr || stored == NullFC) return;
    const BlockPtr item = osg::AnimationBlockBase::create();
    item->setName(sequence->getSequence());
    item->setId(sequence->getId());
    item->setStart(sequence->getStartFrame());
    item->setEnd(sequence->getEndFrame());
    stored->addSequence(item);
}

kvAnimationAttachmentInteraction::ClipPtr
kvAnimationAttachmentInteraction::storedClip(const kvAnimationClip& clip) {
    const ClipPtr stored = storeClipFields(clip);
    for (kvAnimationTrack* track : clip.getTracks())
        exportTrackToClip(track, stored);
    return stored;
}

void kvAnimationAttachmentInteraction::exportClipToTrack(kvAnimationClip* clip,
                                                         const TrackPtr& stored) {
    if (clip != nullptr && stored != NullFC) stored->addClip(storedClip(*clip));
}

void kvAnimationAttachmentInteraction::exportTrackToClip(kvAnimationTrack* track,
                                                         const ClipPtr& stored) {
    if (track == nullptr || stored == NullFC) return;
    const TrackPtr copy = osg::AnimationTrackBase::create();
    copy->setNumber(track->getNumber());
    copy->setActive(track->getActive());
    copy->setMotionBlur(track->getMotionBlur());
    copy->setFliped(track->getFliped());
    for (kvAnimationBlock* block : track->getBlocks())
        exportBlockToTrack(block, copy);
    for (kvAnimationSequence2* item : track->getSequences())
        exportSequenceToTrack(item, copy);
    for (kvAnimationClip* clip : track->getClips())
        exportClipToTrack(clip, copy);
    stored->addTrack(copy);
}

void kvAnimationAttachmentInteraction::addToAnimationAttachment(const osg::NodePtr& node,
                                                                kvAnimationCurve* curve,
                                                                bool resolve) {
    if (curve == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    subFromAnimationAttachment(node, curve, resolve);
    // After the removal: an emptied curve leaves no old copy.
    if (std::as_const(*curve).getCPs().empty()) return;
    _animAtt->addCurve(storedCurve(*curve));
}

void kvAnimationAttachmentInteraction::addBlockToAnimAttachment(const osg::NodePtr& node,
                                                                kvAnimationBlock* block,
                                                                bool resolve) {
    if (block == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    subBlockFromAnimAttachment(node, block, resolve);
    const BlockPtr stored = storedBlock(*block);
    stored->setActivity(block->getActive());
    _animAtt->addBlock(stored);
}

void kvAnimationAttachmentInteraction::addClipToAnimAttachment(const osg::NodePtr& node,
                                                               kvAnimationClip* clip,
                                                               bool resolve) {
    if (clip == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt != NullFC) _animAtt->addClip(storedClip(*clip));
}

void kvAnimationAttachmentInteraction::addSubClip(const ClipPtr& stored, kvAnimationClip* clip) {
    if (stored == NullFC || clip == nullptr) return;
    for (kvAnimationBlock* block : clip->getBlocks(false, false)) {
        if (block != nullptr) stored->addBlock(storedBlock(*block));
    }
    for (kvAnimationClip* subclip : clip->getSubclips(false, false)) {
        if (subclip == nullptr) continue;
        const ClipPtr nested = storeClipFields(*subclip);
        stored->addSubclip(nested);
        addSubClip(nested, subclip);
    }
}
