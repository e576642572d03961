#pragma once

#include <kvAnimationAttachmentInteraction.h>

// The writer of the older layout, and the single steps of reading and writing.
template <>
struct kvTestAccess<kvAnimationAttachmentInteraction> {
    using I = kvAnimationAttachmentInteraction;

    static I::AttachmentPtr& animAtt() { return I::_animAtt; }
    static void addSubClip(const I::ClipPtr& stored, kvAnimationClip* clip) {
        I::addSubClip(stored, clip);
    }
    static osg::NodePtr resolveTransformNode(const osg::NodePtr& node) {
        return I::resolveTransformNode(node);
    }
    static void exportCurveToBlock(kvAnimationCurve* curve, const I::BlockPtr& stored) {
        I::exportCurveToBlock(curve, stored);
    }
    static void exportBlockToTrack(kvAnimationBlock* block, const I::TrackPtr& stored) {
        I::exportBlockToTrack(block, stored);
    }
    static void exportSequenceToTrack(kvAnimationSequence2* item, const I::TrackPtr& stored) {
        I::exportSequenceToTrack(item, stored);
    }
    static void exportClipToTrack(kvAnimationClip* clip, const I::TrackPtr& stored) {
        I::exportClipToTrack(clip, stored);
    }
    static void exportTrackToClip(kvAnimationTrack* track, const I::ClipPtr& stored) {
        I::exportTrackToClip(track, stored);
    }
};
