#pragma once

#include <string>
#include <vector>

namespace kvanim {

class Scene;

/// What became of the animation stored on one node.
struct NodeConversion {
    std::string node;
    std::vector<std::string> converted; ///< a line a block and a loose curve
    std::vector<std::string> dropped;   ///< a line a curve and a clip, each with the reason
};

struct Conversion {
    std::vector<NodeConversion> nodes; ///< those that carried stored animation, in scene order
    std::size_t points = 0;            ///< points that the scene's animation nodes gained
};

/// Turns the stored animation of a scene, which must not have been taken out, into animation nodes.
/// Throws InputError when the nodes did not gain exactly the points that the lines tell of.
Conversion convertScene(const Scene& scene);

} // namespace kvanim
