// Reading and writing the scene through bindings: the only place where the number of a curve
// reaches a field container. Writing runs once a curve and tick. Everything that depends on names
// and types alone comes from a remembered plan; the container is looked up by its id every time,
// because it may be gone.

#include <kvAnimationUtils2.h>

#include "fields/boundWriter.h"
#include "fields/fieldPlan.h"
#include "fields/specialQuantities.h"

#include <kvAnimationManager2.h>
#include <kvString.h>

#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGVec3fFields.h>

#include <string>
#include <vector>

using kv::detail::FieldPlan;
using kv::detail::FieldTarget;
using kv::detail::Special;

namespace {

using Field = kvAnimationUtils2::AnimationField;

// In single precision and in this order of operations; 90 degrees are 1.5707964.
float stored(float value, FieldPlan::Name name) {
    return name == FieldPlan::Name::FieldOfView ? value * 2.0F * 3.1415927F / 360.0F : value;
}

float shown(float value, FieldPlan::Name name) {
    return name == FieldPlan::Name::FieldOfView ? value / 6.2831855F * 360.0F : value;
}

// The viewer's own camera belongs to the host: the component is changed there. A name that is none
// of its three vectors hands the camera back as it came.
void writeHostCamera(FieldPlan::Name name, unsigned position, float value) {
    osg::Pnt3f from(0.0F, 0.0F, 0.0F);
    osg::Pnt3f at(0.0F, 0.0F, 0.0F);
    osg::Vec3f up(0.0F, 0.0F, 0.0F);
    kvAnimationManager2::getFromAtUp(from, at, up);
    if (position <= 2) {
        if (name == FieldPlan::Name::At) at[position] = value;
        if (name == FieldPlan::Name::Up) up[position] = value;
        if (name == FieldPlan::Name::From) from[position] = value;
    }
    kvAnimationManager2::setFromAtUp(from, at, up);
}

void writeText(const osg::FieldContainerPtr& container, const FieldTarget& target,
               osg::Field& field, std::size_t position, float value) {
    // Pushing text into a field of many values appends to it.
    if (!target.single) return;
    std::vector<float> numbers;
    kv::detail::readNumbersFromText(field, numbers);
    if (position >= numbers.size()) return;
    numbers[position] = value;
    const std::string text = kvString::createStringFromValues(numbers);
    osg::beginEditCP(container, target.mask);
    field.pushValueByStr(text.c_str());
    osg::endEditCP(container, target.mask);
}

// The position is one that the field has.
void writeNumber(const osg::FieldContainerPtr& container, const FieldTarget& target,
                 osg::Field& field, std::size_t position, float value) {
    if (value != value && !target.access->takesNaN) return;
    osg::beginEditCP(container, target.mask);
    target.access->write(field, position, value);
    osg::endEditCP(container, target.mask);
}

void writeField(const osg::FieldContainerPtr& container, const FieldTarget& target,
                std::size_t position, float value) {
    osg::Field* field = container->getField(target.index);
    if (field == nullptr) return;
    if (target.access == nullptr) {
        writeText(container, target, *field, position, value);
        return;
    }
    const std::size_t count =
        target.fixedCount != 0 ? target.fixedCount : target.access->count(*field);
    if (position < count) writeNumber(container, target, *field, position, value);
}

void writeCamera(const osg::FieldContainerPtr& container, const FieldPlan& plan, unsigned position,
                 float value) {
    const osg::CameraSettingPtr camera = osg::CameraSettingPtr::dcast(container);
    const bool movesCamera = plan.name == FieldPlan::Name::From ||
                             plan.name == FieldPlan::Name::At || plan.name == FieldPlan::Name::Up;
    for (const FieldTarget& target : plan.targets) {
        if (camera->getIsViewpoint()) {
            writeHostCamera(plan.name, position, value);
            continue;
        }
        writeField(container, target, position, stored(value, plan.name));
        if (movesCamera) kv::detail::handToHostCamera(camera);
    }
}

void writeFields(const osg::FieldContainerPtr& container, const FieldPlan& plan, unsigned position,
                 float value) {
    if (plan.container == FieldPlan::Container::CameraSetting) {
        writeCamera(container, plan, position, value);
        return;
    }
    for (const FieldTarget& target : plan.targets)
        writeField(container, target, position, stored(value, plan.name));
}

// The plan and the special quantity are what the names of the binding mean for this container.
void writeBound(const osg::FieldContainerPtr& container, const FieldPlan& plan, Special special,
                unsigned position, float value) {
    const FieldPlan::Container kind = plan.container;
    if (special == Special::None) {
        writeFields(container, plan, position, value);
        return;
    }
    osg::FieldContainerPtr still = container;
    if (!plan.targets.empty()) {
        const std::uint32_t id = osg::getContainerId(container);
        writeFields(container, plan, position, value);
        // Written after the fields, whose edits may have made the host destroy the container.
        still = kv::detail::containerById(id);
        if (still == osg::NullFC) return;
    }
    if (kind == FieldPlan::Container::Node)
        kv::detail::writeSpecial(osg::NodePtr::dcast(still), special, value);
    else
        kv::detail::writeSpecial(osg::CameraSettingPtr::dcast(still), special, value);
}

float readField(const osg::FieldContainerPtr& container, const FieldTarget& target,
                std::size_t position) {
    const osg::Field* field = container->getField(target.index);
    if (field == nullptr) return 0.0F;
    if (target.access != nullptr)
        return position < target.access->count(*field) ? target.access->read(*field, position)
                                                       : 0.0F;
    std::vector<float> numbers;
    kv::detail::readNumbersFromText(*field, numbers);
    return position < numbers.size() ? numbers[position] : 0.0F;
}

} // namespace

void kvAnimationUtils2::setRealFieldValue(const AnimationField& field) {
    const osg::FieldContainerPtr container = kv::detail::containerById(field.fcId);
    if (container == osg::NullFC) return;
    FieldPlan spare;
    const FieldPlan& plan = kv::detail::planFor(container, field.globalFieldName, spare);
    writeBound(container, plan, kv::detail::specialOf(plan.container, field.fieldName),
               field.valuePosition, field.value);
}

void kv::detail::BoundWriter::write(const Field& binding, float value) {
    const osg::FieldContainerPtr container = containerById(_container);
    if (container == osg::NullFC) return;
    if (!knows(*container))
        lookUpAndWrite(container, binding, value);
    else if (_special == Special::None && _position < _plan->plainCount)
        writePlain(container, value);
    else
        writeBound(container, *_plan, _special, _position, value);
}

// The container by value: its address would keep it in memory across the store.
void kv::detail::BoundWriter::writePlain(osg::FieldContainerPtr container, float value) const {
    const FieldTarget& target = _plan->targets.front();
    osg::Field* const field = container->getField(target.index);
    if (field == nullptr) return;
    if (!target.isVec3f) {
        writeNumber(container, target, *field, _position, value);
        return;
    }
    osg::beginEditCP(container, target.mask);
    static_cast<osg::SFVec3f*>(field)->getValue()[_position] = value;
    osg::endEditCP(container, target.mask);
}

void kv::detail::BoundWriter::lookUpAndWrite(const osg::FieldContainerPtr& container,
                                             const Field& binding, float value) {
    FieldPlan spare;
    const FieldPlan& plan = planFor(container, binding.globalFieldName, spare);
    _special = specialOf(plan.container, binding.fieldName);
    _plan = &plan == &spare ? nullptr : &plan;
    writeBound(container, plan, _special, _position, value);
}

float kvAnimationUtils2::getRealFieldValue(const AnimationField& field) {
    const osg::FieldContainerPtr container = kv::detail::containerById(field.fcId);
    if (container == osg::NullFC) return 0.0F;
    FieldPlan spare;
    const FieldPlan& plan = kv::detail::planFor(container, field.globalFieldName, spare);
    if (!plan.targets.empty())
        return shown(readField(container, plan.targets.front(), field.valuePosition), plan.name);

    const Special special = kv::detail::specialOf(plan.container, field.fieldName);
    if (special == Special::None) return 0.0F;
    if (plan.container == FieldPlan::Container::Node)
        return kv::detail::readSpecial(osg::NodePtr::dcast(container), special);
    return kv::detail::readSpecial(osg::CameraSettingPtr::dcast(container), special);
}
