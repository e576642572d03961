// Binding a curve: by the name of its attribute, and as it was stored with the scene.

#include <kvAnimationUtils2.h>

#include "fields/fieldPlan.h"
#include "fields/specialQuantities.h"
#include "keys/sceneNodes.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGTransform.h>

#include <OSGAnimationCurve.h>
#include <OSGCameraSetting.h>

#include <initializer_list>
#include <string>
#include <vector>

using kv::detail::FieldPlan;
using kv::detail::Special;

namespace {

using Field = kvAnimationUtils2::AnimationField;

std::uint32_t idOf(const osg::FieldContainerPtr& container) {
    return container == osg::NullFC ? 0 : osg::getContainerId(container);
}

osg::MaterialPtr materialOf(const osg::NodeCorePtr& core) {
    const osg::MaterialGroupPtr group = osg::MaterialGroupPtr::dcast(core);
    if (group != osg::NullFC) return group->getMaterial();
    const osg::MaterialDrawablePtr drawable = osg::MaterialDrawablePtr::dcast(core);
    if (drawable != osg::NullFC) return drawable->getMaterial();
    return osg::NullFC;
}

// What of a node a binding may belong to. Null ones are left out.
class NodeContainers {
  public:
    explicit NodeContainers(const osg::NodePtr& node) : node(node), core(node->getCore()) {}

    /// Calls visit(container) in the order given until it answers true; the container it was true
    /// for, or null.
    template <class Visit>
    osg::FieldContainerPtr first(std::initializer_list<osg::FieldContainerPtr> leading,
                                 Visit visit) const {
        for (const osg::FieldContainerPtr& container : leading)
            if (container != osg::NullFC && visit(container)) return container;
        for (const auto& slot : node->getSFAttachments()->getValue())
            if (slot.second != osg::NullFC && visit(slot.second)) return slot.second;
        return osg::NullFC;
    }

    osg::NodePtr node;
    osg::NodeCorePtr core;
};

bool hasField(const osg::FieldContainerPtr& container, const std::string& name) {
    return container->getType().findFieldDescription(name.c_str()) != nullptr;
}

// --- by attribute ------------------------------------------------------------------------------

// Whether the attribute is one of these names followed by X, Y or Z, and which of the three.
bool isAxisOf(std::initializer_list<const char*> names, const std::string& attribute, int& axis) {
    if (attribute.empty()) return false;
    axis = attribute.back() - 'X';
    if (axis < 0 || axis > 2) return false;
    for (const char* name : names)
        if (attribute.compare(0, attribute.size() - 1, name) == 0) return true;
    return false;
}

// Position of the component that a letter stands for; -1 for other letters.
int positionOf(char letter) {
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

// A light has no transform: its beacon has.
osg::NodePtr transformNodeOf(const osg::NodePtr& node) {
    const osg::LightPtr light = osg::LightPtr::dcast(node->getCore());
    if (light == osg::NullFC) return kvAnimationManager2::resolveTransformNode(node);
    return kvAnimationManager2::resolveTransformNode(light->getBeacon());
}

Field boundTo(const osg::NodePtr& node, const osg::FieldContainerPtr& container,
              const std::string& fieldName, const std::string& globalFieldName, int position) {
    Field binding;
    binding.node = node;
    binding.fcId = idOf(container);
    binding.coreTypeId = kvAnimationUtils2::extractCoreTypeId(node);
    binding.fieldName = fieldName;
    binding.globalFieldName = globalFieldName;
    binding.valuePosition = static_cast<std::uint16_t>(position);
    return binding;
}

// A component transform has translation and scale as fields of their own, a plain transform has the
// translation in the last column of its matrix, whose numbers count row by row.
Field boundToTransform(const osg::NodePtr& node, const char* fieldName, int axis) {
    if (node == osg::NullFC) return Field();
    const std::string name = fieldName;
    const std::string withLetter = name + static_cast<char>('X' + axis);
    const osg::NodeCorePtr core = node->getCore();
    if (hasField(core, name)) return boundTo(node, core, withLetter, name, axis);
    if (name == "translation" && hasField(core, "matrix"))
        return boundTo(node, core, withLetter, "matrix", 4 * axis + 3);
    return Field();
}

std::size_t numberCount(const osg::FieldContainerPtr& container, const std::string& name) {
    const osg::Field* field = container->getField(name.c_str());
    if (field == nullptr) return 0;
    std::vector<float> numbers;
    kv::detail::readNumbers(*field, numbers);
    return numbers.size();
}

// The attribute as a field of the node's core, the node, its material or one of its attachments.
Field boundToField(const osg::NodePtr& node, const std::string& attribute) {
    const NodeContainers containers(node);
    const int letter = attribute.empty() ? -1 : positionOf(attribute.back());
    const std::string withoutLetter =
        letter < 0 ? std::string() : attribute.substr(0, attribute.size() - 1);
    bool exact = false;
    const osg::FieldContainerPtr holder =
        containers.first({containers.core, node, materialOf(containers.core)},
                         [&](const osg::FieldContainerPtr& container) {
                             exact = hasField(container, attribute);
                             return exact || (letter >= 0 && hasField(container, withoutLetter) &&
                                              numberCount(container, withoutLetter) >
                                                  static_cast<std::size_t>(letter));
                         });
    if (holder == osg::NullFC) return Field();
    return boundTo(node, holder, attribute, exact ? attribute : withoutLetter, exact ? 0 : letter);
}

bool isCameraAttribute(const std::string& attribute) {
    return attribute == "fieldOfView" ||
           kv::detail::specialOf(FieldPlan::Container::CameraSetting, attribute) != Special::None;
}

Field boundByAttribute(const osg::NodePtr& node, const std::string& attribute) {
    int axis = 0;
    if (isAxisOf({"translate", "translation"}, attribute, axis))
        return boundToTransform(transformNodeOf(node), "translation", axis);
    if (isAxisOf({"scale"}, attribute, axis))
        return boundToTransform(transformNodeOf(node), "scale", axis);
    if (isAxisOf({"rotate", "rotation", "eulerR"}, attribute, axis)) {
        const osg::NodePtr transformNode = transformNodeOf(node);
        if (transformNode == osg::NullFC) return Field();
        const std::string name = std::string("rotation") + static_cast<char>('X' + axis);
        return boundTo(transformNode, transformNode, name, "rotation", 0);
    }
    if (attribute == "visible") return boundTo(node, node, attribute, attribute, 0);
    if (isCameraAttribute(attribute)) {
        const osg::CameraSettingPtr camera = osg::CameraSettingPtr::dcast(node->getCore());
        if (camera == osg::NullFC) return Field();
        return boundTo(node, camera, attribute, attribute, 0);
    }
    return boundToField(node, attribute);
}

// --- as stored ---------------------------------------------------------------------------------

// Whether a binding of this name can be one to this container of the node.
bool fitsTo(const Field& binding, const osg::FieldContainerPtr& container,
            const NodeContainers& containers) {
    if (kv::detail::specialOf(FieldPlan::Container::Node, binding.fieldName) != Special::None)
        return container == containers.node;
    if (kv::detail::specialOf(FieldPlan::Container::CameraSetting, binding.fieldName) !=
        Special::None)
        return container == containers.core &&
               osg::CameraSettingPtr::dcast(container) != osg::NullFC;
    return hasField(container, binding.globalFieldName);
}

// Ids are given out anew in every process: the stored one is only believed when it still belongs to
// the stored node.
std::uint32_t mendedId(const Field& binding) {
    const NodeContainers containers(binding.node);
    const auto search = [&](auto accept) {
        return containers.first({containers.node, containers.core, materialOf(containers.core)},
                                [&](const osg::FieldContainerPtr& container) {
                                    return accept(container) &&
                                           fitsTo(binding, container, containers);
                                });
    };
    const osg::FieldContainerPtr same = search(
        [&](const osg::FieldContainerPtr& container) { return idOf(container) == binding.fcId; });
    if (same != osg::NullFC) return binding.fcId;
    return idOf(search([](const osg::FieldContainerPtr&) { return true; }));
}

} // namespace

void kvAnimationUtils2::createAnimationField(kvAnimationCurve* curve) {
    if (curve == nullptr) return;
    const osg::NodePtr node = kvAnimationManager2::getAnimationNode(curve->getAppropriateNode());
    curve->setAnimationField(node == osg::NullFC
                                 ? AnimationField()
                                 : boundByAttribute(node, curve->getAnimatedAttribute()));
}

void kvAnimationUtils2::createAnimationField(
    const osg::FCPtr<osg::FieldContainerPtr, osg::AnimationCurve>& container,
    kvAnimationCurve* curve) {
    if (container == osg::NullFC || curve == nullptr) return;
    if (container->getAFFieldName().empty()) {
        createAnimationField(curve);
        return;
    }
    AnimationField binding;
    binding.node = container->getAFAppNode();
    binding.fcId = container->getAFFcId();
    binding.fieldName = container->getAFFieldName();
    binding.globalFieldName = container->getAFGlobalFieldName();
    binding.value = container->getAFValue();
    binding.valuePosition = container->getAFValuePosition();
    binding.dirty = container->getAFDirty();
    binding.coreTypeId = extractCoreTypeId(binding.node);
    if (binding.node != osg::NullFC) binding.fcId = mendedId(binding);
    curve->setAnimationField(binding);
}
