#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>

#include <vector>

namespace osg {
class AnimationAttachment;
class AnimationBlock;
class AnimationClip;
class AnimationControlPoint;
class AnimationCurve;
class AnimationTrack;
} // namespace osg

namespace kv::detail {
class KeyImport;
}

/// Keeps the animation of a scene inside the scene: copies curves, blocks and clips into attachment
/// records on nodes, which the scene file's own writer saves, and makes objects of them again.
///
/// ### Writing
/// `createNewAnimationAttachment` first, then one `add...` for each object with the same node and
/// flag: without an attachment the `add...` operations do nothing. Objects are copied; they stay
/// the caller's. A curve or block replaces the stored one of the same name; a clip does not, so
/// empty the stored clips first (`eraseExistingAttachmentClips`).
///
/// ### Reading
/// Reading consumes: once a list has been read it is emptied, and the new objects are the only copy
/// until they are written again. That also ends the reference cycle between a node and the records
/// on it that name it. Hold a reference to the root of a scene before reading from it: a root
/// straight from the file reader has none, and the records may have been all that kept it. Every
/// object gets a fresh identifier; stored identifiers and track numbers are not read. Objects are
/// registered with the manager, or handed to the caller, with `new`; nothing here deletes them.
///
/// ### Which node
/// `resolve` false means the node itself. `resolve` true means its transform node: the node when
/// its core is a transform, else its parent when that one's core is, else none, and then nothing
/// happens.
///
/// ### Failure
/// Silent. A null node, object, manager or container, a missing attachment or a missing match end
/// the operation, or skip one element, with no effect. Main thread only: the attachment last looked
/// up is kept in a static slot while an operation works.
class KV_ANIMATIONS_API kvAnimationAttachmentInteraction {
  public:
    // The stored forms.
    using AttachmentPtr = osg::FCPtr<osg::AttachmentPtr, osg::AnimationAttachment>;
    using ClipPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationClip>;
    using TrackPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationTrack>;
    using BlockPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationBlock>;
    using CurvePtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationCurve>;
    using ControlPointPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationControlPoint>;

    kvAnimationAttachmentInteraction() = default;
    kvAnimationAttachmentInteraction(const kvAnimationAttachmentInteraction&) = default;
    /// @{
    /// There is no state: assigning changes nothing.
    kvAnimationAttachmentInteraction& operator=(const kvAnimationAttachmentInteraction& other);
    kvAnimationAttachmentInteraction& operator=(kvAnimationAttachmentInteraction&& other) noexcept;
    /// @}

    /// @name Writing
    /// @{

    /// The attachment of `node`, or null. An attachment of a derived type does not count.
    static AttachmentPtr getAnimationAttachment(const osg::NodePtr& node, bool resolve);
    /// Makes sure that the node carries an attachment.
    static void createNewAnimationAttachment(osg::NodePtr node, bool resolve);
    /// Stores one loose curve in place of the stored curve of the same attribute. A curve without
    /// keys is not stored, but the older copy goes all the same.
    static void addToAnimationAttachment(const osg::NodePtr& node, kvAnimationCurve* curve,
                                         bool resolve);
    /// Stores one block with all its curves, keyless ones too, in place of the stored block of the
    /// same name.
    static void addBlockToAnimAttachment(const osg::NodePtr& node, kvAnimationBlock* block,
                                         bool resolve);
    /// Stores one clip, tracks and nested clips in full, behind the clips already stored.
    static void addClipToAnimAttachment(const osg::NodePtr& node, kvAnimationClip* clip,
                                        bool resolve);

    /// @}
    /// @name Reading
    /// @{

    /// Reads the loose curves, registers each with `manager` and empties the stored list.
    static void loadCurvesFromAnimAttachment(const osg::NodePtr& node, kvAnimationManager2* manager,
                                             bool resolve);
    /// The same for the blocks, with activity; a block without a node is read, too.
    static void loadBlocksFromAnimAttachment(const osg::NodePtr& node, kvAnimationManager2* manager,
                                             bool resolve);
    /// The same for the clips: blocks and sub-clips stored directly in a clip first (an older
    /// layout), then its tracks. Curves of camera blocks whose stored node is no camera are bound
    /// to `cameraNode`. Blocks on tracks are dropped when their node is null.
    static void loadClipsFromAnimAttachment(const osg::NodePtr& node, kvAnimationManager2* manager,
                                            osg::NodePtr cameraNode, bool resolve);
    /// Reads the blocks in stored order without registering them and empties the stored list. The
    /// caller owns the blocks.
    static std::vector<kvAnimationBlock*> getBlocksFromAttachment(const AttachmentPtr& attachment);
    /// Reads the oldest form: curves, blocks and clips of blocks, appended to the manager's lists
    /// without identifiers and bindings (clips are registered). Nothing is emptied. The node
    /// itself.
    static void importAnimationAttachment(const osg::NodePtr& node, kvAnimationManager2* manager);

    /// @}
    /// @name Upkeep
    /// Stored objects are found by name, curves by their attribute, byte for byte; the first match
    /// is meant.
    /// @{

    static void subFromAnimationAttachment(const osg::NodePtr& node, kvAnimationCurve* curve,
                                           bool resolve);
    static void subBlockFromAnimAttachment(const osg::NodePtr& node, kvAnimationBlock* block,
                                           bool resolve);
    static void subClipFromAnimAttachment(const osg::NodePtr& node, kvAnimationClip* clip,
                                          bool resolve);
    /// Empties curves, blocks and clips; the attachment stays.
    static void cleanAnimationAttachment(const osg::NodePtr& node, bool resolve);
    /// Empties the clips stored on the node itself.
    static void eraseExistingAttachmentClips(const osg::NodePtr& node);

    /// Makes the loose curves stored on `from` also stored on `to`, bound to `to`. The records are
    /// shared, not copied: the lists of `from` stay as they are until they are read, and each
    /// record counts a reference to `to` on top of the one to its former node. The nodes
    /// themselves, without resolving; a null node does nothing.
    static void transferCurves(osg::NodePtr from, osg::NodePtr to);
    /// The same for blocks and all of their curves.
    static void transferBlocks(osg::NodePtr from, osg::NodePtr to);
    /// The same for clips, which stay bound as they are.
    static void transferClips(osg::NodePtr from, osg::NodePtr to);

    /// @}

  private:
    friend struct kvTestAccess<kvAnimationAttachmentInteraction>;

    static osg::NodePtr resolveTransformNode(const osg::NodePtr& node);

    static CurvePtr storedCurve(const kvAnimationCurve& curve);
    static BlockPtr storedBlock(const kvAnimationBlock& block);
    static ClipPtr storedClip(const kvAnimationClip& clip);
    static void exportPointToCurve(const kvControlPoint& key, const CurvePtr& stored);
    static void exportCurveToBlock(kvAnimationCurve* curve, const BlockPtr& stored);
    static void exportBlockToTrack(kvAnimationBlock* block, const TrackPtr& stored);
    static void exportSequenceToTrack(kvAnimationSequence2* sequence, const TrackPtr& stored);
    static void exportClipToTrack(kvAnimationClip* clip, const TrackPtr& stored);
    static void exportTrackToClip(kvAnimationTrack* track, const ClipPtr& stored);
    /// Writes the older layout, in which a clip holds blocks and sub-clips directly. No writer of
    /// the library uses it; it is kept so that the reader of that layout has something to read.
    static void addSubClip(const ClipPtr& stored, kvAnimationClip* clip);

    static void importTrackToClip(const TrackPtr& stored, kvAnimationClip* clip,
                                  kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void importBlockToTrack(const BlockPtr& stored, kvAnimationTrack* track,
                                   kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void importSequenceToTrack(const BlockPtr& stored, kvAnimationTrack* track,
                                      kvAnimationManager2* manager);
    static void importClipToTrack(const ClipPtr& stored, kvAnimationTrack* track,
                                  kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void importCurveToBlock(const CurvePtr& stored, kvAnimationBlock* block,
                                   kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void loadKeys(const CurvePtr& stored, kvAnimationCurve* curve);
    static void loadBlockFlags(const BlockPtr& stored, kvAnimationBlock* block);
    static void loadTopLevelBlock(const BlockPtr& stored, kvAnimationBlock* block);
    static void loadBlockCurves(const BlockPtr& stored, kvAnimationBlock* block,
                                kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void loadClipFlags(const ClipPtr& stored, kvAnimationClip* clip);
    static void loadDirectContent(const ClipPtr& stored, kvAnimationClip* clip,
                                  kvAnimationManager2* manager, const osg::NodePtr& cameraNode);
    static void importPointToCurve(const ControlPointPtr& stored, kv::detail::KeyImport& keys);
    static void loadSubclip(const ClipPtr& stored, kvAnimationClip* parent,
                            kvAnimationManager2* manager, const osg::NodePtr& cameraNode);

    static AttachmentPtr _animAtt;
};
