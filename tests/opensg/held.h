#pragma once

// A counted reference for as long as a test needs it.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerPtr.h>

/// Counts a container while it lives, so that nothing a test makes outlives the test.
template <class P>
class Held {
  public:
    explicit Held(const P& pointer) : _pointer(pointer) { osg::addRefCP(_pointer); }
    ~Held() { osg::subRefCP(_pointer); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    operator const P&() const { return _pointer; }
    const P& get() const { return _pointer; }
    auto operator->() const { return _pointer.operator->(); }

  private:
    P _pointer;
};

/// A new container of the class.
template <class Class>
Held<typename Class::Ptr> held() {
    return Held<typename Class::Ptr>(Class::create());
}

/// Whether the factory still finds a container.
inline bool isAlive(osg::UInt32 id) {
    return osg::FieldContainerFactory::the()->getContainer(id) != osg::NullFC;
}
