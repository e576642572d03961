// The content types of all field values, and the forms that are more than a row of numbers.

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGDataType.h>
#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGSysFieldDataType.h>
#include <OpenSG/OSGVecFieldDataType.h>

#include <initializer_list>

namespace osg {

// clang-format off
OSG_SYS_VALUE_TYPES(OSG_DEFINE_VALUE_TYPE)
OSG_VEC_VALUE_TYPES(OSG_DEFINE_VALUE_TYPE)
OSG_MATH_VALUE_TYPES(OSG_DEFINE_VALUE_TYPE)
OSG_BASE_VALUE_TYPES(OSG_DEFINE_VALUE_TYPE)
// clang-format on

namespace {

template <class Number>
void appendNumbers(std::string& text, std::initializer_list<Number> numbers) {
    for (const Number number : numbers) {
        if (!text.empty()) text += ' ';
        detail::appendReal(text, number);
    }
}

} // namespace

void MatrixFieldForm::putToString(const Matrix& value, std::string& text) {
    text.clear();
    for (UInt32 row = 0; row < 4; ++row)
        appendNumbers(text, {value[0][row], value[1][row], value[2][row], value[3][row]});
}

void QuaternionFieldForm::putToString(const Quaternion& value, std::string& text) {
    Real32 x = 0;
    Real32 y = 0;
    Real32 z = 0;
    Real32 angle = 0;
    value.getValueAsAxisRad(x, y, z, angle);
    text.clear();
    appendNumbers(text, {x, y, z, angle});
}

bool DynamicVolumeFieldForm::getFromString(DynamicVolume& value, const Char8*& text) {
    if (text == nullptr) return false;
    const Char8* rest = text;
    Real32 numbers[6] = {};
    UInt32 count = 0;
    for (const Char8* token; count < 6 && (token = detail::nextToken(rest)) != nullptr; ++count)
        numbers[count] = TypeTraits<Real32>::getFromString(token);
    const Pnt3f first(numbers[0], numbers[1], numbers[2]);
    if (count == 4) {
        value.setSphere(first, numbers[3]);
    } else {
        value.setBounds(first, Pnt3f(numbers[3], numbers[4], numbers[5]));
    }
    return true;
}

void DynamicVolumeFieldForm::putToString(const DynamicVolume& value, std::string& text) {
    text.clear();
    if (value.getType() == DynamicVolume::SPHERE_VOLUME) {
        Pnt3f center;
        value.getCenter(center);
        appendNumbers(text, {center[0], center[1], center[2], value.getRadius()});
        return;
    }
    Pnt3f low;
    Pnt3f high;
    value.getBounds(low, high);
    appendNumbers(text, {low[0], low[1], low[2], high[0], high[1], high[2]});
}

// In binary: the type in 32 bits, the state in 16, then the numbers of the text.

UInt32 DynamicVolumeFieldForm::getBinSize(const DynamicVolume& value) {
    const UInt32 numbers = value.getType() == DynamicVolume::SPHERE_VOLUME ? 4 : 6;
    return static_cast<UInt32>(sizeof(UInt32) + sizeof(UInt16) + numbers * sizeof(Real32));
}

void DynamicVolumeFieldForm::copyToBin(BinaryDataHandler& handler, const DynamicVolume& value) {
    handler.putValue(static_cast<UInt32>(value.getType()));
    handler.putValue(value.getState());
    Pnt3f low;
    Pnt3f high;
    if (value.getType() == DynamicVolume::SPHERE_VOLUME) {
        value.getCenter(low);
        handler.putValues(low.getValues(), 3);
        handler.putValue(value.getRadius());
        return;
    }
    value.getBounds(low, high);
    handler.putValues(low.getValues(), 3);
    handler.putValues(high.getValues(), 3);
}

void DynamicVolumeFieldForm::copyFromBin(BinaryDataHandler& handler, DynamicVolume& value) {
    UInt32 type = 0;
    UInt16 state = 0;
    handler.getValue(type);
    handler.getValue(state);
    if (type > DynamicVolume::SPHERE_VOLUME)
        throw BinaryDataHandler::ReadError("unknown type of volume");
    Pnt3f low;
    handler.getValues(low.getValues(), 3);
    if (type == DynamicVolume::SPHERE_VOLUME) {
        Real32 radius = 0;
        handler.getValue(radius);
        value.setSphere(low, radius);
    } else {
        Pnt3f high;
        handler.getValues(high.getValues(), 3);
        value.setBounds(low, high);
    }
    value.setState(state);
}

} // namespace osg
