#pragma once

namespace kvanim {

class Scene;

/// Throws InputError when a list of stored animation holds a container of another kind, or a node
/// is none. The embedded scene graph leaves such things out while it reads; OpenSG puts them into
/// the list, where every use of them is a crash.
void requireRecordsOfTheirKind(const Scene& scene);

} // namespace kvanim
