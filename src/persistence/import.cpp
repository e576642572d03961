// Reading: objects from the records of an attachment, which are given up afterwards.
//
// No stored identifier is read. The order in which fresh ones are drawn is part of what is
// promised: registering draws one, and a second one then replaces it.

#include "keys/keyImport.h"
#include "persistence/attachment.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>
#include <kvAnimationUtils2.h>

#include <OSGCameraSetting.h>

#include <algorithm>
#include <cstddef>
#include <vector>

using osg::NullFC;
using osg::UInt32;

namespace {

bool isCameraNode(const osg::NodePtr& node) {
    const osg::NodeCorePtr core = node->getCore();
    return core != NullFC && core->getType().isDerivedFrom(osg::CameraSetting::getClassType());
}

// The clips that are being read, outermost first. A damaged file may nest a clip in itself or
// deeper than any stack reaches; what cannot be entered is left out.
std::vector<UInt32> openClips;
constexpr std::size_t kDeepestNesting = 1000;

class OpenClip {
  public:
    explicit OpenClip(const osg::AnimationClipPtr& stored) {
        const UInt32 id = osg::getContainerId(stored);
        _entered = openClips.size() < kDeepestNesting &&
                   std::find(openClips.begin(), openClips.end(), id) == openClips.end();
        if (_entered) openClips.push_back(id);
    }
    ~OpenClip() {
        if (_entered) openClips.pop_back();
    }
    OpenClip(const OpenClip&) = delete;
    OpenClip& operator=(const OpenClip&) = delete;

    bool entered() const { return _entered; }

  private:
    bool _entered;
};

} // namespace

// --- keys and curves

void kvAnimationAttachmentInteraction::importPointToCurve(const ControlPointPtr& stored,
                                                          kv::detail::KeyImport& keys) {
    if (stored == NullFC) return;
    const auto point = [](const osg::Vec2f& v) {
        return kvControlPoint::Point{static_cast<double>(v[0]), static_cast<double>(v[1])};
    };
    keys.add(point(stored->getControlPoint()), point(stored->getInTangent()),
             point(stored->getOutTangent()), static_cast<int>(stored->getTangentType()));
}

void kvAnimationAttachmentInteraction::loadKeys(const CurvePtr& stored, kvAnimationCurve* curve) {
    osg::MFAnimationControlPointPtr& points = *stored->getMFControlPoints();
    kv::detail::KeyImport keys(*curve, points.getSize());
    for (UInt32 i = 0; i < points.getSize(); ++i)
        importPointToCurve(points[i], keys);
}

void kvAnimationAttachmentInteraction::importCurveToBlock(const CurvePtr& stored,
                                                          kvAnimationBlock* block,
                                                          kvAnimationManager2* manager,
                                                          const osg::NodePtr& cameraNode) {
    if (manager == nullptr || block == nullptr || stored == NullFC) return;
    kvAnimationCurve* const curve = new kvAnimationCurve(stored->getBelongs2Attribute());
    curve->setId(kvAnimationManager2::createUniqueId());
    osg::NodePtr node = stored->getAppropriateNode();
    if (block->isCameraBlock() && node != NullFC && !isCameraNode(node)) node = cameraNode;
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(stored, curve);
    loadKeys(stored, curve);
    block->addCurve(curve);
}

void kvAnimationAttachmentInteraction::loadCurvesFromAnimAttachment(const osg::NodePtr& node,
                                                                    kvAnimationManager2* manager,
                                                                    bool resolve) {
    if (manager == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    osg::MFAnimationCurvePtr& curves = *_animAtt->getMFCurves();
    for (UInt32 i = 0; i < curves.getSize(); ++i) {
        const CurvePtr stored = curves[i];
        if (stored == NullFC) continue;
        kvAnimationCurve* const curve = new kvAnimationCurve(stored->getBelongs2Attribute());
        manager->addCurve(curve);
        curve->setAppropriateNode(stored->getAppropriateNode());
        kvAnimationUtils2::createAnimationField(stored, curve);
        loadKeys(stored, curve);
    }
    _animAtt->clearCurves();
}

// --- blocks

void kvAnimationAttachmentInteraction::loadBlockFlags(const BlockPtr& stored,
                                                      kvAnimationBlock* block) {
    block->setId(kvAnimationManager2::createUniqueId());
    block->setCameraBlock(stored->getCamBlock());
    block->setAnimatedType(stored->getAnimatedType());
    block->setRepeat(stored->getRepeated());
    block->setMotionBlur(stored->getMotionBlur());
    block->setFliped(stored->getFliped());
}

// A block that stands by itself: activity is read, and no curve changes its node.
void kvAnimationAttachmentInteraction::loadTopLevelBlock(const BlockPtr& stored,
                                                         kvAnimationBlock* block) {
    loadBlockFlags(stored, block);
    block->setActive(stored->getActivity());
    osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
    for (UInt32 i = 0; i < curves.getSize(); ++i) {
        const CurvePtr storedCurve = curves[i];
        if (storedCurve == NullFC) continue;
        kvAnimationCurve* const curve = new kvAnimationCurve(storedCurve->getBelongs2Attribute());
        block->addCurve(curve);
        curve->setId(kvAnimationManager2::createUniqueId());
        curve->setAppropriateNode(storedCurve->getAppropriateNode());
        kvAnimationUtils2::createAnimationField(storedCurve, curve);
        loadKeys(storedCurve, curve);
    }
    block->updateBlockBounds();
}

// The range is brought up to date once, behind the last curve; every earlier one would be
// overwritten.
void kvAnimationAttachmentInteraction::loadBlockCurves(const BlockPtr& stored,
                                                       kvAnimationBlock* block,
                                                       kvAnimationManager2* manager,
                                                       const osg::NodePtr& cameraNode) {
    osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
    for (UInt32 i = 0; i < curves.getSize(); ++i) {
        importCurveToBlock(curves[i], block, manager, cameraNode);
    }
    block->updateBlockBounds();
}

void kvAnimationAttachmentInteraction::loadBlocksFromAnimAttachment(const osg::NodePtr& node,
                                                                    kvAnimationManager2* manager,
                                                                    bool resolve) {
    if (manager == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    osg::MFAnimationBlockPtr& blocks = *_animAtt->getMFBlocks();
    for (UInt32 i = 0; i < blocks.getSize(); ++i) {
        const BlockPtr stored = blocks[i];
        if (stored == NullFC) continue;
        kvAnimationBlock* const block =
            new kvAnimationBlock(stored->getAppropriateNode(), stored->getName());
        manager->addAnimationBlock(block);
        loadTopLevelBlock(stored, block);
    }
    _animAtt->clearBlocks();
}

std::vector<kvAnimationBlock*>
kvAnimationAttachmentInteraction::getBlocksFromAttachment(const AttachmentPtr& attachment) {
    std::vector<kvAnimationBlock*> result;
    if (attachment == NullFC) return result;
    const AttachmentPtr source = attachment; // the caller's may be nulled along with its node
    const kv::detail::AttachmentHold hold(source);
    osg::MFAnimationBlockPtr& blocks = *source->getMFBlocks();
    result.reserve(blocks.getSize());
    for (UInt32 i = 0; i < blocks.getSize(); ++i) {
        const BlockPtr stored = blocks[i];
        if (stored == NullFC) continue;
        result.push_back(new kvAnimationBlock(stored->getAppropriateNode(), stored->getName()));
        loadTopLevelBlock(stored, result.back());
    }
    source->clearBlocks();
    return result;
}

// --- tracks
//
// Items go straight into the lists of their track. Sorting and measuring the track after every one
// of them, as adding does, would have the same result at a quadratic price; it happens once, when
// the outermost track is complete, and from there reaches everything below.

void kvAnimationAttachmentInteraction::importBlockToTrack(const BlockPtr& stored,
                                                          kvAnimationTrack* track,
                                                          kvAnimationManager2* manager,
                                                          const osg::NodePtr& cameraNode) {
    if (manager == nullptr || track == nullptr || stored == NullFC) return;
    if (stored->getAppropriateNode() == NullFC) return;
    kvAnimationBlock* const block =
        new kvAnimationBlock(stored->getAppropriateNode(), stored->getName());
    loadBlockFlags(stored, block);
    loadBlockCurves(stored, block, manager, cameraNode);
    track->_blocks.push_back(block);
}

void kvAnimationAttachmentInteraction::importSequenceToTrack(const BlockPtr& stored,
                                                             kvAnimationTrack* track,
                                                             kvAnimationManager2* manager) {
    if (manager == nullptr || track == nullptr || stored == NullFC) return;
    kvAnimationSequence2* const sequence = new kvAnimationSequence2(stored->getName());
    sequence->setId(kvAnimationManager2::createUniqueId());
    sequence->setStartFrame(stored->getStart());
    sequence->setEndFrame(stored->getEnd());
    track->_sequences.push_back(sequence);
}

void kvAnimationAttachmentInteraction::importClipToTrack(const ClipPtr& stored,
                                                         kvAnimationTrack* track,
                                                         kvAnimationManager2* manager,
                                                         const osg::NodePtr& cameraNode) {
    if (manager == nullptr || track == nullptr || stored == NullFC) return;
    const OpenClip open(stored);
    if (!open.entered()) return;
    kvAnimationClip* const clip = new kvAnimationClip(stored->getName());
    loadClipFlags(stored, clip);
    osg::MFAnimationTrackPtr& tracks = *stored->getMFTracks();
    for (UInt32 i = 0; i < tracks.getSize(); ++i) {
        importTrackToClip(tracks[i], clip, manager, cameraNode);
    }
    track->_clips.push_back(clip);
}

void kvAnimationAttachmentInteraction::importTrackToClip(const TrackPtr& stored,
                                                         kvAnimationClip* clip,
                                                         kvAnimationManager2* manager,
                                                         const osg::NodePtr& cameraNode) {
    if (manager == nullptr || clip == nullptr || stored == NullFC) return;
    kvAnimationTrack* const track = clip->getTrack(clip->createTrack());
    if (track == nullptr) return;
    // The track is still empty, so these set its flags and mirror or push down nothing.
    track->setActive(stored->getActive());
    track->setMotionBlur(stored->getMotionBlur());
    track->setFliped(stored->getFliped());

    osg::MFAnimationBlockPtr& blocks = *stored->getMFBlocks();
    for (UInt32 i = 0; i < blocks.getSize(); ++i) {
        importBlockToTrack(blocks[i], track, manager, cameraNode);
    }
    osg::MFAnimationBlockPtr& sequences = *stored->getMFSequences();
    for (UInt32 i = 0; i < sequences.getSize(); ++i) {
        importSequenceToTrack(sequences[i], track, manager);
    }
    osg::MFFieldContainerPtr& clips = *stored->getMFClips();
    for (UInt32 i = 0; i < clips.getSize(); ++i) {
        importClipToTrack(ClipPtr::dcast(clips[i]), track, manager, cameraNode);
    }
}

// --- clips

// For a clip that is still empty: a filled one would be mirrored here.
void kvAnimationAttachmentInteraction::loadClipFlags(const ClipPtr& stored, kvAnimationClip* clip) {
    clip->setId(kvAnimationManager2::createUniqueId());
    clip->setFliped(stored->getFliped());
    clip->setRepeat(stored->getRepeated());
    clip->setMotionBlur(stored->getMotionBlur());
}

// The layout from before there were tracks: blocks, then sub-clips, each of which gets a track of
// its own now. A block without a node is read here.
void kvAnimationAttachmentInteraction::loadDirectContent(const ClipPtr& stored,
                                                         kvAnimationClip* clip,
                                                         kvAnimationManager2* manager,
                                                         const osg::NodePtr& cameraNode) {
    osg::MFAnimationBlockPtr& blocks = *stored->getMFBlocks();
    for (UInt32 i = 0; i < blocks.getSize(); ++i) {
        const BlockPtr storedBlock = blocks[i];
        if (storedBlock == NullFC) continue;
        kvAnimationBlock* const block =
            new kvAnimationBlock(storedBlock->getAppropriateNode(), storedBlock->getName());
        clip->addBlock(block);
        loadBlockFlags(storedBlock, block);
        loadBlockCurves(storedBlock, block, manager, cameraNode);
    }
    osg::MFFieldContainerPtr& subclips = *stored->getMFSubclips();
    for (UInt32 i = 0; i < subclips.getSize(); ++i) {
        loadSubclip(ClipPtr::dcast(subclips[i]), clip, manager, cameraNode);
    }
}

void kvAnimationAttachmentInteraction::loadSubclip(const ClipPtr& stored, kvAnimationClip* parent,
                                                   kvAnimationManager2* manager,
                                                   const osg::NodePtr& cameraNode) {
    if (manager == nullptr || parent == nullptr || stored == NullFC) return;
    const OpenClip open(stored);
    if (!open.entered()) return;
    kvAnimationClip* const clip = new kvAnimationClip(stored->getName());
    loadClipFlags(stored, clip);
    loadDirectContent(stored, clip, manager, cameraNode);
    parent->addSubclip(clip);
}

void kvAnimationAttachmentInteraction::loadClipsFromAnimAttachment(const osg::NodePtr& node,
                                                                   kvAnimationManager2* manager,
                                                                   osg::NodePtr cameraNode,
                                                                   bool resolve) {
    if (manager == nullptr) return;
    _animAtt = getAnimationAttachment(node, resolve);
    if (_animAtt == NullFC) return;
    const kv::detail::AttachmentHold hold(_animAtt);
    osg::MFAnimationClipPtr& clips = *_animAtt->getMFClips();
    for (UInt32 i = 0; i < clips.getSize(); ++i) {
        const ClipPtr stored = clips[i];
        if (stored == NullFC) continue;
        const OpenClip open(stored);
        kvAnimationClip* const clip = new kvAnimationClip(stored->getName());
        manager->addClip(clip);
        loadClipFlags(stored, clip);
        loadDirectContent(stored, clip, manager, cameraNode);
        const int direct = clip->getTrackAmount();
        osg::MFAnimationTrackPtr& tracks = *stored->getMFTracks();
        for (UInt32 t = 0; t < tracks.getSize(); ++t) {
            importTrackToClip(tracks[t], clip, manager, cameraNode);
        }
        for (int t = direct; t < clip->getTrackAmount(); ++t) {
            kvAnimationTrack* const track = clip->getTrack(t);
            const bool empty =
                track->_blocks.empty() && track->_sequences.empty() && track->_clips.empty();
            if (!empty) track->updateBounds();
        }
    }
    _animAtt->clearClips();
}

// --- the oldest form

void kvAnimationAttachmentInteraction::importAnimationAttachment(const osg::NodePtr& node,
                                                                 kvAnimationManager2* manager) {
    if (manager == nullptr) return;
    _animAtt = kv::detail::attachmentOn(node);
    if (_animAtt == NullFC) return;

    // Curves without identifier and binding of their own, and the block around them.
    const auto readBlock = [](const BlockPtr& stored) {
        kvAnimationBlock* const block =
            new kvAnimationBlock(stored->getAppropriateNode(), stored->getName());
        osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
        for (UInt32 i = 0; i < curves.getSize(); ++i) {
            const CurvePtr storedCurve = curves[i];
            if (storedCurve == NullFC) continue;
            block->addCurve(new kvAnimationCurve(storedCurve->getBelongs2Attribute()));
            loadKeys(storedCurve, block->getLastInsertedCurve());
        }
        block->updateBlockBounds();
        return block;
    };

    osg::MFAnimationCurvePtr& curves = *_animAtt->getMFCurves();
    for (UInt32 i = 0; i < curves.getSize(); ++i) {
        if (curves[i] == NullFC) continue;
        kvAnimationCurve* const curve = new kvAnimationCurve;
        manager->getAnimCurves()->push_back(curve);
        curve->setAnimatedAttribute(curves[i]->getBelongs2Attribute());
        loadKeys(curves[i], curve);
    }
    osg::MFAnimationBlockPtr& blocks = *_animAtt->getMFBlocks();
    for (UInt32 i = 0; i < blocks.getSize(); ++i) {
        if (blocks[i] != NullFC) manager->getBlocks()->push_back(readBlock(blocks[i]));
    }
    osg::MFAnimationClipPtr& clips = *_animAtt->getMFClips();
    for (UInt32 i = 0; i < clips.getSize(); ++i) {
        if (clips[i] == NullFC) continue;
        kvAnimationClip* const clip = new kvAnimationClip(clips[i]->getName());
        manager->addClip(clip);
        osg::MFAnimationBlockPtr& clipBlocks = *clips[i]->getMFBlocks();
        for (UInt32 b = 0; b < clipBlocks.getSize(); ++b) {
            if (clipBlocks[b] != NullFC) clip->addBlock(readBlock(clipBlocks[b]));
        }
    }
}
