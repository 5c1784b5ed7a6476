#ifndef Corrade_Containers_StringStl_h
#define Corrade_Containers_StringStl_h

/** @file
@brief Conversion of strings and string views from and to the standard string
*/

#include <Corrade/Containers/String.h>
#include <string>

namespace Corrade { namespace Containers { namespace Implementation {

template<> struct StringAdapter<const char, std::string> {
    static StringView from(const std::string& string) {
        return {string.data(), string.size(), StringViewFlag::NullTerminated};
    }
    static std::string to(const char* data, std::size_t size) {
        return size ? std::string(data, size) : std::string{};
    }
};

template<> struct StringAdapter<char, std::string> {
    static MutableStringView from(std::string& string) {
        return {string.data(), string.size(), StringViewFlag::NullTerminated};
    }
};

}}}

#endif
