// How often the quick evaluation of a segment is not certain of its result, for each family of
// segments that the tests compare it over. One line a family: its name, the percentage of frames
// for which multiplied constants did not do, and that for which the literal evaluator was asked.
#include "support/kernels.h"
#include "support/segmentFamilies.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr int kFrames = 1000000;

void count(const kv::test::SegmentFamily& family, std::uint64_t seed) {
    using kv::detail::Segment;
    const kv::detail::KernelParts parts = kv::test::kernelParts().back();
    kv::test::QuickRandom random(seed);
    std::uint64_t asked = 0, again = 0, fallbacks = 0;
    for (int i = 0; i < kFrames; ++i) {
        const Segment s = family.make(random);
        const double frame = static_cast<double>(static_cast<float>(random.between(s.x0, s.x3)));
        if (!(s.x0 <= frame && frame < s.x3)) continue;
        ++asked;
        if (parts.isCertain(s, false, frame)) continue;
        ++again;
        if (!parts.isCertain(s, true, frame)) ++fallbacks;
    }
    const auto percent = [asked](std::uint64_t n) {
        return 100.0 * static_cast<double>(n) / static_cast<double>(asked);
    };
    std::printf("%s %.4f %.4f\n", family.name, percent(again), percent(fallbacks));
}

} // namespace

int main() {
    std::uint64_t seed = 1;
    for (const kv::test::SegmentFamily& family : kv::test::segmentFamilies())
        count(family, seed++);
    return 0;
}
