// Traversal: order, Skip, Quit, null roots, leaving.
#include "opensg/traversalFixture.h"

#include <vector>

namespace {

using namespace kvtest;

class Traversal : public TraversalFixture {};

TEST_F(Traversal, goesDepthFirstParentsBeforeChildren) {
    EXPECT_EQ(enter(), Action::Continue);
    EXPECT_EQ(seen, "top a a1 a2 b b1 c ");
}

TEST_F(Traversal, visitsInvisibleNodesToo) {
    root->getChild(0)->setActive(false);
    EXPECT_EQ(enter(), Action::Continue);
    EXPECT_EQ(seen, "top a a1 a2 b b1 c ");
}

TEST_F(Traversal, skipsChildrenAndGoesOn) {
    skipAt = "a";
    EXPECT_EQ(enter(), Action::Continue);
    EXPECT_EQ(seen, "top a b b1 c ");
}

TEST_F(Traversal, skippedRootIsAllThereIs) {
    skipAt = "top";
    EXPECT_EQ(enter(), Action::Continue);
    EXPECT_EQ(seen, "top ");
}

TEST_F(Traversal, quitsAtOnce) {
    quitAt = "a2";
    EXPECT_EQ(enter(), Action::Quit);
    EXPECT_EQ(seen, "top a a1 a2 ");
}

TEST_F(Traversal, visitsANullRootOnce) {
    NodePtr none;
    EXPECT_EQ(traverse(none, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(visit)),
              Action::Continue);
    EXPECT_EQ(seen, "null ");
}

TEST_F(Traversal, leavesEveryNodeAfterItsChildren) {
    EXPECT_EQ(enterAndLeave(), Action::Continue);
    EXPECT_EQ(seen, "top a a1 /a1 a2 /a2 /a b b1 /b1 /b c /c /top ");
}

TEST_F(Traversal, leavesEverythingThatIsOpenOnQuit) {
    quitAt = "a1";
    EXPECT_EQ(enterAndLeave(), Action::Quit);
    EXPECT_EQ(seen, "top a a1 /a1(quit) /a(quit) /top(quit) ");
}

TEST_F(Traversal, leavingMayQuit) {
    quitLeaving = "a2";
    EXPECT_EQ(enterAndLeave(), Action::Quit);
    EXPECT_EQ(seen, "top a a1 /a1 a2 /a2 /a(quit) /top(quit) ");
}

TEST_F(Traversal, walksSeveralRootsInOrder) {
    std::vector<NodePtr> roots;
    roots.push_back(root->getChild(1));
    roots.push_back(root->getChild(0));
    const TraverseEnterFunctor functor =
        osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(visit);
    EXPECT_EQ(traverse(roots, functor), Action::Continue);
    EXPECT_EQ(seen, "b b1 a a1 a2 ");
    seen.clear();
    quitAt = "b1";
    EXPECT_EQ(traverse(roots, functor), Action::Quit);
    EXPECT_EQ(seen, "b b1 ");
}

TEST_F(Traversal, takesLambdasWithoutCaptures) {
    EXPECT_EQ(traverse(root.get(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(
                                       [](NodePtr& node) -> Action::ResultE {
                                           seen += nameOf(node);
                                           return Action::Skip;
                                       })),
              Action::Continue);
    EXPECT_EQ(seen, "top");
}

class Counter {
  public:
    Action::ResultE count(NodePtr&) {
        ++nodes;
        return Action::Continue;
    }
    static Action::ResultE countStatically(NodePtr&) {
        ++staticNodes;
        return Action::Continue;
    }

    int nodes = 0;
    static int staticNodes;
};

int Counter::staticNodes = 0;

TEST_F(Traversal, takesMemberFunctions) {
    Counter counter;
    traverse(root.get(), osgTypedMethodFunctor1ObjPtrCPtrRef<Action::ResultE, Counter, NodePtr>(
                             &counter, &Counter::count));
    EXPECT_EQ(counter.nodes, 7);

    Counter::staticNodes = 0;
    traverse(root.get(),
             osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(&Counter::countStatically));
    EXPECT_EQ(Counter::staticNodes, 7);
}

} // namespace
