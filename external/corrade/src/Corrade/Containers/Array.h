#ifndef Corrade_Containers_Array_h
#define Corrade_Containers_Array_h

/** @file
@brief Class @ref Corrade::Containers::Array
*/

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Tags.h>
#include <new>
#include <utility>

namespace Corrade { namespace Containers {

namespace Implementation {

template<class T> void rawArrayFree(T* const data) {
    if constexpr(alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
        ::operator delete[](static_cast<void*>(data), std::align_val_t{alignof(T)});
    else
        ::operator delete[](static_cast<void*>(data));
}

template<class T> void rawArrayDeleter(T* const data, const std::size_t size) {
    for(std::size_t i = 0; i != size; ++i)
        data[i].~T();
    rawArrayFree(data);
}

/* Memory for elements that are constructed later, null for none of them */
template<class T> T* rawArrayAllocate(const std::size_t size) {
    if(!size)
        return nullptr;
    if constexpr(std::is_trivial<T>::value)
        return new T[size];
    else if constexpr(alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
        return static_cast<T*>(::operator new[](size * sizeof(T), std::align_val_t{alignof(T)}));
    else
        return static_cast<T*>(::operator new[](size * sizeof(T)));
}

/* The deleter that goes with it */
template<class T, class D> D rawArrayDeleterFor() {
    if constexpr(std::is_trivial<T>::value)
        return D{};
    else
        return D{rawArrayDeleter<T>};
}

/* Parentheses don't initialize an aggregate, braces do */
template<class T, class... A> T* constructAt(T* const where, A&&... args) {
    return ::new(static_cast<void*>(where)) T{std::forward<A>(args)...};
}

template<class T> struct ArrayAccess;

}

/**
@brief Owning array of a size known when it's made
@tparam T   Element
@tparam D   Deleter, called as `deleter(data, size)`

Pointer, size and deleter. A null deleter stands for `delete[]`. Element
constructors are expected not to throw.
*/
template<class T, class D> class Array {
public:
    typedef T Type;
    typedef D Deleter;

    Array(std::nullptr_t = nullptr) noexcept: _data{}, _size{}, _deleter{} {}
    explicit Array(DefaultInitT, std::size_t size):
        _data{size ? new T[size] : nullptr},
        _size{size},
        _deleter{} {}
    explicit Array(ValueInitT, std::size_t size):
        _data{size ? new T[size]() : nullptr},
        _size{size},
        _deleter{} {}
    explicit Array(std::size_t size): Array{ValueInit, size} {}
    /** @brief Leaves non-trivial elements to be constructed by the caller, all of them, in place */
    explicit Array(NoInitT, std::size_t size):
        _data{Implementation::rawArrayAllocate<T>(size)},
        _size{size},
        _deleter{Implementation::rawArrayDeleterFor<T, D>()} {}
    /** @brief Each element `T{args...}`. The arguments are not moved from. */
    template<class... A> explicit Array(DirectInitT, std::size_t size, A&&... args):
        Array{NoInit, size} {
        for(std::size_t i = 0; i != size; ++i)
            Implementation::constructAt(_data + i, args...);
    }
    Array(InPlaceInitT, std::initializer_list<T> list): Array{NoInit, list.size()} {
        std::size_t i = 0;
        for(const T& value: list)
            Implementation::constructAt(_data + i++, value);
    }
    /** @brief Takes over @p data, to be deleted with @p deleteWith */
    explicit Array(T* data, std::size_t size, D deleteWith = {}):
        _data{data},
        _size{size},
        _deleter(std::move(deleteWith)) {}

    Array(const Array&) = delete;
    Array(Array&& other) noexcept:
        _data{other._data},
        _size{other._size},
        _deleter(std::move(other._deleter)) {
        other.clear();
    }
    ~Array() {
        if constexpr(std::is_pointer<D>::value) {
            if(!_deleter) {
                delete[] _data;
                return;
            }
        }
        _deleter(_data, _size);
    }
    Array& operator=(const Array&) = delete;
    /** @brief Swaps, what this array held ends with @p other */
    Array& operator=(Array&& other) noexcept {
        std::swap(_data, other._data);
        std::swap(_size, other._size);
        std::swap(_deleter, other._deleter);
        return *this;
    }

    /** @brief Whether the data pointer isn't null */
    explicit operator bool() const { return _data; }

    T* data() { return _data; }
    const T* data() const { return _data; }
    std::size_t size() const { return _size; }
    bool isEmpty() const { return !_size; }
    D deleter() const { return _deleter; }

    T* begin() { return _data; }
    const T* begin() const { return _data; }
    const T* cbegin() const { return _data; }
    T* end() { return _data + _size; }
    const T* end() const { return _data + _size; }
    const T* cend() const { return _data + _size; }

    /** @brief First element. Expects that there is one. */
    T& front() { return const_cast<T&>(static_cast<const Array&>(*this).front()); }
    const T& front() const {
        return CORRADE_CONSTEXPR_ASSERT(_size, "Containers::Array::front(): array is empty"),
               _data[0];
    }
    /** @brief Last element. Expects that there is one. */
    T& back() { return const_cast<T&>(static_cast<const Array&>(*this).back()); }
    const T& back() const {
        return CORRADE_CONSTEXPR_ASSERT(_size, "Containers::Array::back(): array is empty"),
               _data[_size - 1];
    }
    T& operator[](std::size_t i) { return _data[i]; }
    const T& operator[](std::size_t i) const { return _data[i]; }

    ArrayView<T> slice(T* begin, T* end) { return view().slice(begin, end); }
    ArrayView<const T> slice(const T* begin, const T* end) const {
        return view().slice(begin, end);
    }
    ArrayView<T> slice(std::size_t begin, std::size_t end) { return view().slice(begin, end); }
    ArrayView<const T> slice(std::size_t begin, std::size_t end) const {
        return view().slice(begin, end);
    }
    ArrayView<T> prefix(T* end) { return view().prefix(end); }
    ArrayView<const T> prefix(const T* end) const { return view().prefix(end); }
    ArrayView<T> prefix(std::size_t count) { return view().prefix(count); }
    ArrayView<const T> prefix(std::size_t count) const { return view().prefix(count); }
    ArrayView<T> suffix(T* begin) { return view().suffix(begin); }
    ArrayView<const T> suffix(const T* begin) const { return view().suffix(begin); }
    ArrayView<T> exceptPrefix(std::size_t count) { return view().exceptPrefix(count); }
    ArrayView<const T> exceptPrefix(std::size_t count) const { return view().exceptPrefix(count); }
    ArrayView<T> exceptSuffix(std::size_t count) { return view().exceptSuffix(count); }
    ArrayView<const T> exceptSuffix(std::size_t count) const { return view().exceptSuffix(count); }

    /** @brief Give up the data to the caller, who deletes it as @ref deleter() did */
    T* release() {
        T* const data = _data;
        clear();
        return data;
    }

private:
    template<class> friend struct Implementation::ArrayAccess;

    ArrayView<T> view() { return {_data, _size}; }
    ArrayView<const T> view() const { return {_data, _size}; }

    void clear() {
        _data = nullptr;
        _size = 0;
        _deleter = D{};
    }

    T* _data;
    std::size_t _size;
    D _deleter;
};

/** @brief Array of the values of a list */
template<class T> Array<T> array(std::initializer_list<T> list) {
    return Array<T>{InPlaceInit, list};
}

}}

#endif
