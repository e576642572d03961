// Random clips through text files. OpenSG writes seven digits of a float and no escapes in texts,
// so only the text of the embedded scene graph keeps everything.

#include "persistence/clipRoundTrip.h"

#include <gtest/gtest.h>

namespace {

using kv::test::ClipRoundTrip;

TEST_F(ClipRoundTrip, throughATextFileKeepsEverythingThatIsReadBack) {
    EXPECT_TRUE(rc::check([this] { check("osg"); }));
}

} // namespace
