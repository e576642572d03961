// The transport before main() runs: a host's global objects may use it whatever the order in which
// globals are constructed. Where the library is a shared one its globals come first in any case, so
// that only a build with static libraries asks much of these tests.

#include "playback/playbackFixture.h"

namespace {

struct EarlyHost {
    EarlyHost() {
        kvAnimationController2::gotoStart(kvAnimationController2::PT_BLOCK);
        kvAnimationController2::gotoEnd(kvAnimationController2::PT_GLOBAL);
        wasEmpty = kvAnimationController2::getValues().empty();
        kvAnimationController2::gotoEnd(kvAnimationController2::PT_BLOCK);
    }

    bool wasEmpty = false;
};

EarlyHost earlyHost;

TEST(TransportStatics, serveBeforeMain) {
    EXPECT_TRUE(earlyHost.wasEmpty);
}

} // namespace
