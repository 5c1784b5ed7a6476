#ifndef Corrade_Containers_ArrayView_h
#define Corrade_Containers_ArrayView_h

/** @file
@brief Class @ref Corrade::Containers::ArrayView
*/

#include <Corrade/Containers/Containers.h>
#include <Corrade/Utility/Assert.h>
#include <initializer_list>

namespace Corrade { namespace Containers {

namespace Implementation {

template<class U, class T> struct HasSizeOf: std::bool_constant<sizeof(U) == sizeof(T)> {};

/* Whether a view of U can be a view of T: the elements have to lie alike, so
   a base class of another size doesn't count */
template<class U, class T> struct IsViewable
    : std::conjunction<std::is_convertible<U*, T*>, HasSizeOf<U, T>> {};

/* Specialized for containers of others, with a static
   `ArrayView<T> from(Container&&)` for each kind of reference allowed */
template<class T, class Container> struct ArrayViewAdapter;

}

/**
@brief Pointer and size of an array that somebody else owns
@tparam T   Element, const for a view that can't be written through

Valid as long as the array it was made of neither ends nor reallocates.
*/
template<class T> class ArrayView {
public:
    typedef T Type;

    constexpr ArrayView(std::nullptr_t = nullptr) noexcept: _data{}, _size{} {}
    constexpr ArrayView(T* data, std::size_t size) noexcept: _data{data}, _size{size} {}
    template<class U, std::size_t n,
        class = std::enable_if_t<Implementation::IsViewable<U, T>::value>>
    constexpr ArrayView(U (&data)[n]) noexcept: _data{data}, _size{n} {}
    template<class U, class = std::enable_if_t<Implementation::IsViewable<U, T>::value>>
    constexpr ArrayView(ArrayView<U> other) noexcept: _data{other.data()}, _size{other.size()} {}
    template<class U, class D, class = std::enable_if_t<Implementation::IsViewable<U, T>::value>>
    ArrayView(Array<U, D>& array) noexcept: _data{array.data()}, _size{array.size()} {}
    template<class U, class D, class = std::enable_if_t<Implementation::IsViewable<U, T>::value>>
    ArrayView(Array<U, D>&& array) noexcept: _data{array.data()}, _size{array.size()} {}
    template<class U, class D,
        class = std::enable_if_t<Implementation::IsViewable<const U, T>::value>>
    ArrayView(const Array<U, D>& array) noexcept: _data{array.data()}, _size{array.size()} {}
    /** @brief From a container that another header knows, such as ArrayViewStl.h */
    template<class Container,
        class = decltype(Implementation::ArrayViewAdapter<T, std::decay_t<Container>>::from(
            std::declval<Container>()))>
    ArrayView(Container&& container) noexcept:
        ArrayView{Implementation::ArrayViewAdapter<T, std::decay_t<Container>>::from(
            std::forward<Container>(container))} {}

    /** @brief Whether the data pointer isn't null, whatever the size */
    constexpr explicit operator bool() const { return _data; }

    constexpr T* data() const { return _data; }
    constexpr std::size_t size() const { return _size; }
    constexpr bool isEmpty() const { return !_size; }

    constexpr T* begin() const { return _data; }
    constexpr T* end() const { return _data + _size; }
    constexpr T* cbegin() const { return _data; }
    constexpr T* cend() const { return _data + _size; }

    /** @brief First element. Expects that there is one. */
    constexpr T& front() const {
        return CORRADE_CONSTEXPR_ASSERT(_size, "Containers::ArrayView::front(): view is empty"),
               _data[0];
    }
    /** @brief Last element. Expects that there is one. */
    constexpr T& back() const {
        return CORRADE_CONSTEXPR_ASSERT(_size, "Containers::ArrayView::back(): view is empty"),
               _data[_size - 1];
    }
    constexpr T& operator[](std::size_t i) const { return _data[i]; }

    /** @brief Elements `[begin, end)`. Expects `begin <= end <= size()`. */
    constexpr ArrayView<T> slice(std::size_t begin, std::size_t end) const {
        return CORRADE_CONSTEXPR_ASSERT(begin <= end && end <= _size,
                   "Containers::ArrayView::slice(): slice ["
                       << Corrade::Utility::Debug::nospace << begin
                       << Corrade::Utility::Debug::nospace << ":"
                       << Corrade::Utility::Debug::nospace << end
                       << Corrade::Utility::Debug::nospace << "] out of range for" << _size
                       << "elements"),
               ArrayView<T>{_data + begin, end - begin};
    }
    constexpr ArrayView<T> slice(T* begin, T* end) const {
        return slice(std::size_t(begin - _data), std::size_t(end - _data));
    }
    constexpr ArrayView<T> prefix(T* end) const { return slice(_data, end); }
    constexpr ArrayView<T> prefix(std::size_t count) const { return slice(std::size_t{}, count); }
    constexpr ArrayView<T> suffix(T* begin) const { return slice(begin, _data + _size); }
    /** @brief All but the first @p count elements */
    constexpr ArrayView<T> exceptPrefix(std::size_t count) const { return slice(count, _size); }
    /** @brief All but the last @p count elements */
    constexpr ArrayView<T> exceptSuffix(std::size_t count) const {
        return slice(std::size_t{}, _size - count);
    }

private:
    T* _data;
    std::size_t _size;
};

template<class T> constexpr ArrayView<T> arrayView(T* data, std::size_t size) {
    return {data, size};
}

template<class T, std::size_t n> constexpr ArrayView<T> arrayView(T (&data)[n]) { return {data}; }

/** @brief View of a list of values, valid until the end of the full expression */
template<class T> ArrayView<const T> arrayView(std::initializer_list<T> list) {
    return {list.begin(), list.size()};
}

template<class T> constexpr ArrayView<T> arrayView(ArrayView<T> view) { return view; }

template<class T, class D> ArrayView<T> arrayView(Array<T, D>& array) { return array; }

template<class T, class D> ArrayView<const T> arrayView(const Array<T, D>& array) { return array; }

template<class T, std::size_t n> constexpr std::size_t arraySize(T (&)[n]) { return n; }

template<class T> constexpr std::size_t arraySize(ArrayView<T> view) { return view.size(); }

template<class T, class D> std::size_t arraySize(const Array<T, D>& array) { return array.size(); }

}}

#endif
