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
    /// `inputSize`, in bytes of text or of unpacked binary data, bounds the memory that may be
    /// taken and the work that is spent on searching for cycles and on moving nodes.
    explicit SceneBuilder(std::size_t inputSize)
        : _stepsLeft(16 * inputSize + 1000000),
          // The input is in memory itself.
          _memoryLeft(kMemoryAlways + (kMemoryPerByte - 1) * inputSize) {}
    ~SceneBuilder();

    SceneBuilder(const SceneBuilder&) = delete;
    SceneBuilder& operator=(const SceneBuilder&) = delete;

    /// What is said of a file whose scene would take too much memory.
    static constexpr char kTooLarge[] =
        "its containers take more memory than a file of its size can be meant to";

    /// Counts memory that the scene or its reader takes. \return false when it is too much: the
    /// file must then be refused.
    bool takeMemory(std::size_t bytes) {
        if (bytes > _memoryLeft)
            _tooLarge = true;
        else
            _memoryLeft -= bytes;
        return !_tooLarge;
    }

    /// Says that memory is no longer taken, or may be taken on top of the limit.
    void giveMemory(std::size_t bytes) { _memoryLeft += bytes; }

    /// Whether too much memory was taken, be it for containers made here.
    bool isTooLarge() const { return _tooLarge; }

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

    /// Keeps alive what a field of `holder` points at that does not count, also behind the end if
    /// that pointer is all that there is to it and is still there: it would dangle. The field's
    /// description must live until release().
    void holdUncounted(const FieldContainerPtr& holder, const FieldInfo& field,
                       const FieldContainerPtr& target);

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
    /// Memory that reading may take, whatever the size of the file ...
    static constexpr std::size_t kMemoryAlways = std::size_t(64) << 20;
    /// ... and beyond that for each byte of the file. A file of nothing but names of large
    /// containers would otherwise take a hundred times its size.
    static constexpr std::size_t kMemoryPerByte = 10;
    /// What a container costs beside its object: bookkeeping here, in the factory and in what it
    /// belongs to, and in the heap.
    static constexpr std::size_t kContainerOverhead = 96;

    void count(const FieldContainerPtr& container);

    struct Created {
        UInt32 id;
        bool counted;
    };

    struct Uncounted {
        UInt32 holder;
        const FieldInfo* field;
        FieldContainerPtr target;
    };

    static bool stillPoints(const Uncounted& pointer);
    void takeApart();

    std::vector<Created> _created;
    std::vector<FieldContainerPtr> _orphans;
    std::vector<FieldContainerPtr> _shared;
    std::vector<Uncounted> _uncounted;
    std::size_t _stepsLeft;
    std::size_t _memoryLeft;
    bool _tooLarge = false;
    bool _released = false;
};

} // namespace osg::files
