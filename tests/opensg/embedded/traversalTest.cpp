// Traversal where OpenSG 1.8 forgets a result: that of a callback that ends at a null root, and
// that a node was skipped when it leaves it.
#include "opensg/traversalFixture.h"

#include <vector>

namespace {

using namespace kvtest;

class TraversalResult : public TraversalFixture {};

TEST_F(TraversalResult, quitAtANullRootIsTheResult) {
    quitAt = "null";
    NodePtr none;
    EXPECT_EQ(traverse(none, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(visit)),
              Action::Quit);
}

TEST_F(TraversalResult, leavesASkippedNodeToo) {
    skipAt = "c";
    EXPECT_EQ(enterAndLeave(), Action::Continue);
    EXPECT_EQ(seen.substr(0, 41), "top a a1 /a1 a2 /a2 /a b b1 /b1 /b c /c(s");
}

} // namespace
