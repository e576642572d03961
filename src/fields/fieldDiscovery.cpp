// Field discovery: which numbers of a node can be animated, and the bindings to them.

#include <kvAnimationUtils2.h>

#include "fields/fieldNumbers.h"
#include "fields/fieldPlan.h"
#include "fields/uberParameters.h"

#include <kvNodeUtils.h>

#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGNodeCore.h>

#include <OSGCameraSetting.h>

#include <algorithm>
#include <cstdint>
#include <limits>

using kv::detail::UberParameter;

namespace {

using Field = kvAnimationUtils2::AnimationField;

// The component letters of a content type, a letter a number; empty when it has none. Fields of
// these types must have at least three numbers, whatever the letters say.
std::string lettersOf(const std::string& contentType, bool colorParameter) {
    if (contentType == "Color3f") return "RGB";
    if (contentType == "Color4f") return "RGBA";
    if (contentType == "Vec3f" || contentType == "Pnt3f") return colorParameter ? "RGB" : "XYZ";
    if (contentType == "Vec4f") return colorParameter ? "RGBI" : "XYZW";
    return std::string();
}

std::uint16_t clampedCount(std::size_t count) {
    return static_cast<std::uint16_t>(
        (std::min)(count, static_cast<std::size_t>((std::numeric_limits<std::uint16_t>::max)())));
}

// Appends the bindings of one field to the result.
class FieldBinder {
  public:
    FieldBinder(const osg::NodePtr& node, const osg::FieldContainerPtr& container,
                std::vector<Field>& result)
        : _result(result) {
        _common.node = node;
        _common.fcId = osg::getContainerId(container);
        _common.coreTypeId = kvAnimationUtils2::extractCoreTypeId(node);
        if (node != osg::NullFC)
            _common.metaInfo = std::make_shared<const kvAnimationUtils2::MetaInfo>(
                kvAnimationUtils2::getMetaInfo(node));
    }

    void bind(const std::string& name, const osg::Field& field, bool colorParameter) {
        kv::detail::readNumbers(field, _numbers);
        const std::string letters = lettersOf(field.getContentType().getCName(), colorParameter);
        if (!letters.empty() && _numbers.size() >= 3) {
            for (std::size_t i = 0; i < letters.size(); ++i)
                append(name, name + letters[i], i);
        } else if (_numbers.size() == 1) {
            append(name, name, 0);
        }
    }

  private:
    void append(const std::string& globalName, const std::string& name, std::size_t position) {
        Field binding = _common;
        binding.fieldName = name;
        binding.globalFieldName = globalName;
        binding.value = position < _numbers.size() ? _numbers[position] : 0.0F;
        binding.valuePosition = static_cast<std::uint16_t>(position);
        binding.componentCount = clampedCount(_numbers.size());
        _result.push_back(std::move(binding));
    }

    std::vector<Field>& _result;
    Field _common;
    std::vector<float> _numbers;
};

} // namespace

std::vector<Field> kvAnimationUtils2::getAnimationFields(const osg::NodePtr& node,
                                                         const osg::FieldContainerPtr& container) {
    std::vector<AnimationField> result;
    if (container == osg::NullFC) return result;
    FieldBinder binder(node, container, result);
    osg::FieldContainerType& type = container->getType();
    const osg::UInt32 count = type.getNumFieldDescs();
    for (osg::UInt32 i = 1; i <= count; ++i) {
        const osg::FieldDescription* description = type.getFieldDescription(i);
        if (description == nullptr) continue;
        const std::string name = description->getCName();
        const UberParameter parameter = kv::detail::uberParameter(container, name);
        const bool candidate = parameter == UberParameter::NoUberMaterial
                                   ? isAnimationAttribute(name)
                                   : parameter != UberParameter::NoParameter;
        if (!candidate) continue;
        if (const osg::Field* field = container->getField(i))
            binder.bind(name, *field, parameter == UberParameter::Color);
    }
    return result;
}

std::vector<Field> kvAnimationUtils2::getSpecialAnimationFields(const osg::NodePtr& node) {
    std::vector<AnimationField> result;
    if (node == osg::NullFC) return result;
    const osg::CameraSettingPtr camera = osg::CameraSettingPtr::dcast(node->getCore());
    if (camera == osg::NullFC) return result;
    AnimationField binding;
    binding.node = node;
    binding.fcId = osg::getContainerId(camera);
    binding.coreTypeId = extractCoreTypeId(node);
    binding.componentCount = 1;
    binding.metaInfo = std::make_shared<const MetaInfo>(getMetaInfo(node));
    for (const char* name : {"distance", "height", "turnTableAngle", "fStop", "focalLength"}) {
        binding.fieldName = name;
        binding.globalFieldName = name;
        binding.value = getRealFieldValue(binding);
        result.push_back(binding);
    }
    return result;
}

kvAnimationUtils2::MetaInfo kvAnimationUtils2::getMetaInfo(const osg::NodePtr& node) {
    MetaInfo info;
    if (node == osg::NullFC) return info;
    info.nodeName = kvNodeUtils::getName(node);
    const osg::NodeCorePtr core = node->getCore();
    if (core != osg::NullFC) info.coreTypeName = core->getType().getCName();
    return info;
}

std::uint32_t kvAnimationUtils2::extractCoreTypeId(const osg::NodePtr& node) {
    if (node == osg::NullFC) return 0;
    const osg::NodeCorePtr core = node->getCore();
    return core == osg::NullFC ? 0 : core->getType().getId();
}
