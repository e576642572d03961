// Traversal where OpenSG 1.8 forgets a result: that of a callback that ends at a null root, and
// that a node was skipped when it leaves it.
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
class TraversalResult : public ::testing::Test {
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
