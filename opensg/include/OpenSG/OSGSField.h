#pragma once

/// @file
/// Fields with one value.

#include <OpenSG/OSGField.h>
#include <OpenSG/OSGFieldTraitsOf.h>

namespace osg {

template <class T, Int32 ns = 0>
class SField;

namespace detail {

/// Storage of a value.
template <class T>
class SingleValue : public Field {
  protected:
    SingleValue() : _value() {}
    explicit SingleValue(const T& value) : _value(value) {}

    T& stored() { return _value; }
    const T& stored() const { return _value; }

  private:
    T _value;
};

/// Storage of a pointer to containers of one type, inside a field of FieldContainerPtr.
template <class P>
class SinglePointer : public SField<typename AnyPointer<P>::Type, 0> {
  protected:
    typedef SField<typename AnyPointer<P>::Type, 0> AnyPointerField;

    SinglePointer() = default;
    explicit SinglePointer(const P& value) : AnyPointerField(value) {}

    P& stored() { return static_cast<P&>(AnyPointerField::stored()); }
    const P& stored() const { return static_cast<const P&>(AnyPointerField::stored()); }
};

template <class T>
using SingleStorage = std::conditional_t<isTypedPointer<T>, SinglePointer<T>, SingleValue<T>>;

} // namespace detail

/// A field with one value of T.
///
/// `ns` tells apart field types that hold the same C++ type: it selects `FieldDataTraits<T>`,
/// `FieldDataTraits1<T>` or `FieldDataTraits2<T>` (0, 1, 2). A default-constructed field holds
/// `T()`. Pointers in fields are not counted.
template <class T, Int32 ns>
class SField : public detail::SingleStorage<T> {
    typedef detail::SingleStorage<T> Inherited;

  public:
    typedef typename detail::FieldTraitsOf<T, ns>::Type SFieldTraits;
    typedef T StoredType;
    typedef SField<T, ns> Self;

    static const FieldType& getClassType();
    /// A new field on the heap, owned by the caller.
    static Field* create() { return new Self; }

    SField() = default;
    explicit SField(const T& value) : Inherited(value) {}

    T& getValue() { return this->stored(); }
    const T& getValue() const { return this->stored(); }
    void setValue(const T& value) { this->stored() = value; }
    void setValue(const Self& other) { setValue(other.getValue()); }

    bool operator==(const Self& other) const { return getValue() == other.getValue(); }
    bool operator!=(const Self& other) const { return !(*this == other); }

    /// Takes over the value of the same field in another copy of the container.
    void syncWith(Self& other) { setValue(other.getValue()); }

    const FieldType& getType() const override { return getClassType(); }
    UInt32 getSize() const override { return 1; }
    bool isEmpty() const override { return false; }

    void pushValueByStr(const Char8* text) override {
        if constexpr (detail::readsText<SFieldTraits>) {
            if (text == nullptr) return;
            T value = getValue();
            if (SFieldTraits::getFromString(value, text)) setValue(value);
        } else {
            detail::logNoTextForm(getClassType(), true);
        }
    }

    std::string& getValueByStr(std::string& text) const override {
        if constexpr (detail::hasTextForm<SFieldTraits>)
            SFieldTraits::putToString(getValue(), text);
        else
            detail::logNoTextForm(getClassType(), false);
        return text;
    }

    std::string& getValueByStr(std::string& text, UInt32 index) const override {
        return index == 0 ? getValueByStr(text) : text;
    }

    void setAbstrValue(const Field& other) override {
        if (other.getType() == getClassType()) setValue(static_cast<const Self&>(other));
    }

    UInt32 getBinSize() const override { return SFieldTraits::getBinSize(getValue()); }
    void copyToBin(BinaryDataHandler& handler) const override {
        SFieldTraits::copyToBin(handler, getValue());
    }
    void copyFromBin(BinaryDataHandler& handler) override {
        SFieldTraits::copyFromBin(handler, getValue());
    }

  private:
    /// Defined by OSGSFieldTypeDef.inl for the types that are instantiated there, or by an explicit
    /// specialisation; never from this header, so that a specialisation is not too late.
    static const FieldType _fieldType;
};

#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wundefined-var-template"
#endif
template <class T, Int32 ns>
inline const FieldType& SField<T, ns>::getClassType() {
    return _fieldType;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

} // namespace osg
