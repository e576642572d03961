#pragma once

#include "persistence/persistenceFixture.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace kv::test {

/// Reads records that the test has stored by hand.
class Import : public PersistenceFixture {
  protected:
    using I = kvAnimationAttachmentInteraction;

    kvAnimationCurve* curve(std::size_t i) { return manager().getAnimCurves()->at(i); }
    kvAnimationBlock* block(std::size_t i) { return manager().getBlocks()->at(i); }
    kvAnimationClip* clip(std::size_t i) { return manager().getClips()->at(i); }

    // A clip record on `node` with one track record.
    osg::AnimationTrackPtr clipWithTrack(osg::AnimationClipPtr& clipRecord) {
        clipRecord = osg::AnimationClipBase::create();
        clipRecord->setName("clip");
        attachment(node)->addClip(clipRecord);
        return addTrack(clipRecord);
    }

    static osg::AnimationTrackPtr addTrack(const osg::AnimationClipPtr& clipRecord) {
        const osg::AnimationTrackPtr track = osg::AnimationTrackBase::create();
        clipRecord->addTrack(track);
        return track;
    }

    static osg::AnimationBlockPtr sequenceRecord(const std::string& text, float start, float end) {
        const osg::AnimationBlockPtr record = osg::AnimationBlockBase::create();
        record->setName(text);
        record->setStart(start);
        record->setEnd(end);
        return record;
    }

    static std::vector<std::string> names(const std::vector<kvAnimationBlock*>& blocks) {
        std::vector<std::string> result;
        for (const kvAnimationBlock* b : blocks)
            result.push_back(b->getBlockName());
        return result;
    }

    // What the generator of identifiers will draw next, `n` times. Seeded so that nothing collides:
    // a collision would draw more.
    static std::vector<unsigned> nextDraws(int n) {
        for (unsigned seed = 1;; ++seed) {
            std::vector<unsigned> draws;
            bool fresh = true;
            std::srand(seed);
            for (int i = 0; i < n; ++i) {
                const int r1 = std::rand() & 0x7FFF;
                const int r2 = std::rand() & 0x7FFF;
                const auto draw = static_cast<unsigned>(r1 * (r2 % 100 + 1));
                fresh = fresh && !kvAnimationManager2::checkId(draw) &&
                        std::find(draws.begin(), draws.end(), draw) == draws.end();
                draws.push_back(draw);
            }
            std::srand(seed);
            if (fresh) return draws;
        }
    }
};

} // namespace kv::test
