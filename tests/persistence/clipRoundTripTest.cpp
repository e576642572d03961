// Random clips through binary files; the text of OpenSG keeps neither all digits nor all names.

#include "persistence/clipRoundTrip.h"

#include <gtest/gtest.h>

namespace {

using kv::test::ClipRoundTrip;
using kv::test::Description;

TEST_F(ClipRoundTrip, throughABinaryFileKeepsEverythingThatIsReadBack) {
    EXPECT_TRUE(rc::check([this] { check("osb"); }));
}

// A guard for the one above: the description notices one last bit and one flag.
TEST_F(ClipRoundTrip, isNotComparedTooLeniently) {
    const auto build = [this](float y, bool repeat) {
        kvAnimationClip clip;
        kvAnimationBlock* const block = makeBlock(mover, "b", {1.0F, 2.0F});
        block->setRepeat(repeat);
        block->getBlockCurves()[0]->importControlPoint(3.0F, y, 3.0F, y, 3.0F, y, 6);
        clip.addBlock(block);
        return Description(mover).of(clip);
    };
    const float next = 1.0F + std::numeric_limits<float>::epsilon();
    EXPECT_EQ(build(1.0F, false), build(1.0F, false));
    EXPECT_NE(build(1.0F, false), build(next, false));
    EXPECT_NE(build(1.0F, false), build(1.0F, true));
}

} // namespace
