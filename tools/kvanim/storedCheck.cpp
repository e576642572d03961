// The doctor's look at the stored records, before they are loaded.
#include "storedCheck.h"

#include "scene.h"
#include "storedCurveCheck.h"

#include <kvAnimationAttachmentInteraction.h>
#include <OSGAnimationAttachment.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace kvanim {
namespace {

// Bounds the work over all segments of a scene; see segmentFaults.
constexpr std::size_t kMostSamples = 4000000;
constexpr int kMostSamplesOfASegment = 32;
constexpr int kFewestSamplesOfASegment = 4;

struct StoredBlock {
    osg::AnimationBlockPtr record;
    Place place;
    bool onTrack = false;
};

struct StoredCurve {
    osg::AnimationCurvePtr record;
    Place place;
};

bool add(std::unordered_set<osg::UInt32>& seen, const osg::FieldContainerPtr& record) {
    return seen.insert(osg::getContainerId(record)).second;
}

/// Everything that is stored in a scene. What stands in two places is looked at in the first.
class Records {
  public:
    Records(const Scene& scene, Findings& findings) : _findings(findings) {
        for (const osg::NodePtr& node : scene.nodes())
            addNode(node);
    }

    std::vector<StoredBlock> blocks;
    std::vector<StoredCurve> loose;

  private:
    void addNode(const osg::NodePtr& node) {
        const osg::AnimationAttachmentPtr stored =
            kvAnimationAttachmentInteraction::getAnimationAttachment(node, false);
        if (stored == osg::NullFC || !add(_seen, stored)) return;
        const Place place{nameOf(node), {}, {}, {}};
        osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
        for (osg::UInt32 i = 0; i < curves.getSize(); ++i)
            if (curves[i] != osg::NullFC) loose.push_back({curves[i], place});
        addBlocks(*stored->getMFBlocks(), place, false);
        osg::MFAnimationClipPtr& clips = *stored->getMFClips();
        for (osg::UInt32 i = 0; i < clips.getSize(); ++i)
            addClip(clips[i], place);
    }

    void addBlocks(osg::MFAnimationBlockPtr& records, Place place, bool onTrack) {
        for (osg::UInt32 i = 0; i < records.getSize(); ++i) {
            if (records[i] == osg::NullFC || !add(_seen, records[i])) continue;
            place.block = records[i]->getName();
            blocks.push_back({records[i], place, onTrack});
        }
    }

    void addClip(const osg::AnimationClipPtr& clip, Place place) {
        if (clip == osg::NullFC || !add(_seen, clip)) return;
        place.clip = clip->getName();
        addBlocks(*clip->getMFBlocks(), place, false);
        addClips(*clip->getMFSubclips(), place);
        osg::MFAnimationTrackPtr& tracks = *clip->getMFTracks();
        for (osg::UInt32 i = 0; i < tracks.getSize(); ++i) {
            if (tracks[i] == osg::NullFC) continue;
            addBlocks(*tracks[i]->getMFBlocks(), place, true);
            checkSequences(*tracks[i]->getMFSequences(), place);
            addClips(*tracks[i]->getMFClips(), place);
        }
    }

    void addClips(osg::MFFieldContainerPtr& records, const Place& place) {
        for (osg::UInt32 i = 0; i < records.getSize(); ++i)
            addClip(osg::AnimationClipPtr::dcast(records[i]), place);
    }

    void checkSequences(osg::MFAnimationBlockPtr& records, Place place) {
        for (osg::UInt32 i = 0; i < records.getSize(); ++i) {
            if (records[i] == osg::NullFC || !add(_seen, records[i])) continue;
            place.block = records[i]->getName();
            for (const float frame : {records[i]->getStart(), records[i]->getEnd()})
                checkFrame(frame, place, _findings);
        }
    }

    Findings& _findings;
    std::unordered_set<osg::UInt32> _seen;
};

/// Two bindings are to one scalar when they are equal in this.
using Scalar = std::tuple<std::uint32_t, std::string, unsigned>;

class BlockCheck {
  public:
    BlockCheck(const CurveChecker& curves, StoredTotals& totals, Findings& findings)
        : _curves(curves), _totals(totals), _findings(findings) {}

    void check(const StoredBlock& block) {
        Place place = block.place;
        const osg::NodePtr node = block.record->getAppropriateNode();
        ++_totals.blocks;
        if (node != osg::NullFC) place.node = nameOf(node);
        if (node == osg::NullFC)
            report("node-gone", place,
                   block.onTrack ? "the block has no node, so that loading the scene drops it"
                                 : "the block has no node");
        else if (!_curves.isInScene(node))
            report("node-gone", place, "the block's node is not in the scene");
        checkCurves(block, node != osg::NullFC && _curves.isInScene(node), place);
    }

    void check(const StoredCurve& curve) {
        _totals.keys += curve.record->getMFControlPoints()->getSize();
        ++_totals.curves;
        _curves.check(curve.record, curve.place, true, _findings);
    }

  private:
    void checkCurves(const StoredBlock& block, bool sound, const Place& place) {
        std::set<Scalar> driven;
        osg::MFAnimationCurvePtr& curves = *block.record->getMFCurves();
        std::size_t count = 0;
        for (osg::UInt32 i = 0; i < curves.getSize(); ++i) {
            if (curves[i] == osg::NullFC) continue;
            ++count;
            ++_totals.curves;
            _totals.keys += curves[i]->getMFControlPoints()->getSize();
            // Of a block without a node it is enough to say so once.
            const Binding binding = _curves.check(curves[i], place, sound, _findings);
            if (!binding ||
                driven.insert({binding->container, binding->field, binding->position}).second)
                continue;
            Place here = place;
            here.curve = curves[i]->getBelongs2Attribute();
            report("same-scalar", here, "an earlier curve of the block drives the same scalar");
        }
        if (count == 0) report("empty-block", place, "the block has no curves");
    }

    void report(const char* kind, const Place& place, const std::string& reason) {
        _findings.push_back({kind, place, {}, {}, {}, reason});
    }

    const CurveChecker& _curves;
    StoredTotals& _totals;
    Findings& _findings;
};

std::size_t keyCountOf(const Records& records) {
    std::size_t keys = 0;
    for (const StoredCurve& curve : records.loose)
        keys += curve.record->getMFControlPoints()->getSize();
    for (const StoredBlock& block : records.blocks) {
        osg::MFAnimationCurvePtr& curves = *block.record->getMFCurves();
        for (osg::UInt32 i = 0; i < curves.getSize(); ++i)
            if (curves[i] != osg::NullFC) keys += curves[i]->getMFControlPoints()->getSize();
    }
    return keys;
}

} // namespace

StoredTotals checkStored(const Scene& scene, Findings& findings) {
    const Records records(scene, findings);
    const std::size_t perSegment = kMostSamples / (std::max)(keyCountOf(records), std::size_t(1));
    const int samples =
        static_cast<int>((std::min)((std::max)(perSegment, std::size_t(kFewestSamplesOfASegment)),
                                    std::size_t(kMostSamplesOfASegment)));
    const CurveChecker curves(scene, samples);
    StoredTotals totals;
    BlockCheck check(curves, totals, findings);
    for (const StoredBlock& block : records.blocks)
        check.check(block);
    for (const StoredCurve& curve : records.loose)
        check.check(curve);
    return totals;
}

} // namespace kvanim
