#pragma once

// A root with three named children, for the tests of nodes.

#include "opensg/held.h"

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>

inline osg::NodePtr named(const char* name) {
    osg::NodePtr node = osg::Node::create();
    osg::setName(node, std::string(name));
    return node;
}

/// The names of the children, one behind the other.
inline std::string childrenOf(const osg::NodePtr& node) {
    std::string names;
    for (osg::UInt32 i = 0; i < node->getNChildren(); ++i)
        names += osg::getName(node->getChild(i));
    return names;
}

class Children : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const osg::NodePtr& child : {a, b, c})
            root->addChild(child);
    }

    Held<osg::NodePtr> root{named("root")};
    osg::NodePtr a = named("a"), b = named("b"), c = named("c");
};
