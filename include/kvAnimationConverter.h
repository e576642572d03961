#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

namespace osg {
class AnimationBlock;
class AnimationClip;
class AnimationControlPoint;
class AnimationCurve;
class AnimationTrack;
class AnimCurve;
class AnimNode;
class AnimObject;
} // namespace osg

/// Turns the animation records stored on the nodes of a scene (kvAnimationAttachmentInteraction)
/// into the animation nodes of the host, which hang under the animation attachment of each animated
/// node.
///
/// One way: the records of every visited node are removed, whatever became of them. A block becomes
/// a block node with one curve node for each channel that can be keyed on the scene node, filled or
/// empty. A loose curve goes into the channel of its name and is dropped when there is none. Stored
/// clips are lost. Keys turn from frames into seconds by the host's frame rate, their handles into
/// offsets from the key; tangent types are not carried over.
///
/// Channels are found by the bound field of a curve, or by its attribute when it has no bound
/// field. Blocks know older spellings: "translate" stands for "translation" and "rotate" for
/// "rotation".
///
/// Records may hold references to the nodes of their scene. Hold the root while it is converted, or
/// it may go with them.
///
/// Silent, and for the main thread.
class KV_ANIMATIONS_API kvAnimationConverter {
  public:
    /// Converts `node` and everything below it. Null does nothing.
    static void convert(const osg::NodePtr& node);
    /// Converts `node`, then each of its children.
    static void convertR(const osg::NodePtr& node);

  private:
    friend struct kvTestAccess<kvAnimationConverter>;

    using BlockPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationBlock>;
    using ClipPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationClip>;
    using ControlPointPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationControlPoint>;
    using CurvePtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationCurve>;
    using TrackPtr = osg::FCPtr<osg::FieldContainerPtr, osg::AnimationTrack>;
    using AnimCurvePtr = osg::FCPtr<osg::FCPtr<osg::NodeCorePtr, osg::AnimObject>, osg::AnimCurve>;
    using AnimNodePtr = osg::FCPtr<osg::NodePtr, osg::AnimNode>;

    static void convertBlock(const BlockPtr& stored, const osg::NodePtr& node);
    static void convertCurve(const CurvePtr& stored, const AnimNodePtr& curveNode);
    static void convertPoint(const ControlPointPtr& stored, const AnimCurvePtr& curve);
    /// The node of a clip, without its tracks; `convertR` never asks for it.
    static AnimNodePtr convertClip(const ClipPtr& stored);
    /// @{
    /// Neither tracks nor sequences have a counterpart.
    static void convertTrack(const TrackPtr&) {}
    static void convertSequence(const BlockPtr&) {}
    /// @}

    kvAnimationConverter() {}
    ~kvAnimationConverter() {}
    kvAnimationConverter& operator=(const kvAnimationConverter&) { return *this; }
};
