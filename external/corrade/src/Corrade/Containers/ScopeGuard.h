#ifndef Corrade_Containers_ScopeGuard_h
#define Corrade_Containers_ScopeGuard_h

/** @file
@brief Class @ref Corrade::Containers::ScopeGuard
*/

#include <Corrade/Containers/Containers.h>
#include <Corrade/Tags.h>
#include <cstring>
#include <type_traits>
#include <utility>

namespace Corrade { namespace Containers {

/**
@brief Calls a function at the end of a scope

Neither allocates nor is a template: the function has to be a function pointer
or a lambda without captures, and what it's called with at most as large as a
pointer.
*/
class ScopeGuard {
public:
    /** @brief Calls `call(handle)` at the end. What it returns is ignored. */
    template<class T, class F> explicit ScopeGuard(T handle, F call);
    /** @brief Calls `call()` at the end. What it returns is ignored. */
    template<class F> explicit ScopeGuard(F call);
    /** @brief Calls nothing, to be assigned to later */
    explicit ScopeGuard(NoCreateT) noexcept {}

    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard(ScopeGuard&& other) noexcept { swap(other); }
    ~ScopeGuard() {
        if(_invoke)
            _invoke(_call, _handle);
    }
    ScopeGuard& operator=(const ScopeGuard&) = delete;
    /** @brief Swaps, so @p other calls what this guard was to call */
    ScopeGuard& operator=(ScopeGuard&& other) noexcept {
        swap(other);
        return *this;
    }

    /** @brief Give up the call */
    void release() { _invoke = nullptr; }

private:
    typedef void (*AnyFunction)();

    void swap(ScopeGuard& other) noexcept {
        std::swap(_invoke, other._invoke);
        std::swap(_call, other._call);
        std::swap(_handle, other._handle);
    }

    void (*_invoke)(AnyFunction, void*) = nullptr;
    AnyFunction _call = nullptr;
    void* _handle = nullptr;
};

template<class T, class F> ScopeGuard::ScopeGuard(T handle, F call) {
    static_assert(sizeof(T) <= sizeof(void*), "the handle has to fit into a pointer");
    static_assert(std::is_trivially_copyable<T>::value && std::is_trivially_destructible<T>::value,
        "the handle has to be trivial, as it's kept as bytes");
    /* The plus turns a lambda without captures into its function pointer */
    typedef decltype(+call) Function;
    _call = reinterpret_cast<AnyFunction>(+call);
    std::memcpy(&_handle, &handle, sizeof(T));
    _invoke = [](AnyFunction function, void* bytes) {
        /* A union, as T needn't have a default constructor */
        union Storage {
            char empty;
            T value;
            Storage(): empty{} {}
        } storage;
        std::memcpy(static_cast<void*>(&storage), &bytes, sizeof(T));
        reinterpret_cast<Function>(function)(storage.value);
    };
}

template<class F> ScopeGuard::ScopeGuard(F call) {
    typedef decltype(+call) Function;
    _call = reinterpret_cast<AnyFunction>(+call);
    _invoke = [](AnyFunction function, void*) { reinterpret_cast<Function>(function)(); };
}

}}

#endif
