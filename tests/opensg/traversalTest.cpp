// Traversal: order, Skip, Quit, null roots, leaving.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace osg;

NodePtr named(const char* name) {
    NodePtr node = Node::create();
    setName(node, std::string(name));
    return node;
}

/// What the callbacks saw, and where they act.
std::string seen;
std::string skipAt;
std::string quitAt;
std::string quitLeaving;

std::string nameOf(const NodePtr& node) {
    return node == NullFC ? "null" : getName(node);
}

Action::ResultE visit(NodePtr& node) {
    const std::string name = nameOf(node);
    seen += name + " ";
    if (name == skipAt) return Action::Skip;
    if (name == quitAt) return Action::Quit;
    return Action::Continue;
}

Action::ResultE leave(NodePtr& node, Action::ResultE result) {
    const char* const results[] = {"", "(skip)", "(quit)"};
    seen += "/" + nameOf(node) + results[result] + " ";
    return nameOf(node) == quitLeaving ? Action::Quit : result;
}

/// A tree: root has a, b, c; a has a1, a2; b has b1.
class Traversal : public ::testing::Test {
  protected:
    void SetUp() override {
        seen.clear();
        skipAt.clear();
        quitAt.clear();
        quitLeaving.clear();
        const NodePtr a = named("a"), b = named("b");
        root->addChild(a);
        root->addChild(b);
        root->addChild(named("c"));
        a->addChild(named("a1"));
        a->addChild(named("a2"));
        b->addChild(named("b1"));
    }

    Action::ResultE enter() {
        return traverse(root.get(),
                        osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(visit));
    }
    Action::ResultE enterAndLeave() {
        return traverse(
            root.get(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(visit),
            osgTypedFunctionFunctor2CPtrRef<Action::ResultE, NodePtr, Action::ResultE>(leave));
    }

    Held<NodePtr> root{named("top")};
};

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
