// Reading and printing field values with their own types, so that numbers need not go through
// strings and keep all their digits.

#include "files/fieldValues.h"

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <cmath>
#include <string_view>
#include <unordered_map>

namespace osg::files {

namespace {

/// Elements of a list go on in a new line behind this many characters.
constexpr std::uint64_t kLineLength = 60;

template <class Number>
void printNumber(Number value, ValuePrinter& printer) {
    if constexpr (std::is_floating_point_v<Number>) {
        printer.sawNonFinite = printer.sawNonFinite || !std::isfinite(value);
        printer.out.put(value);
    } else if constexpr (std::is_signed_v<Number>) {
        printer.out.putInteger(static_cast<std::int64_t>(value));
    } else {
        printer.out.putInteger(static_cast<std::uint64_t>(value));
    }
}

template <class Number>
void printNumbers(const Number* values, unsigned count, ValuePrinter& printer) {
    for (unsigned i = 0; i < count; ++i) {
        if (i > 0) printer.out.put(' ');
        printNumber(values[i], printer);
    }
}

/// The text of a T. This one is for numbers.
template <class T>
struct ValueText {
    static_assert(std::is_arithmetic_v<T>, "other types have a ValueText of their own");
    static constexpr UInt32 kWidth = sizeof(T);

    static ValueResult read(T& value, ValueReader& reader, StringPlace) {
        return reader.number(value);
    }
    static void print(const T& value, ValuePrinter& printer) { printNumber(value, printer); }
};

template <>
struct ValueText<bool> {
    static constexpr UInt32 kWidth = 1;

    static ValueResult read(bool& value, ValueReader& reader, StringPlace) {
        return reader.boolean(value);
    }
    static void print(bool value, ValuePrinter& printer) {
        printer.out.put(value ? "TRUE" : "FALSE");
    }
};

template <>
struct ValueText<std::string> {
    static constexpr UInt32 kWidth = 0;

    static ValueResult read(std::string& value, ValueReader& reader, StringPlace place) {
        return reader.text(place, value);
    }

    static void print(const std::string& value, ValuePrinter& printer) {
        printer.out.put('"');
        std::string_view rest = value;
        while (!rest.empty()) {
            const std::size_t plain = rest.find_first_of("\"\\");
            printer.out.put(rest.substr(0, plain));
            if (plain == std::string_view::npos) break;
            printer.out.put('\\');
            printer.out.put(rest[plain]);
            rest.remove_prefix(plain + 1);
        }
        printer.out.put('"');
    }
};

/// Vectors, points and colours: their numbers with a blank between them.
template <class T, class Number, unsigned N>
struct TupleText {
    static constexpr UInt32 kWidth = N * sizeof(Number);

    static ValueResult read(T& value, ValueReader& reader, StringPlace) {
        return reader.numbers(&value[0], N);
    }
    static void print(const T& value, ValuePrinter& printer) {
        printNumbers(&value[0], N, printer);
    }
};

template <class Number, UInt32 N>
struct ValueText<Vector<Number, N>> : TupleText<Vector<Number, N>, Number, N> {};
template <class Number, UInt32 N>
struct ValueText<Point<Number, N>> : TupleText<Point<Number, N>, Number, N> {};
template <class Number>
struct ValueText<Color3<Number>> : TupleText<Color3<Number>, Number, 3> {};
template <class Number>
struct ValueText<Color4<Number>> : TupleText<Color4<Number>, Number, 4> {};

/// Row by row, while memory goes column by column.
template <>
struct ValueText<Matrix> {
    static constexpr UInt32 kWidth = 16 * sizeof(Real32);

    static ValueResult read(Matrix& value, ValueReader& reader, StringPlace) {
        Real32 rows[16];
        const ValueResult result = reader.numbers(rows, 16);
        if (result != ValueResult::kRead) return result;
        for (UInt32 i = 0; i < 16; ++i)
            value[i % 4][i / 4] = rows[i];
        return result;
    }
    static void print(const Matrix& value, ValuePrinter& printer) {
        Real32 rows[16];
        for (UInt32 i = 0; i < 16; ++i)
            rows[i] = value[i % 4][i / 4];
        printNumbers(rows, 16, printer);
    }
};

/// Axis and angle in radians. Both ways are calculated and printed in double precision: rounding
/// axis and angle to float would give a slightly different rotation with every save.
template <>
struct ValueText<Quaternion> {
    static constexpr UInt32 kWidth = 4 * sizeof(Real32);

    static ValueResult read(Quaternion& value, ValueReader& reader, StringPlace) {
        Real64 v[4] = {};
        const ValueResult result = reader.numbers(v, 4);
        if (result != ValueResult::kRead) return result;
        const Real64 length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        value.setIdentity();
        if (length <= Eps) return result;
        const Real64 factor = std::sin(v[3] / 2) / length;
        value.setValueAsQuat(static_cast<Real32>(v[0] * factor), static_cast<Real32>(v[1] * factor),
                             static_cast<Real32>(v[2] * factor),
                             static_cast<Real32>(std::cos(v[3] / 2)));
        return result;
    }
    static void print(const Quaternion& value, ValuePrinter& printer) {
        const Real64 x = value[0], y = value[1], z = value[2], w = value[3];
        const Real64 length = std::sqrt(x * x + y * y + z * z);
        Real64 axisAngle[4] = {0, 0, 1, 0};
        // A NaN in the quaternion must come out as one.
        if (!(length == 0)) {
            axisAngle[0] = x / length;
            axisAngle[1] = y / length;
            axisAngle[2] = z / length;
            axisAngle[3] = 2 * std::atan2(length, w);
        } else if (!(w > 0)) {
            axisAngle[3] = std::isnan(w) ? w : 2 * std::atan2(length, w);
        }
        printNumbers(axisAngle, 4, printer);
    }
};

/// Corners of a box, or center and radius of a sphere.
template <>
struct ValueText<DynamicVolume> {
    static constexpr UInt32 kWidth = 0;

    static ValueResult read(DynamicVolume& value, ValueReader& reader, StringPlace) {
        Real32 v[6];
        ValueResult result = reader.numbers(v, 4);
        if (result != ValueResult::kRead) return result;
        const Pnt3f first(v[0], v[1], v[2]);
        if (!reader.isNumberNext()) {
            value.setSphere(first, v[3]);
            return result;
        }
        result = reader.numbers(v + 4, 2);
        if (result == ValueResult::kRead) value.setBounds(first, Pnt3f(v[3], v[4], v[5]));
        return reader.required(result);
    }
    static void print(const DynamicVolume& value, ValuePrinter& printer) {
        Pnt3f first;
        Pnt3f second;
        const bool sphere = value.getType() == DynamicVolume::SPHERE_VOLUME;
        if (sphere)
            value.getCenter(first);
        else
            value.getBounds(first, second);
        printNumbers(first.getValues(), 3, printer);
        printer.out.put(' ');
        if (sphere)
            printNumber(value.getRadius(), printer);
        else
            printNumbers(second.getValues(), 3, printer);
    }
};

template <class F>
struct SingleText {
    typedef typename F::StoredType Value;

    static ValueResult read(Field& field, ValueReader& reader) {
        Value& stored = static_cast<F&>(field).getValue();
        if constexpr (std::is_same_v<Value, std::string>) {
            return ValueText<Value>::read(stored, reader, StringPlace::kSingle);
        } else {
            Value value = stored;
            const ValueResult result = ValueText<Value>::read(value, reader, StringPlace::kSingle);
            if (result == ValueResult::kRead) stored = value;
            return result;
        }
    }
    static void print(const Field& field, ValuePrinter& printer) {
        ValueText<Value>::print(static_cast<const F&>(field).getValue(), printer);
    }

    static constexpr FieldText kText = {&read, &print, nullptr, nullptr, sizeof(Value)};
};

template <class F>
struct MultiText {
    typedef typename F::StoredType Value;

    static ValueResult read(Field& field, ValueReader& reader) {
        Value value = Value();
        const ValueResult result = ValueText<Value>::read(value, reader, StringPlace::kInList);
        if (result == ValueResult::kRead) static_cast<F&>(field).push_back(value);
        return result;
    }

    static void print(const Field& field, ValuePrinter& printer) {
        ByteOutput& out = printer.out;
        out.putBlanks(printer.indent);
        std::uint64_t lineStart = out.count();
        bool first = true;
        for (const auto& value : static_cast<const F&>(field)) {
            if (!first) {
                out.put(',');
                if (out.count() - lineStart > kLineLength) {
                    out.put('\n');
                    out.putBlanks(printer.indent);
                    lineStart = out.count();
                } else {
                    out.put(' ');
                }
            }
            first = false;
            ValueText<Value>::print(value, printer);
        }
        out.put('\n');
    }

    static void clear(Field& field) { static_cast<F&>(field).clear(); }
    static void trim(Field& field) { static_cast<F&>(field).getValues().shrink_to_fit(); }

    static constexpr FieldText kText = {&read, &print, &clear, &trim, sizeof(Value)};
};

ValueResult readAsText(Field& field, ValueReader& reader) {
    const bool multi = field.getCardinality() == FieldType::MULTI_FIELD;
    std::string text;
    const ValueResult result =
        reader.plainValue(multi ? StringPlace::kInList : StringPlace::kSingle, text);
    if (result == ValueResult::kRead) field.pushValueByStr(text.c_str());
    return result;
}

void printAsText(const Field& field, ValuePrinter& printer) {
    printer.scratch.clear();
    field.getValueByStr(printer.scratch);
    const bool multi = field.getCardinality() == FieldType::MULTI_FIELD;
    if (multi) printer.out.putBlanks(printer.indent);
    printer.out.put(printer.scratch);
    if (multi) printer.out.put('\n');
}

constexpr FieldText kConvertedText = {&readAsText, &printAsText, nullptr, nullptr,
                                      sizeof(std::string)};

struct Table {
    std::unordered_map<UInt32, const FieldText*> texts;
    std::unordered_map<std::string_view, UInt32> widths;

    template <class S, class M>
    void add() {
        texts[S::getClassType().getId()] = &SingleText<S>::kText;
        texts[M::getClassType().getId()] = &MultiText<M>::kText;
        widths[S::getClassType().getContentType().getCName()] =
            ValueText<typename S::StoredType>::kWidth;
    }

    Table() {
        addSystemTypes();
        addVectorTypes();
    }

    void addSystemTypes() {
        add<SFBool, MFBool>();
        add<SFInt8, MFInt8>();
        add<SFUInt8, MFUInt8>();
        add<SFInt16, MFInt16>();
        add<SFUInt16, MFUInt16>();
        add<SFInt32, MFInt32>();
        add<SFUInt32, MFUInt32>();
        add<SFInt64, MFInt64>();
        add<SFUInt64, MFUInt64>();
        add<SFReal32, MFReal32>();
        add<SFReal64, MFReal64>();
        add<SFGLenum, MFGLenum>();
        add<SFString, MFString>();
        add<SFTime, MFTime>();
        add<SFBitVector, MFBitVector>();
        add<SFColor3f, MFColor3f>();
        add<SFColor4f, MFColor4f>();
        add<SFColor3ub, MFColor3ub>();
        add<SFColor4ub, MFColor4ub>();
        add<SFDynamicVolume, MFDynamicVolume>();
        add<SFMatrix, MFMatrix>();
        add<SFQuaternion, MFQuaternion>();
    }

    void addVectorTypes() {
        add<SFVec2f, MFVec2f>();
        add<SFVec3f, MFVec3f>();
        add<SFVec4f, MFVec4f>();
        add<SFVec2d, MFVec2d>();
        add<SFVec3d, MFVec3d>();
        add<SFVec4d, MFVec4d>();
        add<SFVec2b, MFVec2b>();
        add<SFVec3b, MFVec3b>();
        add<SFVec4b, MFVec4b>();
        add<SFVec2ub, MFVec2ub>();
        add<SFVec3ub, MFVec3ub>();
        add<SFVec4ub, MFVec4ub>();
        add<SFVec2s, MFVec2s>();
        add<SFVec3s, MFVec3s>();
        add<SFVec4s, MFVec4s>();
        add<SFVec2us, MFVec2us>();
        add<SFVec3us, MFVec3us>();
        add<SFVec4us, MFVec4us>();
        add<SFPnt2f, MFPnt2f>();
        add<SFPnt3f, MFPnt3f>();
        add<SFPnt4f, MFPnt4f>();
        add<SFPnt2d, MFPnt2d>();
        add<SFPnt3d, MFPnt3d>();
        add<SFPnt4d, MFPnt4d>();
        add<SFPnt2s, MFPnt2s>();
        add<SFPnt3s, MFPnt3s>();
        add<SFPnt4s, MFPnt4s>();
    }
};

const Table& table() {
    static const Table all;
    return all;
}

} // namespace

const FieldText& fieldTextOf(const Field& field) {
    const auto found = table().texts.find(field.getType().getId());
    return found == table().texts.end() ? kConvertedText : *found->second;
}

UInt32 binaryWidthOf(const Char8* contentTypeName) {
    const auto found = table().widths.find(contentTypeName);
    return found == table().widths.end() ? 0 : found->second;
}

} // namespace osg::files
