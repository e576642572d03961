#pragma once

// A reference to a container for the length of a test, and questions about containers that may be
// gone.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>

namespace kvtest {

/// Holds one reference; releases it, and so destroys what nobody else holds.
template <class P>
class Held {
  public:
    explicit Held(const P& pointer) : _pointer(pointer) { osg::addRefCP(_pointer); }
    ~Held() { release(); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    void release() {
        P released = _pointer;
        _pointer = osg::NullFC;
        osg::subRefCP(released);
    }

    const P& get() const { return _pointer; }
    operator const P&() const { return _pointer; }
    auto operator->() const { return _pointer.operator->(); }

  private:
    P _pointer;
};

/// A new container of class T, held.
template <class T>
class Made : public Held<typename T::Ptr> {
  public:
    Made() : Held<typename T::Ptr>(T::create()) {}
};

inline osg::NodePtr makeNode(const osg::NodeCorePtr& core) {
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    return node;
}

inline void addChild(const osg::NodePtr& parent, const osg::NodePtr& child) {
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask);
    parent->addChild(child);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask);
}

template <class P>
osg::UInt32 idOf(const P& pointer) {
    return osg::getContainerId(pointer);
}

inline bool isAlive(osg::UInt32 id) {
    return osg::FieldContainerFactory::the()->getContainer(id) != osg::NullFC;
}

} // namespace kvtest
