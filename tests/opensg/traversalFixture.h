#pragma once

// A small tree and callbacks that write down what they see, for the tests of traversal.

#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>

namespace kvtest {

using namespace osg;

inline NodePtr named(const char* name) {
    NodePtr node = Node::create();
    setName(node, std::string(name));
    return node;
}

/// What the callbacks saw, and where they act.
inline std::string seen;
inline std::string skipAt;
inline std::string quitAt;
inline std::string quitLeaving;

inline std::string nameOf(const NodePtr& node) {
    return node == NullFC ? "null" : getName(node);
}

inline Action::ResultE visit(NodePtr& node) {
    const std::string name = nameOf(node);
    seen += name + " ";
    if (name == skipAt) return Action::Skip;
    if (name == quitAt) return Action::Quit;
    return Action::Continue;
}

inline Action::ResultE leave(NodePtr& node, Action::ResultE result) {
    const char* const results[] = {"", "(skip)", "(quit)"};
    seen += "/" + nameOf(node) + results[result] + " ";
    return nameOf(node) == quitLeaving ? Action::Quit : result;
}

/// A tree: root has a, b, c; a has a1, a2; b has b1.
class TraversalFixture : public ::testing::Test {
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

} // namespace kvtest
