#ifndef Corrade_Containers_GrowableArray_h
#define Corrade_Containers_GrowableArray_h

/** @file
@brief Functions that let an @ref Corrade::Containers::Array grow

A growable array is an ordinary one with the deleter of an allocator below. Its
capacity is kept in front of its data. Memory running out ends the program.
*/

#include <Corrade/Containers/Array.h>
#include <cstdlib>
#include <cstring>

namespace Corrade { namespace Containers {

namespace Implementation {

/* Where the data begin behind the capacity, a multiple of the alignment */
template<class T> struct GrowableStorage {
    static_assert(alignof(T) <= alignof(std::max_align_t),
        "elements of an extended alignment can't be in a growable array");

    enum : std::size_t {
        Offset = alignof(T) > sizeof(std::size_t) ? alignof(T) : sizeof(std::size_t)
    };

    static std::size_t bytes(std::size_t capacity) { return Offset + capacity * sizeof(T); }
    static char* base(T* data) { return reinterpret_cast<char*>(data) - Offset; }
    static T* data(void* base, std::size_t capacity) {
        ::new(base) std::size_t{capacity};
        return reinterpret_cast<T*>(static_cast<char*>(base) + Offset);
    }
    static std::size_t capacity(const T* data) {
        return *reinterpret_cast<const std::size_t*>(reinterpret_cast<const char*>(data) - Offset);
    }

    /* Doubles small allocations and adds a half to larger ones. Counted in
       bytes with the capacity's own, so that the allocations are the usual
       sizes of an allocator. */
    static std::size_t grown(std::size_t capacity, std::size_t needed) {
        const std::size_t now = bytes(capacity);
        const std::size_t then = now < 16 ? 16 : now < 64 ? 2 * now : now + now / 2;
        const std::size_t grown = (then - Offset) / sizeof(T);
        return grown < needed ? needed : grown;
    }
};

}

/** @brief Allocates a growable array with `new char[]`, for elements that move without throwing */
template<class T> struct ArrayNewAllocator {
    typedef T Type;

    static_assert(std::is_nothrow_move_constructible<T>::value,
        "elements of a growable array have to move without throwing");

    /** @brief Memory for @p capacity elements, none of them constructed */
    static T* allocate(std::size_t capacity) {
        typedef Implementation::GrowableStorage<T> Storage;
        return Storage::data(::new char[Storage::bytes(capacity)], capacity);
    }
    /** @brief Move @p size elements to memory for @p capacity of them and free the old one */
    static T* reallocate(T* data, std::size_t size, std::size_t capacity) {
        T* const out = allocate(capacity);
        for(std::size_t i = 0; i != size; ++i)
            ::new(static_cast<void*>(out + i)) T(std::move(data[i]));
        deleter(data, size);
        return out;
    }
    /** @brief Destroy @p size elements and free the memory */
    static void deleter(T* data, std::size_t size) {
        for(std::size_t i = 0; i != size; ++i)
            data[i].~T();
        delete[] Implementation::GrowableStorage<T>::base(data);
    }
};

/** @brief Allocates a growable array with `malloc()`, for elements that may be moved as bytes */
template<class T> struct ArrayMallocAllocator {
    typedef T Type;

    static_assert(std::is_trivially_copyable<T>::value,
        "only trivially copyable elements can be moved as bytes");

    static T* allocate(std::size_t capacity) {
        typedef Implementation::GrowableStorage<T> Storage;
        return Storage::data(
            CORRADE_INTERNAL_ASSERT_EXPRESSION(std::malloc(Storage::bytes(capacity))), capacity);
    }
    static T* reallocate(T* data, std::size_t, std::size_t capacity) {
        typedef Implementation::GrowableStorage<T> Storage;
        return Storage::data(CORRADE_INTERNAL_ASSERT_EXPRESSION(
                                 std::realloc(Storage::base(data), Storage::bytes(capacity))),
            capacity);
    }
    static void deleter(T* data, std::size_t) {
        std::free(Implementation::GrowableStorage<T>::base(data));
    }
};

/** @brief The allocator that functions take when none is named */
template<class T> using ArrayAllocator = std::conditional_t<std::is_trivially_copyable<T>::value,
    ArrayMallocAllocator<T>, ArrayNewAllocator<T>>;

namespace Implementation {

/* Keeps T from being deduced from an argument */
template<class T> struct IdentityType { typedef T Type; };
template<class T> using Identity = typename IdentityType<T>::Type;

/* Reaches the members of an array, so an append into free capacity only counts
   up instead of taking the array apart and together again */
template<class T> struct ArrayAccess {
    static void setSize(Array<T>& array, std::size_t size) { array._size = size; }
    static void setData(Array<T>& array, T* data) { array._data = data; }
};

template<class T> void destroy(T* begin, T* end) {
    for(; begin != end; ++begin)
        begin->~T();
}

template<class T> void copyConstruct(T* const out, const ArrayView<const T> values) {
    if constexpr(std::is_trivially_copyable<T>::value)
        std::memcpy(static_cast<void*>(out), values.data(), values.size() * sizeof(T));
    else
        for(std::size_t i = 0; i != values.size(); ++i)
            ::new(static_cast<void*>(out + i)) T(values[i]);
}

/* Makes room for exactly so many elements */
template<class T, class Allocator>
void arrayReallocate(Array<T>& array, const std::size_t keep, const std::size_t capacity) {
    if(array.deleter() == Allocator::deleter) {
        ArrayAccess<T>::setData(array, Allocator::reallocate(array.data(), keep, capacity));
        return;
    }

    T* const data = Allocator::allocate(capacity);
    for(std::size_t i = 0; i != keep; ++i)
        ::new(static_cast<void*>(data + i)) T(std::move(array[i]));
    array = Array<T>{data, keep, Allocator::deleter};
}

/* Makes the array larger by so many elements, which aren't constructed yet,
   and gives the first of them */
template<class T, class Allocator> T* arrayGrowBy(Array<T>& array, const std::size_t count) {
    const std::size_t size = array.size();
    const bool growable = array.deleter() == Allocator::deleter;
    const std::size_t capacity = growable ? GrowableStorage<T>::capacity(array.data()) : 0;
    if(!growable || capacity - size < count)
        arrayReallocate<T, Allocator>(
            array, size, GrowableStorage<T>::grown(capacity, size + count));
    ArrayAccess<T>::setSize(array, size + count);
    return array.data() + size;
}

/* Resizes and gives how many of the elements were constructed before, the
   others are left to the caller */
template<class T, class Allocator>
std::size_t arrayResizeRaw(Array<T>& array, const std::size_t size) {
    const std::size_t before = array.size();
    const std::size_t keep = before < size ? before : size;
    if(before == size)
        return size;
    if(array.deleter() != Allocator::deleter)
        arrayReallocate<T, Allocator>(array, keep, size);
    else if(GrowableStorage<T>::capacity(array.data()) < size)
        arrayReallocate<T, Allocator>(array, keep, size);
    else
        destroy(array.data() + keep, array.data() + before);
    ArrayAccess<T>::setSize(array, size);
    return keep;
}

}

/** @brief Whether the array was grown by this allocator */
template<template<class> class Allocator, class T> bool arrayIsGrowable(Array<T>& array) {
    return array.deleter() == Allocator<T>::deleter;
}
template<class T> bool arrayIsGrowable(Array<T>& array) {
    return arrayIsGrowable<ArrayAllocator, T>(array);
}

/** @brief Number of elements that fit without reallocation, the size if the array isn't growable */
template<template<class> class Allocator, class T> std::size_t arrayCapacity(Array<T>& array) {
    return arrayIsGrowable<Allocator>(array)
        ? Implementation::GrowableStorage<T>::capacity(array.data())
        : array.size();
}
template<class T> std::size_t arrayCapacity(Array<T>& array) {
    return arrayCapacity<ArrayAllocator, T>(array);
}

/**
@brief Make room for so many elements
@return The capacity after

Exactly for @p capacity of them, unless there is room for more already.
*/
template<template<class> class Allocator, class T>
std::size_t arrayReserve(Array<T>& array, const std::size_t capacity) {
    const std::size_t before = arrayCapacity<Allocator>(array);
    if(capacity <= before)
        return before;
    Implementation::arrayReallocate<T, Allocator<T>>(array, array.size(), capacity);
    return capacity;
}
template<class T> std::size_t arrayReserve(Array<T>& array, const std::size_t capacity) {
    return arrayReserve<ArrayAllocator, T>(array, capacity);
}

/** @brief Resize, new elements are left for the caller to construct */
template<template<class> class Allocator, class T>
void arrayResize(Array<T>& array, NoInitT, const std::size_t size) {
    Implementation::arrayResizeRaw<T, Allocator<T>>(array, size);
}
template<class T> void arrayResize(Array<T>& array, NoInitT, const std::size_t size) {
    arrayResize<ArrayAllocator, T>(array, NoInit, size);
}

/** @brief Resize, new elements are default-initialized: trivial ones have no value */
template<template<class> class Allocator, class T>
void arrayResize(Array<T>& array, DefaultInitT, const std::size_t size) {
    for(std::size_t i = Implementation::arrayResizeRaw<T, Allocator<T>>(array, size); i < size; ++i)
        ::new(static_cast<void*>(array.data() + i)) T;
}
template<class T> void arrayResize(Array<T>& array, DefaultInitT, const std::size_t size) {
    arrayResize<ArrayAllocator, T>(array, DefaultInit, size);
}

/** @brief Resize, new elements are zero or value-constructed */
template<template<class> class Allocator, class T>
void arrayResize(Array<T>& array, ValueInitT, const std::size_t size) {
    for(std::size_t i = Implementation::arrayResizeRaw<T, Allocator<T>>(array, size); i < size; ++i)
        ::new(static_cast<void*>(array.data() + i)) T();
}
template<class T> void arrayResize(Array<T>& array, ValueInitT, const std::size_t size) {
    arrayResize<ArrayAllocator, T>(array, ValueInit, size);
}
template<template<class> class Allocator, class T>
void arrayResize(Array<T>& array, const std::size_t size) {
    arrayResize<Allocator, T>(array, ValueInit, size);
}
template<class T> void arrayResize(Array<T>& array, const std::size_t size) {
    arrayResize<ArrayAllocator, T>(array, ValueInit, size);
}

/** @brief Resize, each new element is `T{args...}`. The arguments are not moved from. */
template<template<class> class Allocator, class T, class... A>
void arrayResize(Array<T>& array, DirectInitT, const std::size_t size, A&&... args) {
    for(std::size_t i = Implementation::arrayResizeRaw<T, Allocator<T>>(array, size); i < size; ++i)
        Implementation::constructAt(array.data() + i, args...);
}
template<class T, class... A>
void arrayResize(Array<T>& array, DirectInitT, const std::size_t size, A&&... args) {
    arrayResize<ArrayAllocator, T>(array, DirectInit, size, std::forward<A>(args)...);
}

/**
@brief Append `T{args...}`
@return The new element, valid until the array reallocates

Amortized constant. The arguments must not be a part of the array.
*/
template<template<class> class Allocator, class T, class... A>
T& arrayAppend(Array<T>& array, InPlaceInitT, A&&... args) {
    return *Implementation::constructAt(
        Implementation::arrayGrowBy<T, Allocator<T>>(array, 1), std::forward<A>(args)...);
}
template<class T, class... A> T& arrayAppend(Array<T>& array, InPlaceInitT, A&&... args) {
    return arrayAppend<ArrayAllocator, T>(array, InPlaceInit, std::forward<A>(args)...);
}

template<template<class> class Allocator, class T>
T& arrayAppend(Array<T>& array, const Implementation::Identity<T>& value) {
    return *::new(static_cast<void*>(Implementation::arrayGrowBy<T, Allocator<T>>(array, 1)))
        T(value);
}
template<class T> T& arrayAppend(Array<T>& array, const Implementation::Identity<T>& value) {
    return arrayAppend<ArrayAllocator, T>(array, value);
}

template<template<class> class Allocator, class T>
T& arrayAppend(Array<T>& array, Implementation::Identity<T>&& value) {
    return *::new(static_cast<void*>(Implementation::arrayGrowBy<T, Allocator<T>>(array, 1)))
        T(std::move(value));
}
template<class T> T& arrayAppend(Array<T>& array, Implementation::Identity<T>&& value) {
    return arrayAppend<ArrayAllocator, T>(array, std::move(value));
}

/** @brief Append copies of all values, which must not be a part of the array */
template<template<class> class Allocator, class T> ArrayView<T> arrayAppend(
    Array<T>& array, const Implementation::Identity<ArrayView<const T>> values) {
    /* Nothing leaves a fresh array as it is, without an allocation */
    if(values.isEmpty())
        return {array.data() + array.size(), 0};
    T* const out = Implementation::arrayGrowBy<T, Allocator<T>>(array, values.size());
    Implementation::copyConstruct(out, values);
    return {out, values.size()};
}
template<class T> ArrayView<T> arrayAppend(
    Array<T>& array, const Implementation::Identity<ArrayView<const T>> values) {
    return arrayAppend<ArrayAllocator, T>(array, values);
}
template<template<class> class Allocator, class T> ArrayView<T> arrayAppend(
    Array<T>& array, const std::initializer_list<Implementation::Identity<T>> values) {
    return arrayAppend<Allocator, T>(array, ArrayView<const T>{values.begin(), values.size()});
}
template<class T> ArrayView<T> arrayAppend(
    Array<T>& array, const std::initializer_list<Implementation::Identity<T>> values) {
    return arrayAppend<ArrayAllocator, T>(array, ArrayView<const T>{values.begin(), values.size()});
}

/** @brief Append elements that are left for the caller to construct */
template<template<class> class Allocator, class T>
ArrayView<T> arrayAppend(Array<T>& array, NoInitT, const std::size_t count) {
    if(!count)
        return {array.data() + array.size(), 0};
    return {Implementation::arrayGrowBy<T, Allocator<T>>(array, count), count};
}
template<class T> ArrayView<T> arrayAppend(Array<T>& array, NoInitT, const std::size_t count) {
    return arrayAppend<ArrayAllocator, T>(array, NoInit, count);
}

/** @brief Remove the last elements. Expects that there are so many. */
template<template<class> class Allocator, class T>
void arrayRemoveSuffix(Array<T>& array, const std::size_t count = 1) {
    CORRADE_ASSERT(count <= array.size(),
        "Containers::arrayRemoveSuffix(): can't remove" << count << "elements from an array of size"
                                                        << array.size(), );
    Implementation::arrayResizeRaw<T, Allocator<T>>(array, array.size() - count);
}
template<class T> void arrayRemoveSuffix(Array<T>& array, const std::size_t count = 1) {
    arrayRemoveSuffix<ArrayAllocator, T>(array, count);
}

}}

#endif
