// Items outside their clip. The range of a clip ends with the blocks and clips that start last on
// their tracks, and sequences do not widen it, so that an item can well reach beyond it.
#include "clipCheck.h"

#include "numbers.h"
#include "scene.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

namespace kvanim {
namespace {

struct Item {
    const char* what;
    std::string name;
    float start;
    float end;
};

class ClipCheck {
  public:
    explicit ClipCheck(Findings& findings) : _findings(findings) {}

    void check(kvAnimationClip& clip) {
        const FrameRange range{clip.getStartFrame(), clip.getEndFrame()};
        for (kvAnimationTrack* track : clip.getTracks()) {
            for (kvAnimationBlock* block : track->getBlocks())
                check(
                    {"block", block->getBlockName(), block->getStartFrame(), block->getEndFrame()},
                    nameOf(block->getAppropriateNode()), clip, range);
            for (kvAnimationSequence2* item : track->getSequences())
                check({"sequence", item->getSequence(), item->getStartFrame(), item->getEndFrame()},
                      {}, clip, range);
            for (kvAnimationClip* nested : track->getClips()) {
                check({"clip", nested->getName(), nested->getStartFrame(), nested->getEndFrame()},
                      {}, clip, range);
                check(*nested);
            }
        }
    }

  private:
    void check(const Item& item, const std::string& node, const kvAnimationClip& clip,
               const FrameRange& range) {
        if (item.start > item.end) return; // covers nothing
        if (item.start >= range.start && item.end <= range.end) return;
        if (!(item.start <= item.end)) return; // NaN: reported with the keys
        const Place place{node, clip.getName(), item.name, {}};
        const std::string covered =
            range.start > range.end
                ? std::string("covers no frames")
                : "covers the frames " + shortest(range.start) + " to " + shortest(range.end);
        _findings.push_back(
            {"outside-clip",
             place,
             {},
             item.start,
             item.end,
             std::string("the ") + item.what + " reaches beyond its clip, which " + covered});
    }

    Findings& _findings;
};

} // namespace

void checkClips(const Scene& scene, Findings& findings) {
    ClipCheck check(findings);
    for (kvAnimationClip* clip : scene.clips())
        check.check(*clip);
}

} // namespace kvanim
