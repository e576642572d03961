#pragma once

#include "fields/numberBox.h"
#include "host/held.h"

#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGNode.h>

#include <OSGCameraSetting.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvtest {

using Field = kvAnimationUtils2::AnimationField;

template <class Ptr>
using Owned = Held<Ptr>;

/// A binding to the number at a position of a field.
inline Field bindingTo(const osg::FieldContainerPtr& container, const std::string& globalFieldName,
                       unsigned position = 0, float value = 0.0F,
                       const std::string& fieldName = "unknown") {
    Field field;
    field.fcId = osg::getContainerId(container);
    field.fieldName = fieldName;
    field.globalFieldName = globalFieldName;
    field.valuePosition = static_cast<std::uint16_t>(position);
    field.value = value;
    return field;
}

inline void write(const osg::FieldContainerPtr& container, const std::string& globalFieldName,
                  unsigned position, float value, const std::string& fieldName = "unknown") {
    kvAnimationUtils2::setRealFieldValue(
        bindingTo(container, globalFieldName, position, value, fieldName));
}

inline float read(const osg::FieldContainerPtr& container, const std::string& globalFieldName,
                  unsigned position = 0, const std::string& fieldName = "unknown") {
    return kvAnimationUtils2::getRealFieldValue(
        bindingTo(container, globalFieldName, position, 0.0F, fieldName));
}

/// The host's own camera: what the library read from it and gave to it.
struct HostCamera {
    osg::Pnt3f from = osg::Pnt3f(1, 2, 3);
    osg::Pnt3f at = osg::Pnt3f(4, 5, 6);
    osg::Vec3f up = osg::Vec3f(0, 1, 0);
    int gets = 0;
    int sets = 0;
};

/// Installs a host camera for the time of a test.
class HostCameraTest : public ::testing::Test {
  protected:
    void SetUp() override {
        camera() = HostCamera();
        kvAnimationManager2::setGetFromAtUpCB(
            [](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
                ++camera().gets;
                from = camera().from;
                at = camera().at;
                up = camera().up;
            });
        kvAnimationManager2::setFromAtUpCB(
            [](int, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                ++camera().sets;
                camera().from = from;
                camera().at = at;
                camera().up = up;
            });
    }
    void TearDown() override {
        kvAnimationManager2::setGetFromAtUpCB(nullptr);
        kvAnimationManager2::setFromAtUpCB(nullptr);
    }

    static HostCamera& camera() {
        static HostCamera instance;
        return instance;
    }
};

} // namespace kvtest
