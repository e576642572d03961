#pragma once

// The scene that a reader is putting together: it is handed out whole, or taken apart again.

#include "files/containerTypes.h"

#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGNode.h>

#include <vector>

namespace osg::files {

/// Makes containers for a reader and keeps account of them.
///
/// Unless release() is called, the destructor destroys every container that was made, whatever
/// points at what by then.
class SceneBuilder {
  public:
    /// `inputSize` bounds the work that is spent on searching for cycles and on moving nodes.
    explicit SceneBuilder(std::size_t inputSize) : _stepsLeft(16 * inputSize + 1000000) {}
    ~SceneBuilder();

    SceneBuilder(const SceneBuilder&) = delete;
    SceneBuilder& operator=(const SceneBuilder&) = delete;

    /// A new container. Its pointer fields count as filled but not counted until markCounted().
    FieldContainerPtr create(const TypeInfo& type);

    /// How many were made; the last one has the number below.
    std::size_t numCreated() const { return _created.size(); }

    /// Says that container number `number` now counts what its pointer fields point at, so that
    /// its destruction releases that.
    void markCounted(std::size_t number) { _created[number].counted = true; }

    /// A new node with the core; a new `Group` when it is null.
    NodePtr makeNode(const NodeCorePtr& core);

    /// Gives a node the core that every node of a file has.
    void ensureCore(const NodePtr& node);

    /// Keeps alive what belongs nowhere, until the end; then it goes unless somebody took it.
    void holdOrphan(const FieldContainerPtr& container);

    /// Keeps alive what stands in several places while these are put together.
    void holdShared(const FieldContainerPtr& container);

    /// Whether the container was made here.
    bool owns(const FieldContainerPtr& container) const;

    /// Whether `child` may be put below `parent` without becoming its own ancestor.
    bool mayBeChild(const NodePtr& parent, const NodePtr& child);

    /// Whether a node may still be taken away from its parent, which costs as much as there are
    /// children behind it. Files made to move nodes about for hours are not worth that.
    bool mayMove(const NodePtr& node);

    /// Hands the scene over: nothing is destroyed but orphans.
    void release();

  private:
    struct Created {
        UInt32 id;
        bool counted;
    };

    void takeApart();

    std::vector<Created> _created;
    std::vector<FieldContainerPtr> _orphans;
    std::vector<FieldContainerPtr> _shared;
    std::size_t _stepsLeft;
    bool _released = false;
};

} // namespace osg::files
