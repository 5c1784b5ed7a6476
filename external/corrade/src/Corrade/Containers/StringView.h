#ifndef Corrade_Containers_StringView_h
#define Corrade_Containers_StringView_h

/** @file
@brief Class @ref Corrade::Containers::BasicStringView
*/

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Utility/VisibilityMacros.h>
#include <cstring>

namespace Corrade { namespace Containers {

/** @brief What is known of the memory a string view points to */
enum class StringViewFlag : std::size_t {
    /** It stays valid and the same until the end of the program */
    Global = std::size_t{1} << 63,
    /** A NUL follows the last byte */
    NullTerminated = std::size_t{1} << 62
};
typedef EnumSet<StringViewFlag> StringViewFlags;
CORRADE_ENUMSET_OPERATORS(StringViewFlags)

namespace Implementation {

enum : std::size_t {
    StringViewGlobal = std::size_t{1} << 63,
    StringViewNullTerminated = std::size_t{1} << 62,
    StringViewFlagMask = StringViewGlobal | StringViewNullTerminated
};

/* Specialized for strings of other types, with a static
   `BasicStringView<T> from(String)` to convert from and, for const T, a
   `String to(const char*, std::size_t)` to convert to one */
template<class T, class String> struct StringAdapter;

/* First place of the needle, null if there is none */
CORRADE_UTILITY_EXPORT const char* stringFind(
    const char* data, std::size_t size, const char* needle, std::size_t needleSize);

}

/**
@brief Pointer and size of a string that somebody else owns
@tparam T   `char` or `const char`

Two words: the flags stand in the top bits of the size. Bytes in no particular
encoding, NULs included.
*/
template<class T> class BasicStringView {
public:
    typedef T Type;

    constexpr BasicStringView(std::nullptr_t = nullptr) noexcept:
        _data{},
        _sizeAndFlags{Implementation::StringViewGlobal} {}
    /** @brief Up to the first NUL. A null pointer gives a null view. */
    BasicStringView(T* data, StringViewFlags flags = {}) noexcept:
        BasicStringView{data, data ? std::strlen(data) : 0,
            flags | (data ? StringViewFlag::NullTerminated : StringViewFlag::Global)} {}
    constexpr BasicStringView(T* data, std::size_t size, StringViewFlags flags = {}) noexcept:
        _data{data},
        _sizeAndFlags{size | std::size_t(flags)} {}
    constexpr BasicStringView(ArrayView<T> view) noexcept:
        BasicStringView{view.data(), view.size()} {}
    template<class U,
        class = std::enable_if_t<std::is_const<T>::value && std::is_same<U, char>::value>>
    constexpr BasicStringView(BasicStringView<U> other) noexcept:
        BasicStringView{other.data(), other.size(), other.flags()} {}
    /** @brief From a string that another header knows, such as String.h or StringStl.h */
    template<class String,
        class = decltype(Implementation::StringAdapter<T, std::decay_t<String>>::from(
            std::declval<String>()))>
    BasicStringView(String&& string) noexcept:
        BasicStringView{Implementation::StringAdapter<T, std::decay_t<String>>::from(
            std::forward<String>(string))} {}

    /** @brief To a string that another header knows */
    template<class String,
        class = decltype(Implementation::StringAdapter<const char, String>::to(nullptr, 0))>
    operator String() const {
        return Implementation::StringAdapter<const char, String>::to(_data, size());
    }
    constexpr operator ArrayView<T>() const { return {_data, size()}; }

    /** @brief Whether there is at least one byte */
    constexpr explicit operator bool() const { return _data && size(); }

    constexpr StringViewFlags flags() const {
        return StringViewFlag(_sizeAndFlags & Implementation::StringViewFlagMask);
    }
    constexpr T* data() const { return _data; }
    constexpr std::size_t size() const {
        return _sizeAndFlags & ~std::size_t{Implementation::StringViewFlagMask};
    }
    constexpr bool isEmpty() const { return !size(); }

    constexpr T* begin() const { return _data; }
    constexpr T* end() const { return _data + size(); }
    constexpr T* cbegin() const { return _data; }
    constexpr T* cend() const { return _data + size(); }

    /** @brief First byte. Expects that there is one. */
    constexpr T& front() const {
        return CORRADE_CONSTEXPR_ASSERT(size(), "Containers::StringView::front(): view is empty"),
               _data[0];
    }
    /** @brief Last byte. Expects that there is one. */
    constexpr T& back() const {
        return CORRADE_CONSTEXPR_ASSERT(size(), "Containers::StringView::back(): view is empty"),
               _data[size() - 1];
    }
    constexpr T& operator[](std::size_t i) const { return _data[i]; }

    /** @brief Bytes `[begin, end)`. Expects `begin <= end <= size()`. */
    constexpr BasicStringView<T> slice(std::size_t begin, std::size_t end) const {
        return CORRADE_CONSTEXPR_ASSERT(begin <= end && end <= size(),
                   "Containers::StringView::slice(): slice ["
                       << Corrade::Utility::Debug::nospace << begin
                       << Corrade::Utility::Debug::nospace << ":"
                       << Corrade::Utility::Debug::nospace << end
                       << Corrade::Utility::Debug::nospace << "] out of range for" << size()
                       << "elements"),
               BasicStringView<T>{_data + begin, end - begin, sliceFlags(end)};
    }
    constexpr BasicStringView<T> slice(T* begin, T* end) const {
        return slice(std::size_t(begin - _data), std::size_t(end - _data));
    }
    constexpr BasicStringView<T> prefix(T* end) const { return slice(_data, end); }
    constexpr BasicStringView<T> prefix(std::size_t count) const {
        return slice(std::size_t{}, count);
    }
    constexpr BasicStringView<T> suffix(T* begin) const { return slice(begin, end()); }
    /** @brief All but the first @p count bytes */
    constexpr BasicStringView<T> exceptPrefix(std::size_t count) const {
        return slice(count, size());
    }
    /** @brief All but the last @p count bytes */
    constexpr BasicStringView<T> exceptSuffix(std::size_t count) const {
        return slice(std::size_t{}, size() - count);
    }
    /** @brief All but the prefix. Expects that the string begins with it. */
    BasicStringView<T> exceptPrefix(StringView prefix) const;
    /** @brief All but the suffix. Expects that the string ends with it. */
    BasicStringView<T> exceptSuffix(StringView suffix) const;

    bool hasPrefix(StringView prefix) const;
    bool hasPrefix(char prefix) const { return size() && _data[0] == prefix; }
    bool hasSuffix(StringView suffix) const;
    bool hasSuffix(char suffix) const { return size() && _data[size() - 1] == suffix; }
    bool contains(StringView substring) const;
    bool contains(char character) const;
    /** @brief First part equal to @p substring, a null view if there is none */
    BasicStringView<T> find(StringView substring) const;
    BasicStringView<T> find(char character) const;

private:
    constexpr StringViewFlags sliceFlags(std::size_t end) const {
        return flags() &
            (end == size() ? StringViewFlag::Global | StringViewFlag::NullTerminated
                           : StringViewFlags{StringViewFlag::Global});
    }

    T* _data;
    std::size_t _sizeAndFlags;
};

inline bool operator==(const StringView a, const StringView b) {
    return a.size() == b.size() && (!a.size() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

inline bool operator!=(const StringView a, const StringView b) { return !(a == b); }

inline bool operator<(const StringView a, const StringView b) {
    const std::size_t common = a.size() < b.size() ? a.size() : b.size();
    const int order = common ? std::memcmp(a.data(), b.data(), common) : 0;
    return order < 0 || (order == 0 && a.size() < b.size());
}

inline bool operator>(const StringView a, const StringView b) { return b < a; }

inline bool operator<=(const StringView a, const StringView b) { return !(b < a); }

inline bool operator>=(const StringView a, const StringView b) { return !(a < b); }

/** @brief Both strings one after the other. Include String.h for the result. */
CORRADE_UTILITY_EXPORT String operator+(StringView a, StringView b);

template<class T> bool BasicStringView<T>::hasPrefix(const StringView prefix) const {
    return prefix.size() <= size() && StringView{_data, prefix.size()} == prefix;
}

template<class T> bool BasicStringView<T>::hasSuffix(const StringView suffix) const {
    return suffix.size() <= size() &&
        StringView{_data + size() - suffix.size(), suffix.size()} == suffix;
}

template<class T>
BasicStringView<T> BasicStringView<T>::exceptPrefix(const StringView prefix) const {
    CORRADE_ASSERT(hasPrefix(prefix),
        "Containers::StringView::exceptPrefix(): string doesn't begin with" << prefix, {});
    return exceptPrefix(prefix.size());
}

template<class T>
BasicStringView<T> BasicStringView<T>::exceptSuffix(const StringView suffix) const {
    CORRADE_ASSERT(hasSuffix(suffix),
        "Containers::StringView::exceptSuffix(): string doesn't end with" << suffix, {});
    return exceptSuffix(suffix.size());
}

template<class T> BasicStringView<T> BasicStringView<T>::find(const StringView substring) const {
    const char* const found = Implementation::stringFind(
        _data, size(), substring.data(), substring.size());
    if(!found)
        return {};
    const std::size_t begin = std::size_t(found - _data);
    return slice(begin, begin + substring.size());
}

template<class T> BasicStringView<T> BasicStringView<T>::find(const char character) const {
    return find(StringView{&character, 1});
}

template<class T> bool BasicStringView<T>::contains(const StringView substring) const {
    return Implementation::stringFind(_data, size(), substring.data(), substring.size());
}

template<class T> bool BasicStringView<T>::contains(const char character) const {
    return contains(StringView{&character, 1});
}

namespace Literals {

/** @brief View of a literal, global and NUL-terminated */
constexpr StringView operator""_s(const char* data, std::size_t size) {
    return StringView{data, size, StringViewFlag::Global | StringViewFlag::NullTerminated};
}

}

}}

#endif
