#pragma once

/// @file
/// Functions and member functions as values, for traversal.

#include <OpenSG/OSGBaseTypes.h>

#include <cassert>
#include <cstring>
#include <type_traits>

namespace osg {

/// How a functor takes its argument: as `ArgT &`.
template <class ArgT>
struct CPtrRefCallArg {
    typedef ArgT& ArgType;
};

namespace detail {

/// Something to call: a function, or an object and one of its member functions. Copies are cheap,
/// nothing is owned: the object must outlive the functor.
template <class RetT, class... Args>
class Callable {
  public:
    Callable() = default;

    static Callable ofFunction(RetT (*function)(Args...)) {
        Callable result;
        result.put(function);
        result._call = function == nullptr ? nullptr : &callFunction;
        return result;
    }

    template <class Object, class Method>
    static Callable ofMethod(Object* object, Method method) {
        Callable result;
        result._object = object;
        result.put(method);
        result._call = &callMethod<Object, Method>;
        return result;
    }

    RetT call(Args... arguments) const {
        assert(_call != nullptr && "a functor without a function is called");
        return _call(*this, arguments...);
    }

  private:
    typedef RetT (*Function)(Args...);
    /// The largest member function pointers there are: three words.
    static constexpr std::size_t capacity = 4 * sizeof(void*);

    template <class Target>
    void put(Target target) {
        static_assert(sizeof(Target) <= capacity && std::is_trivially_copyable<Target>::value,
                      "function pointers are larger here");
        std::memcpy(_target, &target, sizeof(Target));
    }
    template <class Target>
    Target get() const {
        Target target;
        std::memcpy(&target, _target, sizeof(Target));
        return target;
    }

    static RetT callFunction(const Callable& self, Args... arguments) {
        return self.template get<Function>()(arguments...);
    }
    template <class Object, class Method>
    static RetT callMethod(const Callable& self, Args... arguments) {
        const Method method = self.template get<Method>();
        return (static_cast<Object*>(self._object)->*method)(arguments...);
    }

    RetT (*_call)(const Callable&, Args...) = nullptr;
    void* _object = nullptr;
    alignas(void*) unsigned char _target[capacity] = {};
};

} // namespace detail

/// A functor of one argument.
template <class RetT, class ArgModeT>
class TypedFunctor1Base : public detail::Callable<RetT, typename ArgModeT::ArgType> {
    typedef detail::Callable<RetT, typename ArgModeT::ArgType> Inherited;

  public:
    TypedFunctor1Base() = default;
    explicit TypedFunctor1Base(const Inherited& target) : Inherited(target) {}
};

/// A functor of two arguments, the second by value.
template <class RetT, class Arg1ModeT, class Arg2T>
class TypedFunctor2Base : public detail::Callable<RetT, typename Arg1ModeT::ArgType, Arg2T> {
    typedef detail::Callable<RetT, typename Arg1ModeT::ArgType, Arg2T> Inherited;

  public:
    TypedFunctor2Base() = default;
    explicit TypedFunctor2Base(const Inherited& target) : Inherited(target) {}
};

/// A functor that calls `RetT function(ArgT &)`.
template <class RetT, class ArgT>
inline TypedFunctor1Base<RetT, CPtrRefCallArg<ArgT>>
osgTypedFunctionFunctor1CPtrRef(RetT (*function)(ArgT&)) {
    typedef TypedFunctor1Base<RetT, CPtrRefCallArg<ArgT>> Functor;
    return Functor(Functor::ofFunction(function));
}

/// A functor that calls `RetT function(Arg1T &, Arg2T)`.
template <class RetT, class Arg1T, class Arg2T>
inline TypedFunctor2Base<RetT, CPtrRefCallArg<Arg1T>, Arg2T>
osgTypedFunctionFunctor2CPtrRef(RetT (*function)(Arg1T&, Arg2T)) {
    typedef TypedFunctor2Base<RetT, CPtrRefCallArg<Arg1T>, Arg2T> Functor;
    return Functor(Functor::ofFunction(function));
}

/// A functor that calls `RetT ObjectT::method(ArgT &)` on the object.
template <class RetT, class ObjectT, class ArgT>
inline TypedFunctor1Base<RetT, CPtrRefCallArg<ArgT>>
osgTypedMethodFunctor1ObjPtrCPtrRef(ObjectT* object, RetT (ObjectT::*method)(ArgT&)) {
    typedef TypedFunctor1Base<RetT, CPtrRefCallArg<ArgT>> Functor;
    return Functor(Functor::ofMethod(object, method));
}

/// A functor that calls `RetT ObjectT::method(Arg1T &, Arg2T)` on the object.
template <class RetT, class ObjectT, class Arg1T, class Arg2T>
inline TypedFunctor2Base<RetT, CPtrRefCallArg<Arg1T>, Arg2T>
osgTypedMethodFunctor2ObjPtrCPtrRef(ObjectT* object, RetT (ObjectT::*method)(Arg1T&, Arg2T)) {
    typedef TypedFunctor2Base<RetT, CPtrRefCallArg<Arg1T>, Arg2T> Functor;
    return Functor(Functor::ofMethod(object, method));
}

} // namespace osg
