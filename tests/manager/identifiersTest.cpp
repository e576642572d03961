// Identifiers: the numbers drawn, what a collision records, and how the store answers.
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <list>
#include <unordered_set>
#include <vector>

namespace {

using kv::detail::IdentifierStore;

// A random source that tells prepared numbers, one after the other.
std::vector<int> script;
std::size_t scriptAt = 0;

int scripted() {
    return script.at(scriptAt++);
}

void prepare(std::vector<int> numbers) {
    script = std::move(numbers);
    scriptAt = 0;
}

// A random source that runs through all products, each factor with each multiplier.
int enumeratedPair = 0;
bool enumerateSecond = false;

int enumerated() {
    const int pair = enumeratedPair;
    if (!enumerateSecond) {
        enumerateSecond = true;
        return pair / 100;
    }
    enumerateSecond = false;
    ++enumeratedPair;
    return pair % 100;
}

// The service as a list that is searched, with the recursion that a collision starts.
struct LiteralIdentifiers {
    std::list<std::uint64_t> ids;

    std::uint64_t create() {
        const int r1 = std::rand() & 0x7FFF;
        const int r2 = std::rand() & 0x7FFF;
        const std::uint64_t id = static_cast<std::uint64_t>(r1 * ((r2 % 100) + 1));
        if (std::find(ids.begin(), ids.end(), id) != ids.end()) create();
        ids.push_back(id);
        return id;
    }
};

} // namespace

TEST(Identifiers, theFirstRandomNumberIsTheFactorAndTheSecondTheMultiplier) {
    prepare({7, 250});
    IdentifierStore store(&scripted);
    EXPECT_EQ(store.create(), 7U * 51U);
    EXPECT_EQ(scriptAt, 2U);
}

TEST(Identifiers, onlyTheLowFifteenBitsOfARandomNumberCount) {
    prepare({0x7FFF8005, 0x10000});
    IdentifierStore store(&scripted);
    EXPECT_EQ(store.create(), 5U);
}

TEST(Identifiers, theGreatestProductIsIssuedAndFound) {
    prepare({32767, 99});
    IdentifierStore store(&scripted);
    EXPECT_EQ(store.create(), 3276700U);
    EXPECT_TRUE(store.isIssued(3276700));
    EXPECT_FALSE(store.isIssued(3276701));
}

TEST(Identifiers, zeroIsAnIdentifierLikeAnyOther) {
    prepare({0, 17});
    IdentifierStore store(&scripted);
    EXPECT_FALSE(store.isIssued(0));
    EXPECT_EQ(store.create(), 0U);
    EXPECT_TRUE(store.isIssued(0));
}

TEST(Identifiers, nothingIsIssuedBeforeTheFirstDraw) {
    const IdentifierStore store(&scripted);
    EXPECT_FALSE(store.isIssued(0));
    EXPECT_FALSE(store.isIssued(1));
    EXPECT_TRUE(store.issued().empty());
}

TEST(Identifiers, aCollidingValueIsReturnedAgainAndRecordedBehindTheNestedOne) {
    prepare({2, 1, 4, 0, 1, 0});
    IdentifierStore store(&scripted);
    EXPECT_EQ(store.create(), 4U);
    EXPECT_EQ(store.create(), 4U);
    EXPECT_EQ(scriptAt, 6U);
    EXPECT_EQ(store.issued(), (std::vector<std::uint32_t>{4, 1, 4}));
    EXPECT_TRUE(store.isIssued(1));
}

TEST(Identifiers, nestedCollisionsAreRecordedFromTheInnermostOutwards) {
    // 4, 9, then 4 collides, 9 collides, 4 collides again, 5 is new.
    prepare({4, 0, 9, 0, 4, 0, 3, 2, 2, 1, 5, 0});
    IdentifierStore store(&scripted);
    store.create();
    store.create();
    EXPECT_EQ(store.create(), 4U);
    EXPECT_EQ(scriptAt, 12U);
    EXPECT_EQ(store.issued(), (std::vector<std::uint32_t>{4, 9, 5, 4, 9, 4}));
}

TEST(Identifiers, membershipComparesAllSixtyFourBits) {
    prepare({7, 0});
    IdentifierStore store(&scripted);
    store.create();
    EXPECT_TRUE(store.isIssued(7));
    EXPECT_FALSE(store.isIssued(0x100000007));
    EXPECT_FALSE(store.isIssued(0xFFFFFFFFFFFFFFFF));
}

TEST(Identifiers, onceAllProductsAreIssuedADrawRecordsItselfOnce) {
    std::unordered_set<std::uint32_t> products;
    for (std::uint32_t factor = 0; factor <= 32767; ++factor)
        for (std::uint32_t multiplier = 1; multiplier <= 100; ++multiplier)
            products.insert(factor * multiplier);
    ASSERT_EQ(products.size(), IdentifierStore::kDistinctIds);

    enumeratedPair = 0;
    enumerateSecond = false;
    IdentifierStore store(&enumerated);
    std::size_t fresh = 0;
    // Each call goes on until it finds a product that was not there.
    for (; fresh < products.size(); ++fresh)
        store.create();
    EXPECT_TRUE(std::all_of(products.begin(), products.end(),
                            [&](std::uint32_t id) { return store.isIssued(id); }));

    const std::size_t recorded = store.issued().size();
    enumeratedPair = 12 * 100 + 2; // 12 times 3
    EXPECT_EQ(store.create(), 36U);
    EXPECT_EQ(store.issued().size(), recorded + 1);
    EXPECT_EQ(store.issued().back(), 36U);
    EXPECT_EQ(enumeratedPair, 12 * 100 + 3);
}

TEST(Identifiers, theServiceEqualsALiteralListWithASearch) {
    // A seed of 1 is the state of a generator that was never seeded, so this is also the sequence
    // that every fresh process sees.
    for (const unsigned seed : {1U, 20240607U}) {
        LiteralIdentifiers model;
        const auto& issued = kv::detail::identifierStore().issued();
        model.ids.assign(issued.begin(), issued.end());
        const std::size_t before = issued.size();

        constexpr int kDraws = 4000;
        std::srand(seed);
        std::vector<std::uint64_t> drawn;
        for (int i = 0; i < kDraws; ++i)
            drawn.push_back(kv::detail::createUniqueId());
        const int next = std::rand();

        std::srand(seed);
        for (int i = 0; i < kDraws; ++i)
            EXPECT_EQ(drawn[static_cast<std::size_t>(i)], model.create());
        EXPECT_EQ(std::rand(), next) << "not the same count of random numbers was consumed";
        ASSERT_EQ(issued.size(), model.ids.size());
        EXPECT_TRUE(std::equal(issued.begin(), issued.end(), model.ids.begin()));
        EXPECT_GT(issued.size(), before + kDraws) << "no collision among the draws";
        for (const std::uint64_t id : drawn)
            EXPECT_TRUE(kv::detail::isIssuedId(id));
    }
}

// The child starts the program anew, so that its list holds every draw of the process. A generator
// that was never seeded is in the state that a seed of 1 gives: that tells what to expect.
TEST(IdentifiersDeathTest, areTheSameInEveryProcessAsNothingSeedsTheGenerator) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto isAsUnseeded = [] {
        for (int i = 0; i < 200; ++i)
            kv::detail::createUniqueId();
        const std::vector<std::uint32_t>& issued = kv::detail::identifierStore().issued();
        std::srand(1);
        IdentifierStore expected(&std::rand);
        while (expected.issued().size() < issued.size())
            expected.create();
        return issued == expected.issued();
    };
    EXPECT_EXIT(std::_Exit(isAsUnseeded() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST(Identifiers, membershipEqualsASearchOfTheList) {
    const auto& issued = kv::detail::identifierStore().issued();
    for (int i = 0; i < 500; ++i)
        kv::detail::createUniqueId();
    const std::unordered_set<std::uint32_t> members(issued.begin(), issued.end());
    for (std::uint32_t id = 0; id <= IdentifierStore::kGreatestId + 64; ++id)
        ASSERT_EQ(kv::detail::isIssuedId(id), members.count(id) == 1) << id;
}
