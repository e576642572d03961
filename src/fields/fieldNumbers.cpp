// The numbers of fields, for every type of field whose values are made of numbers.

#include "fields/fieldNumbers.h"

#include <kvAnimationUtils2.h>
#include <kvString.h>

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace kv::detail {

namespace {

// --- one number --------------------------------------------------------------------------------

template <class Number>
Number fromFloat(float value) {
    if constexpr (std::is_same_v<Number, bool>) {
        return kvAnimationUtils2::floatToBool(value);
    } else if constexpr (std::is_integral_v<Number>) {
        // Compared in double, where the limits of the widest types are the next powers of two: what
        // is below them fits.
        const double rounded = std::trunc(static_cast<double>(value) + (value < 0.0F ? -0.5 : 0.5));
        if (rounded <= static_cast<double>((std::numeric_limits<Number>::min)()))
            return (std::numeric_limits<Number>::min)();
        if (rounded >= static_cast<double>((std::numeric_limits<Number>::max)()))
            return (std::numeric_limits<Number>::max)();
        return static_cast<Number>(rounded);
    } else {
        return static_cast<Number>(value);
    }
}

template <class Number>
float toFloat(Number number) {
    return static_cast<float>(number);
}

// --- one value ---------------------------------------------------------------------------------

// Parts<Value>: how many numbers a value is, and how to get at each.
template <class Value, class = void>
struct Parts;

template <class Number>
struct Parts<Number, std::enable_if_t<std::is_arithmetic_v<Number>>> {
    static constexpr std::size_t kCount = 1;
    static constexpr bool kTakesNaN =
        std::is_floating_point_v<Number> || std::is_same_v<Number, bool>;
    static float get(Number value, std::size_t) { return toFloat(value); }
    static void set(Number& value, std::size_t, float number) { value = fromFloat<Number>(number); }
};

template <class Value, std::size_t count>
struct IndexedParts {
    using Number = std::decay_t<decltype(std::declval<Value&>()[0u])>;
    static constexpr std::size_t kCount = count;
    static constexpr bool kTakesNaN = std::is_floating_point_v<Number>;
    static float get(const Value& value, std::size_t part) {
        return toFloat(value[static_cast<osg::UInt32>(part)]);
    }
    static void set(Value& value, std::size_t part, float number) {
        value[static_cast<osg::UInt32>(part)] = fromFloat<Number>(number);
    }
};

template <class Number, osg::UInt32 count>
struct Parts<osg::Vector<Number, count>> : IndexedParts<osg::Vector<Number, count>, count> {};

template <class Number, osg::UInt32 count>
struct Parts<osg::Point<Number, count>> : IndexedParts<osg::Point<Number, count>, count> {};

template <class Number>
struct Parts<osg::Color3<Number>> : IndexedParts<osg::Color3<Number>, 3> {};

template <class Number>
struct Parts<osg::Color4<Number>> : IndexedParts<osg::Color4<Number>, 4> {};

template <>
struct Parts<osg::Matrix> {
    static constexpr std::size_t kCount = 16;
    static constexpr bool kTakesNaN = true;
    static float get(const osg::Matrix& matrix, std::size_t part) {
        return matrix[static_cast<osg::UInt32>(part % 4)][static_cast<osg::UInt32>(part / 4)];
    }
    static void set(osg::Matrix& matrix, std::size_t part, float number) {
        matrix[static_cast<osg::UInt32>(part % 4)][static_cast<osg::UInt32>(part / 4)] = number;
    }
};

template <>
struct Parts<osg::Quaternion> {
    static constexpr std::size_t kCount = 4;
    static constexpr bool kTakesNaN = true;
    static float get(const osg::Quaternion& rotation, std::size_t part) {
        float axisAndAngle[4];
        rotation.getValueAsAxisRad(axisAndAngle[0], axisAndAngle[1], axisAndAngle[2],
                                   axisAndAngle[3]);
        return axisAndAngle[part];
    }
    static void set(osg::Quaternion& rotation, std::size_t part, float number) {
        float axisAndAngle[4];
        rotation.getValueAsAxisRad(axisAndAngle[0], axisAndAngle[1], axisAndAngle[2],
                                   axisAndAngle[3]);
        axisAndAngle[part] = number;
        rotation.setValueAsAxisRad(axisAndAngle[0], axisAndAngle[1], axisAndAngle[2],
                                   axisAndAngle[3]);
    }
};

// --- one field ---------------------------------------------------------------------------------

template <class SingleField>
NumberAccess singleAccess() {
    using Value = std::decay_t<decltype(std::declval<SingleField&>().getValue())>;
    using Part = Parts<Value>;
    return {[](const osg::Field&) { return Part::kCount; },
            [](const osg::Field& field, std::size_t position) {
                return Part::get(static_cast<const SingleField&>(field).getValue(), position);
            },
            [](osg::Field& field, std::size_t position, float value) {
                Part::set(static_cast<SingleField&>(field).getValue(), position, value);
            },
            Part::kTakesNaN};
}

template <class MultiField>
NumberAccess multiAccess() {
    using Value = std::decay_t<decltype(std::declval<MultiField&>()[0])>;
    using Part = Parts<Value>;
    return {[](const osg::Field& field) {
                return static_cast<std::size_t>(field.getSize()) * Part::kCount;
            },
            [](const osg::Field& field, std::size_t position) {
                const auto& values = static_cast<const MultiField&>(field);
                const auto element = static_cast<osg::UInt32>(position / Part::kCount);
                return Part::get(values[element], position % Part::kCount);
            },
            [](osg::Field& field, std::size_t position, float value) {
                auto& values = static_cast<MultiField&>(field);
                const auto element = static_cast<osg::UInt32>(position / Part::kCount);
                Part::set(values[element], position % Part::kCount, value);
            },
            Part::kTakesNaN};
}

// A list of bools need not hold bools that can be referred to.
NumberAccess boolListAccess() {
    return {[](const osg::Field& field) { return static_cast<std::size_t>(field.getSize()); },
            [](const osg::Field& field, std::size_t position) {
                const auto& values = static_cast<const osg::MFBool&>(field);
                return values[static_cast<osg::UInt32>(position)] ? 1.0F : 0.0F;
            },
            [](osg::Field& field, std::size_t position, float value) {
                auto& values = static_cast<osg::MFBool&>(field);
                values[static_cast<osg::UInt32>(position)] = fromFloat<bool>(value);
            },
            true};
}

using AccessByType = std::unordered_map<osg::UInt32, NumberAccess>;

template <class... SingleFields>
void addSingle(AccessByType& table) {
    (table.emplace(SingleFields::getClassType().getId(), singleAccess<SingleFields>()), ...);
}

template <class... MultiFields>
void addMulti(AccessByType& table) {
    (table.emplace(MultiFields::getClassType().getId(), multiAccess<MultiFields>()), ...);
}

AccessByType makeTable() {
    using namespace osg;
    AccessByType table;
    addSingle<SFBool, SFInt8, SFUInt8, SFInt16, SFUInt16, SFInt32, SFUInt32, SFInt64, SFUInt64,
              SFReal32, SFReal64, SFGLenum, SFTime, SFBitVector>(table);
    addSingle<SFVec2f, SFVec3f, SFVec4f, SFVec2d, SFVec3d, SFVec4d, SFPnt2f, SFPnt3f, SFPnt4f,
              SFPnt2d, SFPnt3d, SFPnt4d>(table);
    addSingle<SFVec2b, SFVec3b, SFVec4b, SFVec2ub, SFVec3ub, SFVec4ub, SFVec2s, SFVec3s, SFVec4s,
              SFVec2us, SFVec3us, SFVec4us, SFPnt2s, SFPnt3s, SFPnt4s>(table);
    addSingle<SFColor3f, SFColor4f, SFColor3ub, SFColor4ub, SFMatrix, SFQuaternion>(table);
    addMulti<MFInt8, MFUInt8, MFInt16, MFUInt16, MFInt32, MFUInt32, MFInt64, MFUInt64, MFReal32,
             MFReal64, MFGLenum, MFTime, MFBitVector>(table);
    addMulti<MFVec2f, MFVec3f, MFVec4f, MFVec2d, MFVec3d, MFVec4d, MFPnt2f, MFPnt3f, MFPnt4f,
             MFPnt2d, MFPnt3d, MFPnt4d>(table);
    addMulti<MFVec2b, MFVec3b, MFVec4b, MFVec2ub, MFVec3ub, MFVec4ub, MFVec2s, MFVec3s, MFVec4s,
             MFVec2us, MFVec3us, MFVec4us, MFPnt2s, MFPnt3s, MFPnt4s>(table);
    addMulti<MFColor3f, MFColor4f, MFColor3ub, MFColor4ub, MFMatrix, MFQuaternion>(table);
    table.emplace(MFBool::getClassType().getId(), boolListAccess());
    return table;
}

// Asking these for their text makes OpenSG write to its log, and what it says holds no numbers.
bool isWithoutNumbers(const osg::Field& field) {
    const std::string content = field.getContentType().getCName();
    const std::string pointer = "Ptr";
    return content == "AttachmentMap" ||
           (content.size() >= pointer.size() &&
            content.compare(content.size() - pointer.size(), pointer.size(), pointer) == 0);
}

} // namespace

const NumberAccess* numberAccessOf(const osg::FieldType& type) {
    static const AccessByType table = makeTable();
    const auto found = table.find(type.getId());
    return found == table.end() ? nullptr : &found->second;
}

void readNumbers(const osg::Field& field, std::vector<float>& numbers) {
    const NumberAccess* access = numberAccessOf(field.getType());
    if (access == nullptr) {
        readNumbersFromText(field, numbers);
        return;
    }
    numbers.resize(access->count(field));
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = access->read(field, i);
}

void readNumbersFromText(const osg::Field& field, std::vector<float>& numbers) {
    numbers.clear();
    if (isWithoutNumbers(field)) return;
    std::string text;
    field.getValueByStr(text);
    kvString::getValuesFromString(text, numbers);
}

} // namespace kv::detail
