#pragma once

#include <cstdint>

namespace kv::detail {

/// The memory that writing into one container touches, to be asked for some writes ahead, because
/// the containers of a large scene do not fit into the caches and each leads to the next.
///
/// Addresses as they were once. Nothing is read through them: where the scene has changed since,
/// nothing but time is lost.
class WrittenMemory {
  public:
    WrittenMemory() = default;

    /// That of the container with this id as the scene is now.
    static WrittenMemory of(std::uint32_t container);

    void prefetch() const;

  private:
    const void* _container = nullptr;
    const void* _nodes = nullptr;      // of a core: the list of its nodes
    const void* _slot = nullptr;       // of a node: where it has the attachment with its angles
    const void* _attachment = nullptr; // that attachment
};

} // namespace kv::detail
