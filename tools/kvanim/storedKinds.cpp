// Stored animation as it came from a file: are the records what their lists say that they are?
#include "storedKinds.h"

#include "errors.h"
#include "scene.h"

#include <kvAnimationAttachmentInteraction.h>
#include <OSGAnimationAttachment.h>

#include <string>
#include <unordered_set>
#include <vector>

namespace kvanim {
namespace {

/// Looks at every pointer through its base class, whose virtual functions any container has.
class KindCheck {
  public:
    explicit KindCheck(std::string file) : _file(std::move(file)) {}

    void check(const osg::AnimationAttachmentPtr& stored) {
        checkCurves(*stored->getMFCurves());
        checkBlocks(*stored->getMFBlocks());
        requireAll<osg::AnimationClip>(*stored->getMFClips(), "a clip");
        take(*stored->getMFClips());
        // Clips nest in clips: an explicit stack, since files nest them at will.
        while (!_open.empty()) {
            const osg::AnimationClipPtr clip = _open.back();
            _open.pop_back();
            checkClip(clip);
        }
    }

  private:
    template <class Kind, class Pointer>
    void require(const Pointer& pointer, const char* place) const {
        const osg::FieldContainerPtr container = pointer;
        if (container == osg::NullFC) return;
        if (container->getType().isDerivedFrom(Kind::getClassType())) return;
        throw InputError(_file, std::string("is not a readable scene: a container of type ") +
                                    container->getType().getCName() + " stands for " + place);
    }

    template <class Kind, class List>
    void requireAll(List& list, const char* place) const {
        for (osg::UInt32 i = 0; i < list.getSize(); ++i)
            require<Kind>(list[i], place);
    }

    bool isNew(const osg::FieldContainerPtr& record) {
        return record != osg::NullFC && _seen.insert(osg::getContainerId(record)).second;
    }

    void checkCurves(osg::MFAnimationCurvePtr& curves) {
        requireAll<osg::AnimationCurve>(curves, "a curve");
        for (osg::UInt32 i = 0; i < curves.getSize(); ++i) {
            if (!isNew(curves[i])) continue;
            require<osg::Node>(curves[i]->getAppropriateNode(), "the node of a curve");
            require<osg::Node>(curves[i]->getAFAppNode(), "the node of a curve");
            requireAll<osg::AnimationControlPoint>(*curves[i]->getMFControlPoints(), "a key");
        }
    }

    void checkBlocks(osg::MFAnimationBlockPtr& blocks) {
        requireAll<osg::AnimationBlock>(blocks, "a block");
        for (osg::UInt32 i = 0; i < blocks.getSize(); ++i) {
            if (!isNew(blocks[i])) continue;
            require<osg::Node>(blocks[i]->getAppropriateNode(), "the node of a block");
            checkCurves(*blocks[i]->getMFCurves());
        }
    }

    void checkClip(const osg::AnimationClipPtr& clip) {
        checkBlocks(*clip->getMFBlocks());
        take(*clip->getMFSubclips());
        osg::MFAnimationTrackPtr& tracks = *clip->getMFTracks();
        requireAll<osg::AnimationTrack>(tracks, "a track");
        for (osg::UInt32 i = 0; i < tracks.getSize(); ++i) {
            if (!isNew(tracks[i])) continue;
            checkBlocks(*tracks[i]->getMFBlocks());
            checkBlocks(*tracks[i]->getMFSequences());
            take(*tracks[i]->getMFClips());
        }
    }

    /// Lists of nested clips may hold anything; what is no clip is nowhere looked at.
    template <class List>
    void take(List& clips) {
        for (osg::UInt32 i = 0; i < clips.getSize(); ++i) {
            const osg::AnimationClipPtr clip = osg::AnimationClipPtr::dcast(clips[i]);
            if (isNew(clip)) _open.push_back(clip);
        }
    }

    std::string _file;
    std::unordered_set<osg::UInt32> _seen;
    std::vector<osg::AnimationClipPtr> _open;
};

} // namespace

void requireRecordsOfTheirKind(const Scene& scene) {
    KindCheck check(scene.file());
    for (const osg::NodePtr& node : scene.nodes()) {
        const osg::AnimationAttachmentPtr stored =
            kvAnimationAttachmentInteraction::getAnimationAttachment(node, false);
        if (stored != osg::NullFC) check.check(stored);
    }
}

} // namespace kvanim
