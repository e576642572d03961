// Values by node and attribute name, written past all bindings: the core of the node decides what
// an attribute means.

#include <kvAnimationController2.h>

#include "keys/constants.h"

#include <kvMessage.h>
#include <kvNodeUtils.h>
#include <kvOpenSGUtils.h>
#include <OSGCameraSetting.h>

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSwitch.h>

#include <boost/any.hpp>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

using osg::NullFC;

namespace {

// Whether `attribute` is `stem` and one of `letters`; `index` is then the place of that letter.
bool isComponent(const std::string& attribute, const char* stem, const char* letters,
                 unsigned& index) {
    const std::size_t length = std::strlen(stem);
    if (attribute.size() != length + 1 || attribute.compare(0, length, stem) != 0) return false;
    const char* const letter = std::strchr(letters, attribute[length]);
    if (letter == nullptr || *letter == '\0') return false;
    index = static_cast<unsigned>(letter - letters);
    return true;
}

// Replaces one of the three numbers that the node has now and writes all three.
template <class Get, class Set>
void replaceOne(const osg::NodePtr& node, unsigned index, float value, Get get, Set set) {
    float xyz[3] = {0.0F, 0.0F, 0.0F};
    get(node, xyz[0], xyz[1], xyz[2]);
    xyz[index] = value;
    set(node, xyz[0], xyz[1], xyz[2]);
}

bool writeTranslationOrRotation(const osg::NodePtr& node, const std::string& attribute,
                                float value) {
    unsigned index = 0;
    if (isComponent(attribute, "translate", "XYZ", index)) {
        replaceOne(node, index, value, kvNodeUtils::getTransformNodeTranslation,
                   kvNodeUtils::setTransformNodeTranslation);
    } else if (isComponent(attribute, "rotate", "XYZ", index)) {
        replaceOne(node, index, value, kvNodeUtils::getTransformNodeRotation,
                   [](const osg::NodePtr& n, float x, float y, float z) {
                       kvNodeUtils::setTransformNodeRotation(n, x, y, z, -1);
                   });
    } else {
        return false;
    }
    return true;
}

bool writeTransform(const osg::NodePtr& node, const std::string& attribute, float value) {
    unsigned index = 0;
    if (isComponent(attribute, "scale", "XYZ", index)) {
        replaceOne(node, index, value, kvNodeUtils::getTransformNodeScale,
                   kvNodeUtils::setTransformNodeScale);
        return true;
    }
    return writeTranslationOrRotation(node, attribute, value);
}

void writeTransformNode(const osg::NodePtr& node, const std::string& attribute, float value) {
    if (writeTransform(node, attribute, value) || attribute != "visible") return;
    osg::beginEditCP(node, osg::Node::TravMaskFieldMask);
    node->setActive(kvAnimationUtils2::floatToBool(value));
    osg::endEditCP(node, osg::Node::TravMaskFieldMask);
}

void writeLight(const osg::LightPtr& light, const std::string& attribute, float value) {
    const auto edit = [&](osg::BitVector mask, osg::Color4f color, unsigned index, auto set) {
        color[index] = value;
        osg::beginEditCP(light, mask);
        set(color);
        osg::endEditCP(light, mask);
    };
    unsigned index = 0;
    if (isComponent(attribute, "ambient", "RGBA", index)) {
        edit(osg::Light::AmbientFieldMask, light->getAmbient(), index,
             [&](const osg::Color4f& color) { light->setAmbient(color); });
    } else if (isComponent(attribute, "diffuse", "RGBA", index)) {
        edit(osg::Light::DiffuseFieldMask, light->getDiffuse(), index,
             [&](const osg::Color4f& color) { light->setDiffuse(color); });
    } else if (isComponent(attribute, "specular", "RGBA", index)) {
        edit(osg::Light::SpecularFieldMask, light->getSpecular(), index,
             [&](const osg::Color4f& color) { light->setSpecular(color); });
    } else if (light->getBeacon() != NullFC) {
        writeTransform(light->getBeacon(), attribute, value);
    }
}

// Towards zero; what no int can hold becomes the smallest one, as the usual processors have it.
osg::Int32 truncated(float value) {
    const double wide = static_cast<double>(value);
    const bool fits =
        wide > static_cast<double>(INT_MIN) - 1.0 && wide < static_cast<double>(INT_MAX) + 1.0;
    return fits ? static_cast<osg::Int32>(wide) : INT_MIN;
}

void writeSwitch(const osg::SwitchPtr& core, float value) {
    osg::beginEditCP(core, osg::Switch::ChoiceFieldMask);
    core->setChoice(truncated(value));
    osg::endEditCP(core, osg::Switch::ChoiceFieldMask);
}

// Fourth components bear the letter of a colour, of a vector or of a material's parameter. -1:
// none.
int componentOfLetter(char letter) {
    switch (letter) {
    case 'R':
    case 'X':
        return 0;
    case 'G':
    case 'Y':
        return 1;
    case 'B':
    case 'Z':
        return 2;
    case 'A':
    case 'W':
    case 'I':
        return 3;
    default:
        return -1;
    }
}

// A field of exactly the attribute's name wins over one that lacks its component letter.
void writeMaterial(const osg::NodePtr& node, const osg::MaterialPtr& material,
                   const std::string& attribute, float value) {
    if (material == NullFC || attribute.empty()) return;
    const osg::FieldContainerType& type = material->getType();
    kvAnimationUtils2::AnimationField field;
    field.node = node;
    field.fcId = osg::getContainerId(material);
    field.fieldName = attribute;
    field.globalFieldName = attribute;
    field.value = value;
    if (type.findFieldDescription(attribute.c_str()) == nullptr) {
        const int position = componentOfLetter(attribute.back());
        if (position < 0) return;
        field.globalFieldName.pop_back();
        if (type.findFieldDescription(field.globalFieldName.c_str()) == nullptr) return;
        field.valuePosition = static_cast<std::uint16_t>(position);
    }
    kvAnimationUtils2::setRealFieldValue(field);
}

struct CameraQuantity {
    const char* name;
    void (*set)(const osg::CameraSettingPtr& camera, float value);
};

using Camera = const osg::CameraSettingPtr&;
const CameraQuantity kCameraQuantities[] = {
    {"fieldOfView",
     [](Camera c, float degrees) { c->setFieldOfView(degrees * 2.0F * 3.1415927F / 360.0F); }},
    {"fStop", [](Camera c, float value) { c->setFStop(value); }},
    {"focalLength", [](Camera c, float value) { c->setFocalLength(value); }},
    {"roll", [](Camera c, float value) { c->setRoll(value); }},
    {"shutterSpeed", [](Camera c, float value) { c->setShutterSpeed(value); }},
    {"focusDistance", [](Camera c, float value) { c->setFocusDistance(value); }},
    {"height", [](Camera c, float value) { c->setHeight(value); }},
    {"distance", [](Camera c, float value) { c->setDistance(value); }},
    {"apertureDiameter", [](Camera c, float value) { c->setApertureDiameter(value); }},
    {"turnTableAngle", [](Camera c, float value) { c->setTurnTableAngle(value); }},
};

template <class Vector>
Vector withOne(Vector vector, unsigned index, float value) {
    vector[index] = value;
    return vector;
}

// Changes nothing for an attribute that no camera setting has.
void setCameraValue(Camera camera, const std::string& attribute, float value) {
    for (const CameraQuantity& quantity : kCameraQuantities) {
        if (attribute == quantity.name) {
            quantity.set(camera, value);
            return;
        }
    }
    unsigned index = 0;
    if (isComponent(attribute, "from", "XYZ", index)) {
        camera->setFrom(withOne(camera->getFrom(), index, value));
    } else if (isComponent(attribute, "at", "XYZ", index)) {
        camera->setAt(withOne(camera->getAt(), index, value));
    } else if (isComponent(attribute, "up", "XYZ", index)) {
        camera->setUp(withOne(camera->getUp(), index, value));
    }
}

void writeCamera(const osg::NodePtr& node, const osg::CameraSettingPtr& camera,
                 const std::string& attribute, float value) {
    kvMessage message;
    message.set("camNode", boost::any(node));
    kvOpenSGUtils::call("activateCamera", message, 0);

    osg::beginEditCP(camera, osg::FieldBits::AllFields);
    if (!writeTranslationOrRotation(node, attribute, value)) {
        setCameraValue(camera, attribute, value);
    }
    osg::endEditCP(camera, osg::FieldBits::AllFields);
    kvAnimationManager2::setFromAtUp(camera->getFrom(), camera->getAt(), camera->getUp());
}

void apply(const kvAnimationManager2::AnimationMap& entry) {
    if (entry.value <= kv::detail::kNoCurveValue) return; // a NaN is a value
    const osg::NodePtr node = entry.node;
    if (node == NullFC) return;
    const osg::NodeCorePtr core = node->getCore();
    if (core == NullFC) return;

    const osg::LightPtr light = osg::LightPtr::dcast(core);
    const osg::SwitchPtr switchCore = osg::SwitchPtr::dcast(core);
    const osg::MaterialGroupPtr group = osg::MaterialGroupPtr::dcast(core);
    const osg::CameraSettingPtr camera = osg::CameraSettingPtr::dcast(core);
    if (osg::ComponentTransformPtr::dcast(core) != NullFC) {
        writeTransformNode(node, entry.attribute, entry.value);
    } else if (light != NullFC) {
        writeLight(light, entry.attribute, entry.value);
    } else if (switchCore != NullFC) {
        writeSwitch(switchCore, entry.value);
    } else if (group != NullFC) {
        writeMaterial(node, group->getMaterial(), entry.attribute, entry.value);
    } else if (camera != NullFC) {
        writeCamera(node, camera, entry.attribute, entry.value);
    }
}

} // namespace

void kvAnimationController2::execute(std::vector<kvAnimationManager2::AnimationMap> maps) {
    for (const kvAnimationManager2::AnimationMap& entry : maps)
        apply(entry);
}
