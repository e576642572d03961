// Making and editing the keys of one curve, and identifiers.
#include "fresh.h"

#include "support/scene.h"

#include "keys/literalKeyList.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace kv::bench {

namespace {

std::vector<std::size_t> shuffled(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    return order;
}

double frameOf(std::size_t key) {
    return static_cast<double>(key);
}
double valueOf(std::size_t key) {
    return static_cast<double>(keyValue(key));
}

/// A curve of keys of type Auto.
void insertAll(kvAnimationCurve& curve, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        curve.insertCP(frameOf(i), valueOf(i));
}

double insert(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    kvAnimationCurve curve("translateX");
    return nanosecondsEach(count, [&] { insertAll(curve, count); });
}

double insertRandom(const Words& words) {
    const std::vector<std::size_t> order = shuffled(numberOf(words[0]));
    kvAnimationCurve curve("translateX");
    return nanosecondsEach(order.size(), [&] {
        for (const std::size_t i : order)
            curve.insertCP(frameOf(i), valueOf(i));
    });
}

/// With an identifier drawn for each key, as the curve does.
double insertLiteral(const Words& words) {
    const std::vector<std::size_t> order = shuffled(numberOf(words[0]));
    test::LiteralKeyList list;
    return nanosecondsEach(order.size(), [&] {
        for (const std::size_t i : order)
            list.insert(frameOf(i), valueOf(i), false, false,
                        static_cast<int>(kvAnimationManager2::createUniqueId()));
    });
}

/// Moves the same key to and fro; its neighbours stay its neighbours.
double moveKeys(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const std::size_t calls = numberOf(words[1]);
    kvAnimationCurve curve("translateX");
    insertAll(curve, count);
    kvControlPoint* const key = curve.findCP(curve.getCPs()[count / 2].getId());
    curve.sortCPs();
    const float frame = static_cast<float>(count / 2);
    // Too short to be timed once: the median of many rounds.
    std::vector<double> rounds;
    for (int round = 0; round < 101; ++round) {
        rounds.push_back(secondsOf([&] {
            for (std::size_t i = 0; i < calls; ++i)
                curve.moveCPTo(key, frame + (i % 2 == 0 ? 0.25F : 0.0F), 1.0F);
        }));
    }
    std::nth_element(rounds.begin(), rounds.begin() + 50, rounds.end());
    return rounds[50] * 1e9;
}

double deleteKeys(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    kvAnimationCurve curve("translateX");
    insertAll(curve, count);
    std::size_t place = 0;
    for (kvControlPoint& key : curve.getCPs())
        key.setSelected(place++ % 2 == 0);
    std::vector<kvAnimationCurve*> shown{&curve};
    kvAnimationManager2::_the.setSelectedCurves(shown);
    return nanosecondsEach(count, [] { kvAnimationManager2::_the.deleteSelectedCPs(); });
}

double retangent(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    kvAnimationCurve curve("translateX");
    insertAll(curve, count);
    curve.selectAllCPs();
    std::vector<kvAnimationCurve*> shown{&curve};
    kvAnimationManager2::_the.setSelectedCurves(shown);
    return nanosecondsEach(count, [] {
        kvAnimationManager2::_the.computeTangentsOfSelectedCPs(kvControlPoint::Smooth);
    });
}

double ids(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    unsigned long long sum = 0;
    const double each = nanosecondsEach(count, [&] {
        for (std::size_t i = 0; i < count; ++i)
            sum += kvAnimationManager2::createUniqueId();
    });
    return sum == 0 ? 0.0 : each;
}

} // namespace

std::vector<Measurement> keyMeasurements() {
    return {{"insert", 1, &insert},
            {"insertRandom", 1, &insertRandom},
            {"insertLiteral", 1, &insertLiteral},
            {"moveKeys", 2, &moveKeys},
            {"deleteKeys", 1, &deleteKeys},
            {"retangent", 1, &retangent},
            {"ids", 1, &ids}};
}

} // namespace kv::bench
