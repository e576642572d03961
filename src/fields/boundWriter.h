#pragma once

#include "fields/fieldPlan.h"
#include "fields/specialQuantities.h"

#include <kvAnimationUtils2.h>

#include <cstdint>

/// @file
/// Writing through one binding again and again.

namespace kv::detail {

/// kvAnimationUtils2::setRealFieldValue for a binding that is written on every tick: what its names
/// mean is looked up by the first write and again only when the id leads to a container of another
/// type. The container itself is looked up every time, because it may be gone.
class BoundWriter {
  public:
    using Field = kvAnimationUtils2::AnimationField;

    BoundWriter() = default;
    explicit BoundWriter(const Field& binding)
        : _container(binding.fcId), _position(binding.valuePosition) {}

    /// \p binding has the names of the one that this was made for, and is only read when they are
    /// looked up.
    void write(const Field& binding, float value);

    /// The id of the container, whether there still is one or not.
    std::uint32_t container() const { return _container; }

  private:
    bool knows(const osg::FieldContainer& object) const {
        return _plan != nullptr && _plan->isFor(object);
    }
    void writePlain(osg::FieldContainerPtr container, float value) const;
    void lookUpAndWrite(const osg::FieldContainerPtr& container, const Field& binding, float value);

    const FieldPlan* _plan = nullptr; // null until the first write
    std::uint32_t _container = 0;
    std::uint16_t _position = 0;
    Special _special = Special::None;
};

} // namespace kv::detail
