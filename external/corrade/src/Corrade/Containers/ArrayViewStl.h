#ifndef Corrade_Containers_ArrayViewStl_h
#define Corrade_Containers_ArrayViewStl_h

/** @file
@brief Views of standard arrays and vectors
*/

#include <Corrade/Containers/ArrayView.h>
#include <array>
#include <vector>

namespace Corrade { namespace Containers {

namespace Implementation {

template<class T, class U, class A> struct ArrayViewAdapter<T, std::vector<U, A>> {
    template<class V = U, class = std::enable_if_t<IsViewable<V, T>::value>>
    static ArrayView<T> from(std::vector<V, A>& vector) {
        return {vector.data(), vector.size()};
    }
    template<class V = U, class = std::enable_if_t<IsViewable<const V, T>::value>>
    static ArrayView<T> from(const std::vector<V, A>& vector) {
        return {vector.data(), vector.size()};
    }
};

template<class T, class U, std::size_t n> struct ArrayViewAdapter<T, std::array<U, n>> {
    template<class V = U, class = std::enable_if_t<IsViewable<V, T>::value>>
    static ArrayView<T> from(std::array<V, n>& array) {
        return {array.data(), n};
    }
    template<class V = U, class = std::enable_if_t<IsViewable<const V, T>::value>>
    static ArrayView<T> from(const std::array<V, n>& array) {
        return {array.data(), n};
    }
};

}

template<class T, class A> ArrayView<T> arrayView(std::vector<T, A>& vector) { return vector; }

template<class T, class A> ArrayView<const T> arrayView(const std::vector<T, A>& vector) {
    return vector;
}

template<class T, std::size_t n> ArrayView<T> arrayView(std::array<T, n>& array) { return array; }

template<class T, std::size_t n> ArrayView<const T> arrayView(const std::array<T, n>& array) {
    return array;
}

}}

#endif
