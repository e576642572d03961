// Reading takes time in proportion to what is stored. Eight times as much may take up to three
// times as long as it should, far below the sixty-four times of a quadratic step.

#include "persistence/persistenceFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <vector>

namespace {

class Growth : public kv::test::PersistenceFixture {
  protected:
    using I = kvAnimationAttachmentInteraction;

    // Seconds that `read` takes on what `store` stored, the best of three.
    template <class Store, class Read>
    static double seconds(int size, Store store, Read read) {
        double best = std::numeric_limits<double>::max();
        for (int run = 0; run < 3; ++run) {
            store(size);
            const auto begin = std::chrono::steady_clock::now();
            read();
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
            best = std::min(best, taken.count());
        }
        return best;
    }

    template <class Store, class Read>
    static void expectLinear(int size, Store store, Read read) {
        const double some = seconds(size, store, read);
        const double many = seconds(8 * size, store, read);
        EXPECT_LT(many, 24.0 * some + 0.01) << size << ": " << some << " s, eight times: " << many;
    }
};

TEST_F(Growth, ofTheKeysOfACurve) {
    expectLinear(
        2000,
        [this](int n) {
            std::vector<float> frames;
            for (int i = 0; i < n; ++i)
                frames.push_back(static_cast<float>(i));
            attachment(node)->addCurve(curveRecord(node, "translateX", frames));
        },
        [this] { I::loadCurvesFromAnimAttachment(node, &manager(), false); });
}

TEST_F(Growth, ofTheCurvesOfABlock) {
    expectLinear(
        500,
        [this](int n) {
            const osg::AnimationBlockPtr block = blockRecord(node, "b");
            for (int i = 0; i < n; ++i) {
                block->addCurve(curveRecord(node, "translateX", {1.0F, 2.0F}));
            }
            attachment(node)->addBlock(block);
        },
        [this] { I::loadBlocksFromAnimAttachment(node, &manager(), false); });
}

TEST_F(Growth, ofTheItemsOfATrack) {
    expectLinear(
        500,
        [this](int n) {
            const osg::AnimationClipPtr clip = osg::AnimationClipBase::create();
            const osg::AnimationTrackPtr track = osg::AnimationTrackBase::create();
            clip->addTrack(track);
            for (int i = 0; i < n; ++i) {
                const osg::AnimationBlockPtr block = blockRecord(node, "b");
                const float first = static_cast<float>((i * 7919) % n);
                block->addCurve(curveRecord(node, "translateX", {first, first + 5.0F}));
                track->addBlock(block);
                const osg::AnimationBlockPtr item = osg::AnimationBlockBase::create();
                item->setStart(first);
                track->addSequence(item);
            }
            attachment(node)->addClip(clip);
        },
        [this] { I::loadClipsFromAnimAttachment(node, &manager(), osg::NullFC, false); });
}

TEST_F(Growth, ofThousandsOfEmptyTracks) {
    expectLinear(
        1000,
        [this](int n) {
            const osg::AnimationClipPtr clip = osg::AnimationClipBase::create();
            for (int i = 0; i < n; ++i)
                clip->addTrack(osg::AnimationTrackBase::create());
            attachment(node)->addClip(clip);
        },
        [this] { I::loadClipsFromAnimAttachment(node, &manager(), osg::NullFC, false); });
}

TEST_F(Growth, ofAnExportedCurve) {
    kvAnimationCurve* const curve = keep(new kvAnimationCurve("translateX"));
    expectLinear(
        2000,
        [&](int n) {
            std::vector<kvControlPoint> keys;
            for (int i = 0; i < n; ++i)
                keys.emplace_back(static_cast<double>(i), 0.0, 6);
            curve->set("translateX", keys);
            attachment(node);
        },
        [&] { I::addToAnimationAttachment(node, curve, false); });
}

} // namespace
