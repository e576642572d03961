// Reading many stored keys in one go, compared with inserting them one after the other.
#include "keys/keyImport.h"

#include "keys/keyListFixture.h"
#include "manager/identifiers.h"

#include <kvAnimationCurve.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace kv::test;
using kv::detail::KeyImport;

namespace {

struct Stored {
    float x;
    float y;
    float inX;
    float inY;
    float outX;
    float outY;
    int type;
};

kvControlPoint::Point pointOf(float x, float y) {
    return {static_cast<double>(x), static_cast<double>(y)};
}

void importAll(kvAnimationCurve& curve, const std::vector<Stored>& keys) {
    KeyImport import(curve, keys.size());
    for (const Stored& key : keys)
        import.add(pointOf(key.x, key.y), pointOf(key.inX, key.inY), pointOf(key.outX, key.outY),
                   key.type);
}

void importOneByOne(kvAnimationCurve& curve, const std::vector<Stored>& keys) {
    for (const Stored& key : keys)
        curve.importControlPoint(key.x, key.y, key.inX, key.inY, key.outX, key.outY, key.type);
}

// Bit for bit, so that a NaN equals itself and the two zeros differ.
bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}
bool same(kvControlPoint::Point a, kvControlPoint::Point b) {
    return same(a.x, b.x) && same(a.y, b.y);
}

std::ptrdiff_t currentPlace(kvAnimationCurve& curve) {
    return State::current(curve) == nullptr ? -1 : State::current(curve) - keysOf(curve).data();
}

void expectSame(kvAnimationCurve& curve, kvAnimationCurve& expected) {
    ASSERT_EQ(keysOf(curve).size(), keysOf(expected).size());
    expectLinked(curve);
    for (std::size_t i = 0; i < keysOf(curve).size(); ++i) {
        const kvControlPoint& a = keyAt(curve, i);
        const kvControlPoint& b = keyAt(expected, i);
        EXPECT_EQ(a.getId(), b.getId()) << "key " << i;
        EXPECT_EQ(a.getTangentType(), b.getTangentType()) << "key " << i;
        EXPECT_TRUE(same(a.getPoint(), b.getPoint())) << "key " << i;
        EXPECT_TRUE(same(a.getInTangent(), b.getInTangent())) << "incoming handle of key " << i;
        EXPECT_TRUE(same(a.getOutTangent(), b.getOutTangent())) << "outgoing handle of key " << i;
        EXPECT_TRUE(same(a.getOldPoint(), b.getOldPoint())) << "key " << i;
        EXPECT_FALSE(a.isSelected()) << "key " << i;
    }
    EXPECT_EQ(currentPlace(curve), currentPlace(expected));
    EXPECT_EQ(State::count(curve), State::count(expected));
    EXPECT_EQ(State::isKnownSorted(curve), State::isKnownSorted(expected));
    EXPECT_EQ(State::isKnownLinked(curve), State::isKnownLinked(expected));
    EXPECT_EQ(State::hasForeignLinks(curve), State::hasForeignLinks(expected));
}

class Imports : public ::testing::Test {
  protected:
    // `before` makes the curve that the keys come into, the same way each time.
    template <class Before>
    void compare(const std::vector<Stored>& keys, Before before) {
        kvAnimationCurve curve("x");
        kvAnimationCurve expected("x");
        before(curve);
        before(expected);
        importAll(curve, keys);
        importOneByOne(expected, keys);
        expectSame(curve, expected);
    }
    void compare(const std::vector<Stored>& keys) {
        compare(keys, [](kvAnimationCurve&) {});
    }

    float number() { return static_cast<float>(random() % 2000) / 7.0F - 100.0F; }

    // Types that occur in files, and one that means nothing.
    Stored keyAtFrame(float x) {
        return {
            x, number(), number(), number(), number(), number(), static_cast<int>(random() % 8)};
    }

    std::vector<Stored> ascending(std::size_t count) {
        std::vector<Stored> keys;
        float x = number();
        for (std::size_t i = 0; i < count; ++i) {
            keys.push_back(keyAtFrame(x));
            x += static_cast<float>(random() % 100 + 1) * 0.25F;
        }
        return keys;
    }

    std::mt19937 random{7};
};

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST_F(Imports, noKeyLeavesTheListAsItWas) {
    compare({});
    compare({}, [](kvAnimationCurve& curve) {
        curve.importControlPoint(1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F, 5);
    });
}

TEST_F(Imports, aSingleKeyKeepsItsHandles) {
    compare({{1.0F, 2.0F, -3.0F, 4.0F, 5.0F, -6.0F, 5}});
    kvAnimationCurve curve("x");
    importAll(curve, {{1.0F, 2.0F, -3.0F, 4.0F, 5.0F, -6.0F, 5}});
    EXPECT_EQ(keyAt(curve, 0).getInTangent().x, -3.0);
}

TEST_F(Imports, ascendingKeysComeOutAsOneByOne) {
    for (std::size_t count = 1; count < 60; ++count)
        compare(ascending(count));
}

TEST_F(Imports, everyHandleLengthComesOutAsOneByOne) {
    for (int length = 0; length < 5; ++length)
        compare(ascending(40),
                [length](kvAnimationCurve& curve) { curve.setTangentLength(length); });
}

TEST_F(Imports, keysOutOfOrderComeOutAsOneByOne) {
    for (int round = 0; round < 300; ++round) {
        std::vector<Stored> keys = ascending(random() % 30 + 2);
        for (std::size_t swaps = random() % 4; swaps != 0; --swaps)
            std::swap(keys[random() % keys.size()], keys[random() % keys.size()]);
        compare(keys);
    }
}

TEST_F(Imports, aKeyAtTheFrameOfTheLastOneReplacesIt) {
    std::vector<Stored> keys = ascending(5);
    keys.push_back(keyAtFrame(keys.back().x));
    keys.push_back(keyAtFrame(keys.back().x + 1.0F));
    compare(keys);
    compare({keyAtFrame(0.0F), keyAtFrame(-0.0F), keyAtFrame(1.0F)});
}

TEST_F(Imports, framesThatAreNoNumbersComeOutAsOneByOne) {
    compare({keyAtFrame(kNotANumber)});
    compare({keyAtFrame(kNotANumber), keyAtFrame(1.0F), keyAtFrame(2.0F)});
    compare({keyAtFrame(1.0F), keyAtFrame(kNotANumber), keyAtFrame(2.0F), keyAtFrame(kNotANumber)});
    const float infinite = std::numeric_limits<float>::infinity();
    compare({keyAtFrame(-infinite), keyAtFrame(0.0F), keyAtFrame(infinite)});
}

TEST_F(Imports, aListThatHasKeysTakesMoreAsOneByOne) {
    compare(ascending(20), [](kvAnimationCurve& curve) {
        curve.importControlPoint(-20.0F, 1.0F, -21.0F, 1.0F, -19.0F, 1.0F, 5);
        curve.importControlPoint(20.0F, 2.0F, 19.0F, 2.0F, 21.0F, 2.0F, 3);
    });
}

TEST_F(Imports, aListThatLostItsKeysCountsOn) {
    const auto emptied = [](kvAnimationCurve& curve) {
        for (int i = 0; i < 4; ++i)
            curve.insertCP(i, 1.0);
        curve.selectAllCPs();
        curve.deleteAllSelectedCPs();
    };
    compare(ascending(10), emptied);
    kvAnimationCurve curve("x");
    emptied(curve);
    importAll(curve, ascending(3));
    EXPECT_EQ(keyAt(curve, 0).getId(), 5);
}

TEST_F(Imports, aCopiedEmptyListTakesKeysAsItsOwn) {
    kvAnimationCurve empty("x");
    kvAnimationCurve curve(empty);
    kvAnimationCurve expected(empty);
    const std::vector<Stored> keys = ascending(10);
    importAll(curve, keys);
    importOneByOne(expected, keys);
    expectSame(curve, expected);
}

TEST_F(Imports, editingGoesOnAsAfterOneByOne) {
    for (int round = 0; round < 50; ++round) {
        const std::vector<Stored> keys = ascending(40);
        kvAnimationCurve curve("x");
        kvAnimationCurve expected("x");
        importAll(curve, keys);
        importOneByOne(expected, keys);
        const double frame = static_cast<double>(number());
        const std::size_t moved = random() % 40;
        for (kvAnimationCurve* each : {&curve, &expected}) {
            each->moveCPTo(&State::keys(*each)[moved], static_cast<float>(frame), 3.0F);
            each->importControlPoint(keys[3].x, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 3);
            each->deleteCP(each->findCP(7));
        }
        expectSame(curve, expected);
    }
}

// One for each key and none else, as if the store were asked directly.
TEST_F(Imports, everyKeyDrawsOneIdentifier) {
    std::vector<Stored> keys = ascending(500);
    std::swap(keys[300], keys[310]);
    kvAnimationCurve curve("x");
    kv::detail::IdentifierStore replay = kv::detail::identifierStore();
    std::srand(11);
    importAll(curve, keys);
    const int next = std::rand();
    std::srand(11);
    for (std::size_t i = 0; i < keys.size(); ++i)
        replay.create();
    EXPECT_EQ(std::rand(), next);
    EXPECT_EQ(kv::detail::identifierStore().issued(), replay.issued());
}

TEST_F(Imports, ascendingKeysTakeNoMoreMemoryThanTheyNeed) {
    const std::vector<Stored> keys = ascending(1000);
    kvAnimationCurve curve("x");
    importAll(curve, keys);
    EXPECT_EQ(keysOf(curve).capacity(), 1000U);
}
