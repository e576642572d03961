// Plans: what a field name means for a type of container. A curve writes the same field on every
// tick; going through the descriptions by name each time would cost more than the write itself.

#include "fields/fieldPlan.h"

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVec3fFields.h>

#include <OSGCameraSetting.h>

#include <array>
#include <functional>
#include <memory>
#include <unordered_map>

namespace kv::detail {

namespace {

FieldPlan::Name nameKindOf(const std::string& name) {
    if (name == "fieldOfView") return FieldPlan::Name::FieldOfView;
    if (name == "from") return FieldPlan::Name::From;
    if (name == "at") return FieldPlan::Name::At;
    if (name == "up") return FieldPlan::Name::Up;
    return FieldPlan::Name::Other;
}

FieldPlan::Container containerKindOf(const osg::FieldContainerType& type) {
    if (type.isDerivedFrom(osg::Node::getClassType())) return FieldPlan::Container::Node;
    if (type.isDerivedFrom(osg::CameraSetting::getClassType()))
        return FieldPlan::Container::CameraSetting;
    return FieldPlan::Container::Other;
}

// The type is taken from the field and not from its description, which may name another one.
FieldTarget targetAt(const osg::FieldDescription& description, osg::UInt32 index,
                     const osg::Field& field) {
    FieldTarget target{};
    target.index = index;
    target.mask = description.getFieldMask();
    target.access = numberAccessOf(field.getType());
    target.isVec3f = field.getType().getId() == osg::SFVec3f::getClassType().getId();
    target.single = field.getCardinality() == osg::FieldType::SINGLE_FIELD;
    target.fixedCount = target.single && target.access != nullptr ? target.access->count(field) : 0;
    return target;
}

std::size_t plainCountOf(const FieldPlan& plan) {
    const bool isPlain = plan.targets.size() == 1 &&
                         plan.container != FieldPlan::Container::CameraSetting &&
                         plan.name != FieldPlan::Name::FieldOfView;
    return isPlain ? plan.targets.front().fixedCount : 0;
}

void makePlan(const osg::FieldContainerPtr& container, const std::string& fieldName,
              FieldPlan& plan) {
    osg::FieldContainerType& type = container->getType();
    const osg::FieldContainer& object = *container;
    plan.type = &type;
    plan.objectClass = &typeid(object);
    plan.descriptionCount = type.getNumFieldDescs();
    plan.fieldName = fieldName;
    plan.targets.clear();
    plan.container = containerKindOf(type);
    plan.name = nameKindOf(fieldName);
    for (osg::UInt32 i = 1; i <= plan.descriptionCount; ++i) {
        const osg::FieldDescription* description = type.getFieldDescription(i);
        if (description == nullptr || fieldName != description->getCName()) continue;
        if (const osg::Field* field = container->getField(i))
            plan.targets.push_back(targetAt(*description, i, *field));
    }
    plan.plainCount = plainCountOf(plan);
}

bool fits(const FieldPlan& plan, const osg::FieldContainerType& type, const std::string& name) {
    return plan.isFor(type) && plan.fieldName == name;
}

// Two levels: a small table that is hit on nearly every write and costs one comparison of names,
// and behind it a map of all plans.
class PlanCache {
  public:
    const FieldPlan& find(const osg::FieldContainerPtr& container, const std::string& name,
                          FieldPlan& spare) {
        const osg::FieldContainerType& type = container->getType();
        const FieldPlan*& recent = _recent[slotOf(type, name)];
        if (recent != nullptr && fits(*recent, type, name)) return *recent;

        const auto known = _plans.find(Key{&type, name});
        if (known != _plans.end()) {
            if (!fits(*known->second, type, name)) makePlan(container, name, *known->second);
            recent = known->second.get();
            return *recent;
        }
        if (_plans.size() >= kMaxPlans) {
            makePlan(container, name, spare);
            return spare;
        }
        auto plan = std::make_unique<FieldPlan>();
        makePlan(container, name, *plan);
        recent = plan.get();
        _plans.emplace(Key{&type, name}, std::move(plan));
        return *recent;
    }

  private:
    struct Key {
        const osg::FieldContainerType* type;
        std::string name;
        bool operator==(const Key& other) const { return type == other.type && name == other.name; }
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            return std::hash<const void*>()(key.type) ^ (std::hash<std::string>()(key.name) << 1);
        }
    };

    static constexpr std::size_t kSlots = 256;
    static constexpr std::size_t kMaxPlans = 4096;

    static std::size_t slotOf(const osg::FieldContainerType& type, const std::string& name) {
        const std::size_t ends =
            name.empty()
                ? 0
                : static_cast<unsigned char>(name.front()) +
                      static_cast<std::size_t>(static_cast<unsigned char>(name.back())) * 7;
        return (std::size_t{type.getId()} * 31 + ends + name.size() * 61) % kSlots;
    }

    std::array<const FieldPlan*, kSlots> _recent{};
    std::unordered_map<Key, std::unique_ptr<FieldPlan>, KeyHash> _plans;
};

} // namespace

const FieldPlan& planFor(const osg::FieldContainerPtr& container, const std::string& fieldName,
                         FieldPlan& spare) {
    static PlanCache cache;
    return cache.find(container, fieldName, spare);
}

} // namespace kv::detail
