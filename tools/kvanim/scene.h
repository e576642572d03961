#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <string>
#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationCurve;

namespace kvanim {

/// A scene and the animation objects that were read from it. The manager is one for the process, so
/// there is one Scene at a time; it owns the root (one reference), the blocks, curves and clips.
class Scene {
  public:
    /// Reads the scene file and takes all animation out of its attachments. Throws InputError.
    static Scene load(const std::string& file);

    /// Reads the scene file and leaves its animation in the attachments. Throws InputError, also
    /// for clips that are nested in themselves or without measure.
    static Scene read(const std::string& file);

    /// Takes all animation out of the attachments of a scene that was read.
    void takeAnimation();

    /// Holds a reference to the root from now on, beside those that others have.
    Scene(const osg::NodePtr& root, std::string file);
    Scene(Scene&& other) noexcept;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    Scene& operator=(Scene&&) = delete;
    ~Scene();

    const osg::NodePtr& root() const { return _root; }
    const std::string& file() const { return _file; }

    /// Blocks on nodes, in the order of the scene.
    const std::vector<kvAnimationBlock*>& blocks() const;
    /// Curves that belong to no block.
    const std::vector<kvAnimationCurve*>& curves() const;
    /// Clips, from the scene's root.
    const std::vector<kvAnimationClip*>& clips() const;
    /// Every node, parents first, children in order.
    std::vector<osg::NodePtr> nodes() const;

    /// Adds a block made by the caller, who gives it away.
    void addBlock(kvAnimationBlock* block);

    /// Adds a clip, whose blocks are on no node's own list.
    void addClip(kvAnimationClip* clip);

    /// Stores all animation in the scene and writes it. Throws InputError; then the file is as it
    /// was.
    void save(const std::string& file);

    /// Writes the scene as it stands, animation that was taken out left out. Throws InputError;
    /// then the file is as it was.
    void write(const std::string& file) const;

    /// Writes the values of all blocks and clips at the frame into the scene graph.
    void apply(float frame) const;

  private:
    osg::NodePtr _root;
    std::string _file;
};

/// The node's name, or "(unnamed)"; for a null node "(no node)".
std::string nameOf(const osg::NodePtr& node);

/// The earliest start and latest end over all blocks and clips; {0, 0} without keys.
struct FrameRange {
    float start = 0.0F;
    float end = 0.0F;
};
FrameRange rangeOf(const Scene& scene);

} // namespace kvanim
