#ifndef Corrade_Utility_Format_h
#define Corrade_Utility_Format_h

/** @file
@brief Text from a format string with placeholders

A placeholder is `{[index][:[.precision][type]]}`; `{{` and `}}` are braces.
Integers take the types `d o x X c` and a precision as the least number of
digits, floating-point numbers `g G e E f F` and a precision as `printf()` does,
strings no type and a precision as the greatest number of bytes. Numbers don't
depend on the locale. A format string that can't be parsed is an assertion.
*/

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/VisibilityMacros.h>
#include <cstdint>
#include <cstdio>

namespace Corrade { namespace Utility {

namespace Implementation {

struct FormatText {
    const char* data;
    std::size_t size;
};

/* A value with its type taken away, so that formatting is one function */
struct FormatArgument {
    enum class Type : unsigned char {
        Signed,
        Unsigned,
        Signed64,
        Unsigned64,
        Float,
        Double,
        String
    };

    constexpr FormatArgument(): FormatArgument{"", 0} {}
    constexpr explicit FormatArgument(Type kind, std::uint64_t value): type{kind}, number{value} {}
    constexpr explicit FormatArgument(Type kind, double value): type{kind}, real{value} {}
    constexpr explicit FormatArgument(const char* data, std::size_t size):
        type{Type::String},
        string{data, size} {}

    Type type;
    union {
        /* Signed values are extended to the full width */
        std::uint64_t number;
        double real;
        FormatText string;
    };
};

/* Specialized for types that can be formatted, with a static
   `FormatArgument argument(const T&)` */
template<class T, class = void> struct FormatTraits {
    static_assert(sizeof(T) == 0, "this type can't be formatted");
};

template<class T> struct FormatTraits<T,
    std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value &&
        !std::is_same<T, signed char>::value && !std::is_same<T, wchar_t>::value &&
        !std::is_same<T, char16_t>::value && !std::is_same<T, char32_t>::value>> {
    static constexpr FormatArgument argument(T value) {
        typedef FormatArgument::Type Type;
        return FormatArgument{std::is_signed<T>::value
                ? sizeof(T) == 8 ? Type::Signed64 : Type::Signed
                : sizeof(T) == 8 ? Type::Unsigned64
                                 : Type::Unsigned,
            static_cast<std::uint64_t>(value)};
    }
};

template<> struct FormatTraits<float> {
    static constexpr FormatArgument argument(float value) {
        return FormatArgument{FormatArgument::Type::Float, double(value)};
    }
};

template<> struct FormatTraits<double> {
    static constexpr FormatArgument argument(double value) {
        return FormatArgument{FormatArgument::Type::Double, value};
    }
};

template<> struct FormatTraits<Containers::StringView> {
    static constexpr FormatArgument argument(Containers::StringView value) {
        return FormatArgument{value.data(), value.size()};
    }
};

template<> struct FormatTraits<Containers::ArrayView<const char>> {
    static constexpr FormatArgument argument(Containers::ArrayView<const char> value) {
        return FormatArgument{value.data(), value.size()};
    }
};

template<> struct FormatTraits<Containers::String> {
    static FormatArgument argument(const Containers::String& value) {
        return FormatArgument{value.data(), value.size()};
    }
};

template<> struct FormatTraits<const char*> {
    static FormatArgument argument(const char* value) {
        return value ? FormatArgument{value, std::strlen(value)} : FormatArgument{};
    }
};

template<> struct FormatTraits<char*>: FormatTraits<const char*> {};

template<class T> FormatArgument formatArgument(const T& value) {
    return FormatTraits<std::decay_t<const T&>>::argument(value);
}

typedef Containers::ArrayView<const FormatArgument> FormatArguments;

CORRADE_UTILITY_EXPORT Containers::String format(const char* format, FormatArguments arguments);
CORRADE_UTILITY_EXPORT std::size_t formatInto(
    Containers::MutableStringView buffer, const char* format, FormatArguments arguments);
CORRADE_UTILITY_EXPORT std::size_t formatInto(
    std::string& string, std::size_t offset, const char* format, FormatArguments arguments);
CORRADE_UTILITY_EXPORT void formatInto(
    std::FILE* file, const char* format, FormatArguments arguments);

/* One longer than the list, as an array can't be empty */
template<std::size_t n> constexpr FormatArguments formatArguments(const FormatArgument (&list)[n]) {
    return {list, n - 1};
}

}

/** @brief Format into a new string */
template<class... Args> Containers::String format(const char* format, const Args&... args) {
    const Implementation::FormatArgument list[]{Implementation::formatArgument(args)..., {}};
    return Implementation::format(format, Implementation::formatArguments(list));
}

/**
@brief Format into a buffer of a fixed size
@return Number of bytes written, no NUL behind them

Expects that everything fits. A number needs one byte more than it prints.
*/
template<class... Args> std::size_t formatInto(
    const Containers::MutableStringView& buffer, const char* format, const Args&... args) {
    const Implementation::FormatArgument list[]{Implementation::formatArgument(args)..., {}};
    return Implementation::formatInto(buffer, format, Implementation::formatArguments(list));
}
template<std::size_t n, class... Args>
std::size_t formatInto(char (&buffer)[n], const char* format, const Args&... args) {
    return formatInto(Containers::MutableStringView{buffer, n}, format, args...);
}

/** @brief Format into a file, in a single write */
template<class... Args> void formatInto(std::FILE* file, const char* format, const Args&... args) {
    const Implementation::FormatArgument list[]{Implementation::formatArgument(args)..., {}};
    Implementation::formatInto(file, format, Implementation::formatArguments(list));
}

/** @brief Format to the standard output */
template<class... Args> void print(const char* format, const Args&... args) {
    formatInto(stdout, format, args...);
}

/** @brief Format to the standard error output */
template<class... Args> void printError(const char* format, const Args&... args) {
    formatInto(stderr, format, args...);
}

}}

#endif
