// What is animated by name although no field holds it: the rotation angles and the visibility of a
// node, the lens and the orbit of a camera.

#include "fields/specialQuantities.h"

#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>
#include <kvNodeUtils.h>

#include <OpenSG/OSGFieldContainer.h>

#include <OSGTransformAttachment.h>

namespace kv::detail {

namespace {

struct Row {
    const char* name;
    Special special;
};

constexpr Row kNodeRows[] = {
    {"rotationX", Special::RotationX},
    {"rotationY", Special::RotationY},
    {"rotationZ", Special::RotationZ},
    {"visible", Special::Visible},
};

constexpr Row kCameraRows[] = {
    {"fStop", Special::FStop},
    {"height", Special::Height},
    {"distance", Special::Distance},
    {"focalLength", Special::FocalLength},
    {"turnTableAngle", Special::TurnTableAngle},
};

template <std::size_t count>
Special find(const Row (&rows)[count], const std::string& name) {
    for (const Row& row : rows)
        if (name == row.name) return row.special;
    return Special::None;
}

// The angles as they were set last, degrees. Not those of the node's core: three angles cannot be
// read back from a rotation unambiguously.
osg::Vec3f rotationAnglesOf(const osg::NodePtr& node) {
    const osg::TransformAttachmentPtr angles = osg::TransformAttachment::find(node);
    if (angles == osg::NullFC) return osg::Vec3f(0.0F, 0.0F, 0.0F);
    return angles->getRotationAngles();
}

osg::UInt32 axisOf(Special rotation) {
    return static_cast<osg::UInt32>(static_cast<int>(rotation) -
                                    static_cast<int>(Special::RotationX));
}

} // namespace

Special specialOf(FieldPlan::Container kind, const std::string& name) {
    switch (kind) {
    case FieldPlan::Container::Node:
        return find(kNodeRows, name);
    case FieldPlan::Container::CameraSetting:
        return find(kCameraRows, name);
    case FieldPlan::Container::Other:
        break;
    }
    return Special::None;
}

bool isNodeQuantity(Special special) {
    return special >= Special::RotationX && special <= Special::Visible;
}

bool isCameraQuantity(Special special) {
    return special >= Special::FStop;
}

float readSpecial(const osg::NodePtr& node, Special special) {
    if (!isNodeQuantity(special)) return 0.0F;
    if (special == Special::Visible) return node->getActive() ? 1.0F : 0.0F;
    return rotationAnglesOf(node)[axisOf(special)];
}

float readSpecial(const osg::CameraSettingPtr& camera, Special special) {
    switch (special) {
    case Special::FStop:
        return camera->getFStop();
    case Special::Height:
        return camera->getHeight();
    case Special::Distance:
        return camera->getDistance();
    case Special::FocalLength:
        return camera->getFocalLength();
    case Special::TurnTableAngle:
        return camera->getTurnTableAngle();
    default:
        return 0.0F;
    }
}

void writeSpecial(const osg::NodePtr& node, Special special, float value) {
    if (!isNodeQuantity(special)) return;
    if (special == Special::Visible) {
        osg::beginEditCP(node, osg::Node::TravMaskFieldMask);
        node->setActive(kvAnimationUtils2::floatToBool(value));
        osg::endEditCP(node, osg::Node::TravMaskFieldMask);
        return;
    }
    osg::Vec3f angles = rotationAnglesOf(node);
    angles[axisOf(special)] = value;
    kvNodeUtils::setTransformNodeRotation(node, angles[0], angles[1], angles[2], -1);
}

void writeSpecial(const osg::CameraSettingPtr& camera, Special special, float value) {
    switch (special) {
    case Special::FStop:
        camera->setFStop(value);
        return;
    case Special::FocalLength:
        camera->setFocalLength(value);
        return;
    case Special::Height:
        camera->setHeight(value);
        break;
    case Special::Distance:
        camera->setDistance(value);
        break;
    case Special::TurnTableAngle:
        camera->setTurnTableAngle(value);
        break;
    default:
        return;
    }
    // The orbit moves the camera, and the host has to follow.
    handToHostCamera(camera);
}

void handToHostCamera(const osg::CameraSettingPtr& camera) {
    kvAnimationManager2::setFromAtUp(camera->getFrom(), camera->getAt(), camera->getUp());
}

} // namespace kv::detail
