#ifndef Corrade_Containers_Pointer_h
#define Corrade_Containers_Pointer_h

/** @file
@brief Class @ref Corrade::Containers::Pointer
*/

#include <Corrade/Containers/Containers.h>
#include <Corrade/Tags.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <utility>

namespace Corrade { namespace Containers {

/**
@brief Owning pointer to one object

One pointer wide. Constness goes through: a const one gives const access.
*/
template<class T> class Pointer {
    static_assert(!std::is_array<T>::value, "use an Array for arrays");

public:
    typedef T Type;

    Pointer(std::nullptr_t = nullptr) noexcept: _pointer{} {}
    /** @brief Takes over @p pointer */
    explicit Pointer(T* pointer) noexcept: _pointer{pointer} {}
    template<class... A> explicit Pointer(InPlaceInitT, A&&... args):
        _pointer{create(std::forward<A>(args)...)} {}
    template<class U, class = std::enable_if_t<std::is_convertible<U*, T*>::value>>
    Pointer(Pointer<U>&& other) noexcept: _pointer{other.release()} {
        static_assert(std::has_virtual_destructor<T>::value ||
                std::is_same<std::remove_cv_t<U>, std::remove_cv_t<T>>::value,
            "a base that is deleted through needs a virtual destructor");
    }
    Pointer(const Pointer&) = delete;
    Pointer(Pointer&& other) noexcept: _pointer{other.release()} {}
    ~Pointer() { delete _pointer; }
    Pointer& operator=(const Pointer&) = delete;
    /** @brief Swaps, what this pointer held ends with @p other */
    Pointer& operator=(Pointer&& other) noexcept {
        std::swap(_pointer, other._pointer);
        return *this;
    }

    explicit operator bool() const { return _pointer; }
    bool operator==(std::nullptr_t) const { return !_pointer; }
    bool operator!=(std::nullptr_t) const { return _pointer; }

    T* get() { return _pointer; }
    const T* get() const { return _pointer; }

    /** @brief Expects that the pointer isn't null, as does `*` */
    T* operator->() { return &deref(); }
    const T* operator->() const { return &deref(); }
    T& operator*() { return deref(); }
    const T& operator*() const { return deref(); }

    /** @brief Delete the object and take over another one */
    void reset(T* pointer = nullptr) {
        T* const old = _pointer;
        _pointer = pointer;
        delete old;
    }
    /** @brief Delete the object and make a new one */
    template<class... A> T& emplace(A&&... args) {
        reset(create(std::forward<A>(args)...));
        return *_pointer;
    }
    /** @brief Give up the object to the caller */
    T* release() { return std::exchange(_pointer, nullptr); }

private:
    /* Braces where there are arguments, as parentheses don't initialize an
       aggregate */
    template<class... A> static T* create(A&&... args) {
        if constexpr(sizeof...(A) == 0)
            return new T();
        else
            return new T{std::forward<A>(args)...};
    }

    T& deref() const {
        return CORRADE_CONSTEXPR_ASSERT(_pointer, "Containers::Pointer: the pointer is null"),
               *_pointer;
    }

    T* _pointer;
};

template<class T> bool operator==(std::nullptr_t, const Pointer<T>& pointer) {
    return pointer == nullptr;
}

template<class T> bool operator!=(std::nullptr_t, const Pointer<T>& pointer) {
    return pointer != nullptr;
}

/** @brief Take over an object */
template<class T> Pointer<T> pointer(T* pointer) { return Pointer<T>{pointer}; }

/** @brief Make an object */
template<class T, class... A> Pointer<T> pointer(A&&... args) {
    return Pointer<T>{InPlaceInit, std::forward<A>(args)...};
}

/** @brief Hand the object on as another type, by a `static_cast` */
template<class U, class T> Pointer<U> pointerCast(Pointer<T>&& pointer) {
    return Pointer<U>{static_cast<U*>(pointer.release())};
}

/** @brief Print the address */
template<class T> Utility::Debug& operator<<(Utility::Debug& debug, const Pointer<T>& value) {
    return debug << static_cast<const void*>(value.get());
}

}}

#endif
