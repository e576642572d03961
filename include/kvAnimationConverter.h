#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

/// Turns the animation records stored on the nodes of a scene (kvAnimationAttachmentInteraction)
/// into the animation nodes of the host, which hang under the animation attachment of each animated
/// node.
///
/// One way: the records of every visited node are removed, whatever became of them. Blocks become
/// blocks with one curve node for each channel that can be keyed on the node, filled or empty. A
/// loose curve goes into the channel of its name and is dropped when there is none. Stored clips
/// are lost. Keys turn from frames into seconds by the host's frame rate, their handles into
/// offsets.
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

    kvAnimationConverter() {}
    ~kvAnimationConverter() {}
    kvAnimationConverter& operator=(const kvAnimationConverter&) { return *this; }
};
