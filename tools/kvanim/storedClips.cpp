// Clips in a file can refer to each other in any way; only trees of sensible size can be loaded.
#include "storedClips.h"

#include "errors.h"
#include "scene.h"

#include <kvAnimationAttachmentInteraction.h>
#include <OSGAnimationAttachment.h>

#include <algorithm>
#include <unordered_map>

namespace kvanim {
namespace {

constexpr int kDeepest = 256;
constexpr double kMostCopies = 1e6;

struct Size {
    bool open = true; // still being measured: whoever meets it again is inside it
    int height = 1;
    double copies = 1.0;
};

class Measure {
  public:
    explicit Measure(std::string file) : _file(std::move(file)) {}

    Size of(const osg::AnimationClipPtr& clip, int depth) {
        const osg::UInt32 id = osg::getContainerId(clip);
        const auto known = _sizes.find(id);
        if (known != _sizes.end()) {
            if (known->second.open) failNestedInItself(clip);
            return known->second;
        }
        if (depth > kDeepest) fail(clip, tooDeep());
        _sizes[id] = Size();
        Size size;
        add(size, *clip->getMFSubclips(), depth);
        osg::MFAnimationTrackPtr& tracks = *clip->getMFTracks();
        for (osg::UInt32 i = 0; i < tracks.getSize(); ++i)
            if (tracks[i] != osg::NullFC) add(size, *tracks[i]->getMFClips(), depth);
        if (size.height > kDeepest) fail(clip, tooDeep());
        if (size.copies > kMostCopies)
            fail(clip, "holds more than a million nested clips, counted at every place");
        size.open = false;
        _sizes[id] = size;
        return size;
    }

  private:
    void add(Size& size, osg::MFFieldContainerPtr& nested, int depth) {
        for (osg::UInt32 i = 0; i < nested.getSize(); ++i) {
            const osg::AnimationClipPtr clip = osg::AnimationClipPtr::dcast(nested[i]);
            if (clip == osg::NullFC) continue;
            const Size inner = of(clip, depth + 1);
            size.height = (std::max)(size.height, inner.height + 1);
            size.copies += inner.copies;
        }
    }

    static std::string tooDeep() {
        return "is part of a nesting of more than " + std::to_string(kDeepest) + " clips";
    }

    /// Opens the circle as well: records that hold each other would outlive the scene.
    [[noreturn]] void failNestedInItself(const osg::AnimationClipPtr& clip) const {
        const InputError error(_file, "clip \"" + clip->getName() + "\" is nested in itself");
        clip->clearSubclips();
        osg::MFAnimationTrackPtr& tracks = *clip->getMFTracks();
        for (osg::UInt32 i = 0; i < tracks.getSize(); ++i)
            if (tracks[i] != osg::NullFC) tracks[i]->clearClips();
        throw error;
    }

    [[noreturn]] void fail(const osg::AnimationClipPtr& clip, const std::string& what) const {
        throw InputError(_file, "clip \"" + clip->getName() + "\" " + what);
    }

    std::string _file;
    std::unordered_map<osg::UInt32, Size> _sizes;
};

} // namespace

void requireMeasuredClips(const Scene& scene) {
    Measure measure(scene.file());
    for (const osg::NodePtr& node : scene.nodes()) {
        const osg::AnimationAttachmentPtr stored =
            kvAnimationAttachmentInteraction::getAnimationAttachment(node, false);
        if (stored == osg::NullFC) continue;
        osg::MFAnimationClipPtr& clips = *stored->getMFClips();
        for (osg::UInt32 i = 0; i < clips.getSize(); ++i)
            if (clips[i] != osg::NullFC) measure.of(clips[i], 1);
    }
}

} // namespace kvanim
