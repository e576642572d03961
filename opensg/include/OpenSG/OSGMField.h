#pragma once

/// @file
/// Fields with any number of values.

#include <OpenSG/OSGField.h>
#include <OpenSG/OSGFieldTraitsOf.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vector>

namespace osg {

template <class T, Int32 ns = 0>
class MField;

namespace detail {

/// Storage of values, with the interface of a vector.
template <class T>
class ValueList : public Field {
  public:
    typedef std::vector<T> StorageType;
    typedef T value_type;
    typedef typename StorageType::size_type size_type;
    typedef typename StorageType::difference_type difference_type;
    typedef typename StorageType::reference reference;
    typedef typename StorageType::const_reference const_reference;
    typedef typename StorageType::iterator iterator;
    typedef typename StorageType::const_iterator const_iterator;
    typedef typename StorageType::reverse_iterator reverse_iterator;
    typedef typename StorageType::const_reverse_iterator const_reverse_iterator;

    iterator begin() { return _values.begin(); }
    iterator end() { return _values.end(); }
    const_iterator begin() const { return _values.begin(); }
    const_iterator end() const { return _values.end(); }
    reverse_iterator rbegin() { return _values.rbegin(); }
    reverse_iterator rend() { return _values.rend(); }
    const_reverse_iterator rbegin() const { return _values.rbegin(); }
    const_reverse_iterator rend() const { return _values.rend(); }

    size_type size() const { return _values.size(); }
    size_type capacity() const { return _values.capacity(); }
    bool empty() const { return _values.empty(); }

    reference operator[](size_type index) { return _values[index]; }
    const_reference operator[](size_type index) const { return _values[index]; }
    reference front() { return _values.front(); }
    const_reference front() const { return _values.front(); }
    reference back() { return _values.back(); }
    const_reference back() const { return _values.back(); }

    void push_back(const T& value) { _values.push_back(value); }
    void pop_back() { _values.pop_back(); }
    void clear() { _values.clear(); }
    void reserve(size_type count) { _values.reserve(count); }
    void resize(size_type count, const T& value = T()) { _values.resize(count, value); }

    iterator insert(iterator at, const T& value) { return _values.insert(at, value); }
    void insert(iterator at, size_type count, const T& value) { _values.insert(at, count, value); }
    template <class InputIterator,
              class = typename std::iterator_traits<InputIterator>::iterator_category>
    void insert(iterator at, InputIterator first, InputIterator last) {
        _values.insert(at, first, last);
    }
    iterator erase(iterator at) { return _values.erase(at); }
    iterator erase(iterator first, iterator last) { return _values.erase(first, last); }

    /// All values at once.
    StorageType& getValues() { return _values; }
    const StorageType& getValues() const { return _values; }
    void setValues(const StorageType& values) { _values = values; }

  protected:
    ValueList() = default;
    explicit ValueList(size_type count) : _values(count) {}

  private:
    StorageType _values;
};

/// Storage of pointers to containers of one type, inside a field of FieldContainerPtr. The same
/// interface; the iterators are plain pointers, and getValues gives this very object, which can do
/// what a vector can.
template <class P>
class PointerList : public MField<typename AnyPointer<P>::Type, 0> {
    typedef MField<typename AnyPointer<P>::Type, 0> AnyPointers;

  public:
    typedef PointerList<P> StorageType;
    typedef P value_type;
    typedef std::size_t size_type;
    typedef std::ptrdiff_t difference_type;
    typedef P& reference;
    typedef const P& const_reference;
    typedef P* iterator;
    typedef const P* const_iterator;
    typedef std::reverse_iterator<iterator> reverse_iterator;
    typedef std::reverse_iterator<const_iterator> const_reverse_iterator;

    iterator begin() { return static_cast<P*>(AnyPointers::getValues().data()); }
    iterator end() { return begin() + size(); }
    const_iterator begin() const { return static_cast<const P*>(AnyPointers::getValues().data()); }
    const_iterator end() const { return begin() + size(); }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    using AnyPointers::capacity;
    using AnyPointers::clear;
    using AnyPointers::empty;
    using AnyPointers::pop_back;
    using AnyPointers::reserve;
    using AnyPointers::size;

    reference operator[](size_type index) {
        return static_cast<P&>(AnyPointers::operator[](index));
    }
    const_reference operator[](size_type index) const {
        return static_cast<const P&>(AnyPointers::operator[](index));
    }
    reference front() { return (*this)[0]; }
    const_reference front() const { return (*this)[0]; }
    reference back() { return (*this)[size() - 1]; }
    const_reference back() const { return (*this)[size() - 1]; }

    void push_back(const P& value) { AnyPointers::push_back(value); }
    void resize(size_type count, const P& value = P()) { AnyPointers::resize(count, value); }

    iterator insert(iterator at, const P& value) {
        const difference_type index = at - begin();
        AnyPointers::insert(AnyPointers::begin() + index, value);
        return begin() + index;
    }
    void insert(iterator at, size_type count, const P& value) {
        AnyPointers::insert(AnyPointers::begin() + (at - begin()), count, value);
    }
    template <class InputIterator,
              class = typename std::iterator_traits<InputIterator>::iterator_category>
    void insert(iterator at, InputIterator first, InputIterator last) {
        AnyPointers::insert(AnyPointers::begin() + (at - begin()), first, last);
    }
    iterator erase(iterator at) { return erase(at, at + 1); }
    iterator erase(iterator first, iterator last) {
        const difference_type index = first - begin();
        AnyPointers::erase(AnyPointers::begin() + index, AnyPointers::begin() + (last - begin()));
        return begin() + index;
    }

    StorageType& getValues() { return *this; }
    const StorageType& getValues() const { return *this; }
    void setValues(const StorageType& values) { AnyPointers::operator=(values); }
    void setValues(const std::vector<P>& values) {
        AnyPointers::getValues().assign(values.begin(), values.end());
    }

  protected:
    PointerList() = default;
    explicit PointerList(size_type count) : AnyPointers(count) {}
};

template <class T>
using MultiStorage = std::conditional_t<isTypedPointer<T>, PointerList<T>, ValueList<T>>;

} // namespace detail

/// A field with a list of values of T; a vector in all that matters.
///
/// `ns` tells apart field types that hold the same C++ type: it selects `FieldDataTraits<T>`,
/// `FieldDataTraits1<T>` or `FieldDataTraits2<T>` (0, 1, 2). Pointers in fields are not counted.
template <class T, Int32 ns>
class MField : public detail::MultiStorage<T> {
    typedef detail::MultiStorage<T> Inherited;

  public:
    typedef typename detail::FieldTraitsOf<T, ns>::Type MFieldTraits;
    typedef T StoredType;
    typedef MField<T, ns> Self;
    typedef typename Inherited::iterator iterator;
    typedef typename Inherited::const_iterator const_iterator;

    static const FieldType& getClassType();
    /// A new field on the heap, owned by the caller.
    static Field* create() { return new Self; }

    MField() = default;
    explicit MField(std::size_t count) : Inherited(count) {}

    /// The first element equal to the value, end() when there is none.
    iterator find(const T& value) { return std::find(this->begin(), this->end(), value); }
    const_iterator find(const T& value) const {
        return std::find(this->begin(), this->end(), value);
    }

    using Inherited::setValues;
    void setValues(const Self& other) { *this = other; }

    bool operator==(const Self& other) const {
        return std::equal(this->begin(), this->end(), other.begin(), other.end());
    }
    bool operator!=(const Self& other) const { return !(*this == other); }

    /// Takes over the values of the same field in another copy of the container.
    void syncWith(Self& other) { *this = other; }

    const FieldType& getType() const override { return getClassType(); }
    UInt32 getSize() const override { return static_cast<UInt32>(this->size()); }
    bool isEmpty() const override { return this->empty(); }

    void pushValueByStr(const Char8* text) override {
        if constexpr (detail::readsText<MFieldTraits>) {
            if (text == nullptr) return;
            T value = T();
            if (MFieldTraits::getFromString(value, text)) this->push_back(value);
        } else {
            detail::logNoTextForm(getClassType(), true);
        }
    }

    std::string& getValueByStr(std::string& text) const override {
        if constexpr (detail::hasTextForm<MFieldTraits>) {
            std::string element;
            bool first = true;
            for (const auto& value : *this) {
                if (!first) text += ", ";
                first = false;
                MFieldTraits::putToString(value, element);
                text += element;
            }
        } else {
            detail::logNoTextForm(getClassType(), false);
        }
        return text;
    }

    std::string& getValueByStr(std::string& text, UInt32 index) const override {
        if constexpr (detail::hasTextForm<MFieldTraits>) {
            if (index < getSize()) {
                std::string element;
                MFieldTraits::putToString((*this)[index], element);
                text += element;
            }
        } else {
            detail::logNoTextForm(getClassType(), false);
        }
        return text;
    }

    void setAbstrValue(const Field& other) override {
        if (other.getType() == getClassType()) *this = static_cast<const Self&>(other);
    }

    UInt32 getBinSize() const override {
        UInt32 size = static_cast<UInt32>(sizeof(UInt32));
        for (const auto& value : *this)
            size += MFieldTraits::getBinSize(value);
        return size;
    }

    void copyToBin(BinaryDataHandler& handler) const override {
        handler.putValue(getSize());
        for (const auto& value : *this)
            MFieldTraits::copyToBin(handler, value);
    }

    void copyFromBin(BinaryDataHandler& handler) override {
        // The count may be a lie: memory is taken as the elements arrive.
        constexpr UInt32 trusted = 4096;
        UInt32 count = 0;
        handler.getValue(count);
        this->clear();
        this->reserve((std::min)(count, trusted));
        for (UInt32 i = 0; i < count; ++i) {
            T value = T();
            MFieldTraits::copyFromBin(handler, value);
            this->push_back(value);
        }
    }

  private:
    /// Defined by OSGMFieldTypeDef.inl for the types that are instantiated there, or by an explicit
    /// specialisation; never from this header, so that a specialisation is not too late.
    static const FieldType _fieldType;
};

#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wundefined-var-template"
#endif
template <class T, Int32 ns>
inline const FieldType& MField<T, ns>::getClassType() {
    return _fieldType;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

} // namespace osg
