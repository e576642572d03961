// The keys of stored curves: read in one go, with the result of inserting them one after the other.

#include "persistence/persistenceFixture.h"

#include "keys/editCounter.h"
#include "keys/walkCount.h"
#include "manager/identifiers.h"
#include "support/access/kvControlPoint.h"
#include "support/access/kvControlPointManager.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

using Links = kvTestAccess<kvControlPoint>;

const std::vector<kvControlPoint>& keysOf(const kvAnimationCurve& curve) {
    return curve.getCPs();
}

bool same(kvControlPoint::Point a, kvControlPoint::Point b) {
    const auto equal = [](double v, double w) {
        return std::memcmp(&v, &w, sizeof v) == 0 || (v != v && w != w);
    };
    return equal(a.x, b.x) && equal(a.y, b.y);
}

class StoredKeys : public kv::test::PersistenceFixture {
  protected:
    osg::Vec2f point(float x) { return osg::Vec2f(x, static_cast<float>(random() % 100) / 7.0F); }

    // Random types and handles at these frames.
    osg::AnimationCurvePtr record(const std::vector<float>& frames) {
        const osg::AnimationCurvePtr stored = curveRecord(node, "translateX", frames);
        osg::MFAnimationControlPointPtr& keys = *stored->getMFControlPoints();
        for (osg::UInt32 i = 0; i < keys.getSize(); ++i) {
            keys[i]->setTangentType(static_cast<osg::UInt8>(random() % 8));
            keys[i]->setControlPoint(point(frames[i]));
            keys[i]->setInTangent(point(frames[i] - 3.0F));
            keys[i]->setOutTangent(point(frames[i] + 2.0F));
        }
        return stored;
    }

    static void insertOneByOne(const osg::AnimationCurvePtr& stored, kvAnimationCurve& curve) {
        osg::MFAnimationControlPointPtr& keys = *stored->getMFControlPoints();
        for (osg::UInt32 i = 0; i < keys.getSize(); ++i) {
            const osg::Vec2f& key = keys[i]->getControlPoint();
            const osg::Vec2f& in = keys[i]->getInTangent();
            const osg::Vec2f& out = keys[i]->getOutTangent();
            curve.importControlPoint(key[0], key[1], in[0], in[1], out[0], out[1],
                                     static_cast<int>(keys[i]->getTangentType()));
        }
    }

    static void expectSameKeys(const kvAnimationCurve& curve, const kvAnimationCurve& expected) {
        const std::vector<kvControlPoint>& keys = keysOf(curve);
        ASSERT_EQ(keys.size(), keysOf(expected).size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const kvControlPoint& other = keysOf(expected)[i];
            EXPECT_EQ(keys[i].getId(), other.getId()) << "key " << i;
            EXPECT_EQ(keys[i].getTangentType(), other.getTangentType()) << "key " << i;
            EXPECT_TRUE(same(keys[i].getPoint(), other.getPoint())) << "key " << i;
            EXPECT_TRUE(same(keys[i].getInTangent(), other.getInTangent())) << "key " << i;
            EXPECT_TRUE(same(keys[i].getOutTangent(), other.getOutTangent())) << "key " << i;
            EXPECT_EQ(Links::previous(keys[i]), i == 0 ? nullptr : &keys[i - 1]) << "key " << i;
            EXPECT_EQ(Links::next(keys[i]), i + 1 == keys.size() ? nullptr : &keys[i + 1])
                << "key " << i;
        }
    }

    std::mt19937 random{3};
};

} // namespace

TEST_F(StoredKeys, areReadAsIfInsertedOneByOne) {
    for (int round = 0; round < 200; ++round) {
        std::vector<float> frames;
        for (std::size_t i = random() % 40; i != 0; --i)
            frames.push_back(static_cast<float>(frames.size()) * 0.5F);
        // Most files are in order; some are not, and some hold what is no number.
        if (!frames.empty() && round % 3 != 0) {
            std::swap(frames[random() % frames.size()], frames[random() % frames.size()]);
            frames[random() % frames.size()] = frames[random() % frames.size()];
            if (round % 5 == 0)
                frames[random() % frames.size()] = std::numeric_limits<float>::quiet_NaN();
        }
        const osg::AnimationCurvePtr stored = record(frames);
        kvAnimationCurve expected("translateX");
        insertOneByOne(stored, expected);
        attachment(node)->addCurve(stored);
        const std::size_t drawn = kv::detail::identifierStore().issued().size();
        manager().importCurves(node, false);
        EXPECT_GE(kv::detail::identifierStore().issued().size(), drawn + frames.size() + 1);
        expectSameKeys(*manager().getAnimCurves()->back(), expected);
        if (HasFailure()) return;
    }
}

TEST_F(StoredKeys, areReadInLinearTime) {
    std::vector<float> frames(10000);
    for (std::size_t i = 0; i < frames.size(); ++i)
        frames[i] = static_cast<float>(i);
    attachment(node)->addCurve(record(frames));
    const std::uint64_t before = kv::detail::walkedKeys;
    manager().importCurves(node, false);
    EXPECT_LE(kv::detail::walkedKeys - before, 3 * frames.size());
}

// Otherwise every other curve would have to look through its keys again.
TEST_F(StoredKeys, areWrittenAndReadWithoutCountingAsEdits) {
    manager().addCurve(makeCurve(node, "translateX", {1.0F, 2.0F, 3.0F}));
    manager().addAnimationBlock(makeBlock(node, "block", {1.0F, 2.0F, 3.0F}));
    const kvAnimationCurve& curve = *manager().getAnimCurves()->front();
    const std::uint64_t before = kv::detail::currentKeyEdit();
    manager().exportCurves();
    manager().exportBlocks();
    manager().importCurves(node, false);
    manager().importBlocks(node, false);
    EXPECT_EQ(kv::detail::currentKeyEdit(), before);
    EXPECT_TRUE(kvTestAccess<kvControlPointManager>::isKnownLinked(curve));
}
