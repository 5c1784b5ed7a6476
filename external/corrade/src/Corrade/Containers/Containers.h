#ifndef Corrade_Containers_Containers_h
#define Corrade_Containers_Containers_h

/** @file
@brief Forward declarations for @ref Corrade::Containers
*/

#include <cstddef>
#include <type_traits>

namespace Corrade { namespace Containers {

template<class T, class D = void (*)(T*, std::size_t)> class Array;
template<class> class ArrayView;
template<class> class BasicStringView;
template<class T,
    std::underlying_type_t<T> fullValue = std::underlying_type_t<T>(~std::underlying_type_t<T>{})>
class EnumSet;
template<class> class Pointer;
class ScopeGuard;
class String;

typedef BasicStringView<const char> StringView;
typedef BasicStringView<char> MutableStringView;

enum class StringViewFlag : std::size_t;
typedef EnumSet<StringViewFlag> StringViewFlags;

template<class> struct ArrayNewAllocator;
template<class> struct ArrayMallocAllocator;

}}

#endif
